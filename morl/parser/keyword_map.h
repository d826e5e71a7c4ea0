// SPDX-License-Identifier: MIT
#pragma once

#include "morl/core/export.h"
#include "morl/parser/semantic_kind.h"
#include "morl/parser/token.h"
#include "morl/parser/value_type.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace ns_ruke {

/// What a word of the language is used for.
enum class WordClass : std::uint8_t {
    None,      ///< not a word: a name, a symbol, a kind of tree node
    Void,      ///< only a function returns it
    Type,      ///< of a variable
    Function,  ///< an intrinsic, or a matrix helper
    Buffer,    ///< the storage of a global declaration
    Semantic,
    Control,
    Directive,
    Operator,
    Special,  ///< a statement by itself
};

/// One word of the language.
struct Keyword {
    std::string_view spelling;
    ENUM_TOKEN token = TOKEN_NONE;
    WordClass wordClass = WordClass::None;
    ValueType type{};  ///< of a type, or what a function returns; unknown: as wide as its arguments
    /// What a function takes, one letter for each argument: "v" a value (all of them are equally
    /// wide), "n" such a value or a number, "m" a matrix or a vector, "c" a column or row of a
    /// matrix, "s" a sampler, "t" texture coordinates.
    std::string_view arguments{};
    SemanticKind semantic{};  ///< of a semantic
    int index = 0;            ///< of a semantic; -1: each declaration gets its own
};

/// All words of the language, in the order of their tokens.
struct KeywordList {
    const Keyword* begin() const { return first; }
    const Keyword* end() const { return last; }

    const Keyword* first;
    const Keyword* last;
};

/// A map from spelling to token. It refers to a table of the library, so it costs nothing to copy.
class MORL_API KeywordMap {
public:
    /// An empty map.
    KeywordMap() = default;

    /// The map of all keywords of the language.
    static KeywordMap Language();

    /// The keywords themselves.
    static KeywordList Keywords();

    /// The token of `word`, or TOKEN_NONE if it is not a keyword. The match is exact.
    ENUM_TOKEN Find(std::string_view word) const;

    /// The row of a token; an empty row, with TOKEN_NONE, if it is not a word.
    static const Keyword& RowOf(ENUM_TOKEN token);

    /// The word of the language for a token; empty if it has none.
    static std::string_view WordOf(ENUM_TOKEN token) { return RowOf(token).spelling; }

    /// The type that a word names, or that a call of a matrix helper has; unknown for "auto" and
    /// for other words.
    static ValueType TypeOf(ENUM_TOKEN token) { return RowOf(token).type; }

    /// The word for a type of numbers, such as "float3".
    static std::string_view WordOf(ValueType type);

    std::size_t size() const { return count; }

private:
    std::size_t count = 0;
};

}  // namespace ns_ruke
