// SPDX-License-Identifier: MIT
#pragma once

#include "morl/parser/token.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace ns_ruke {

/// How one token is written in a target. An empty text is written as nothing.
struct Spelling {
    ENUM_TOKEN token;
    std::string_view text;
};

/// What a target writes for tokens, made from rows at compile time. A token has at most one row,
/// and the rows follow the order of the tokens; anything else does not compile.
class SpellingTable {
public:
    template <std::size_t count>
    constexpr explicit SpellingTable(const Spelling (&rows)[count])
    {
        for (std::size_t i = 0; i < count; ++i) {
            if (i > 0 && rows[i - 1].token >= rows[i].token) {
                throw "rows must be unique and in the order of the tokens";
            }
            texts[static_cast<std::size_t>(rows[i].token)] = rows[i].text;
        }
    }

    /// Whether the token has a row.
    constexpr bool Has(ENUM_TOKEN token) const { return At(token).data() != nullptr; }

    /// The token's text; empty when it has no row.
    constexpr std::string_view Text(ENUM_TOKEN token) const { return At(token); }

private:
    constexpr std::string_view At(ENUM_TOKEN token) const
    {
        const auto index = static_cast<std::size_t>(token);
        return index < texts.size() ? texts[index] : std::string_view();
    }

    std::array<std::string_view, static_cast<std::size_t>(kTokenCount)> texts{};
};

// The same in every target.
extern const SpellingTable kOperators;
extern const SpellingTable kAssignOperators;
extern const SpellingTable kKeywords;

/// The storage words of global declarations in the vertex stage, the fragment stage and any other.
struct StageSpellings {
    SpellingTable vertex;
    SpellingTable fragment;
    SpellingTable other;
};

// Storage words, by target.
extern const SpellingTable kHlslBuffers;
extern const StageSpellings kGlslBuffers;
extern const StageSpellings kGlslEsBuffers;

// Types, by target. A type that a target lacks has a row with an empty text.
extern const SpellingTable kHlslTypes;
extern const SpellingTable kHlsl10Types;
extern const SpellingTable kGlslTypes;
extern const SpellingTable kGlslEsTypes;

// Functions, by target. A function without a row keeps the name that the source gives it.
extern const SpellingTable kHlslFunctions;
extern const SpellingTable kGlslFunctions;
extern const SpellingTable kGlslEsFunctions;

// Semantics, by target; TEXAUTO and SAUTO are not spelled but numbered.
extern const SpellingTable kHlslSemantics;
extern const SpellingTable kHlsl10Semantics;
extern const SpellingTable kGlslSemantics;

}  // namespace ns_ruke
