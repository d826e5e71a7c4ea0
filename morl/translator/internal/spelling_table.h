// SPDX-License-Identifier: MIT
#pragma once

#include "morl/ast/program.h"
#include "morl/ast/stage.h"
#include "morl/parser/internal/keywords.h"
#include "morl/parser/token.h"

#include <cstddef>
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
        Set(rows);
    }

    /// A table that differs from another one in these rows.
    template <std::size_t count>
    constexpr SpellingTable(const SpellingTable& base, const Spelling (&rows)[count])
        : texts(base.texts)
    {
        Set(rows);
    }

    /// Whether the token has a row.
    constexpr bool Has(ENUM_TOKEN token) const { return Text(token).data() != nullptr; }

    /// The token's text; empty when it has no row.
    constexpr std::string_view Text(ENUM_TOKEN token) const
    {
        const auto index = static_cast<std::size_t>(token);
        return index < texts.size() ? texts[index] : std::string_view();
    }

private:
    template <std::size_t count>
    constexpr void Set(const Spelling (&rows)[count])
    {
        for (std::size_t i = 0; i < count; ++i) {
            if (i > 0 && rows[i - 1].token >= rows[i].token) {
                throw "rows must be unique and in the order of the tokens";
            }
            texts[static_cast<std::size_t>(rows[i].token)] = rows[i].text;
        }
    }

    TokenTable<std::string_view> texts{};
};

/// The stage of a program; without one it is neither vertex nor fragment.
inline int StageOf(const MorlProgram* program)
{
    return program != nullptr ? program->stage : -1;
}

/// The storage word of one buffer class.
struct BufferSpelling {
    /// The same word in every stage. The stage is then not read, so no program is needed.
    constexpr BufferSpelling(ENUM_TOKEN buffer, std::string_view word)
        : token(buffer), vertex(word), fragment(word), other(word), byStage(false)
    {
    }

    constexpr BufferSpelling(ENUM_TOKEN buffer, std::string_view inVertex,
                             std::string_view inFragment, std::string_view inOther)
        : token(buffer), vertex(inVertex), fragment(inFragment), other(inOther), byStage(true)
    {
    }

    std::string_view Text(const MorlProgram* program) const
    {
        if (!byStage) {
            return vertex;
        }
        switch (StageOf(program)) {
        case kVertexStage:
            return vertex;
        case kFragmentStage:
            return fragment;
        default:
            return other;
        }
    }

    ENUM_TOKEN token;
    std::string_view vertex;
    std::string_view fragment;
    std::string_view other;
    bool byStage;
};

/// The storage words of a target, one row for each of the three buffer classes.
struct BufferSpellings {
    /// The token's word in the stage of `program`; empty when it has no row.
    std::string_view Text(ENUM_TOKEN token, const MorlProgram* program) const
    {
        for (const BufferSpelling& row : rows) {
            if (row.token == token) {
                return row.Text(program);
            }
        }
        return {};
    }

    BufferSpelling rows[3];
};

// The same in every target: HLSL and GLSL agree on them.

/// "%" has no row and vanishes from the written text; so would "!", which the parser rejects.
inline constexpr SpellingTable kOperators({
    {TOKEN_INCREMENT, "++"},
    {TOKEN_DECREMENT, "--"},
    {TOKEN_PLUS, "+"},
    {TOKEN_MINUS, "-"},
    {TOKEN_MULTIPLY, "*"},
    {TOKEN_DIVIDE, "/"},
    {TOKEN_MEMBER, "."},
    {TOKEN_LESS, "<"},
    {TOKEN_LESS_EQUAL, "<="},
    {TOKEN_GREATER, ">"},
    {TOKEN_GREATER_EQUAL, ">="},
    {TOKEN_EQUAL, "=="},
    {TOKEN_NOT_EQUAL, "!="},
    {TOKEN_AND, "&&"},
    {TOKEN_OR, "||"},
});

inline constexpr SpellingTable kAssignOperators({
    {TOKEN_ASSIGN, "="},
    {TOKEN_PLUS_ASSIGN, "+="},
    {TOKEN_MINUS_ASSIGN, "-="},
    {TOKEN_MULTIPLY_ASSIGN, "*="},
    {TOKEN_DIVIDE_ASSIGN, "/="},
});

inline constexpr SpellingTable kSpecialWords({
    {TOKEN_DISCARD, "discard"},
});

/// The functions that HLSL and GLSL spell alike.
inline constexpr SpellingTable kCommonFunctions({
    {TOKEN_MAX, "max"},
    {TOKEN_MIN, "min"},
    {TOKEN_SATURATE, "saturate"},
    {TOKEN_CLAMP, "clamp"},
    {TOKEN_LENGTH, "length"},
    {TOKEN_NORMALIZE, "normalize"},
    {TOKEN_DOT, "dot"},
    {TOKEN_CROSS, "cross"},
    {TOKEN_MUL, "mul"},
    {TOKEN_POW, "pow"},
});

/// The semantics as HLSL for shader model 3 has them. There are no system values: the projected
/// position is POSITION. TEXAUTO and SAUTO are not spelled but numbered.
inline constexpr SpellingTable kSemantics({
    {TOKEN_POSITION, "POSITION"},
    {TOKEN_NORMAL, "NORMAL"},
    {TOKEN_TANGENT, "TANGENT"},
    {TOKEN_BINORMAL, "BINORMAL"},
    {TOKEN_BLENDINDICES, "BLENDINDICES"},
    {TOKEN_BLENDWEIGHT, "BLENDWEIGHT"},
    {TOKEN_TEXCOORD0, "TEXCOORD0"},
    {TOKEN_TEXCOORD1, "TEXCOORD1"},
    {TOKEN_TEXCOORD2, "TEXCOORD2"},
    {TOKEN_TEXCOORD3, "TEXCOORD3"},
    {TOKEN_TEXCOORD4, "TEXCOORD4"},
    {TOKEN_TEXCOORD5, "TEXCOORD5"},
    {TOKEN_TEXCOORD6, "TEXCOORD6"},
    {TOKEN_TEXCOORD7, "TEXCOORD7"},
    {TOKEN_SV_POSITION, "POSITION"},
    {TOKEN_COLOR, "COLOR"},
    {TOKEN_COLOR0, "COLOR0"},
    {TOKEN_COLOR1, "COLOR1"},
    {TOKEN_COLOR2, "COLOR2"},
    {TOKEN_COLOR3, "COLOR3"},
});

}  // namespace ns_ruke
