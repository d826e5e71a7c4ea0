// SPDX-License-Identifier: MIT
#pragma once

#include "morl/ast/expressions.h"

#include <cstdint>
#include <string>
#include <vector>

namespace ns_ruke {

/// The base of all statements; it leaves `unitType` unset. A list of statements may hold null
/// entries, which stand for statements that failed to parse.
struct MORL_API MorlSentence : MorlUnit {
    /// Whether linking may expand macro statements in it. The parser clears this if there are none;
    /// linked programs may then share the statement.
    bool mayExpand = true;
    /// What copying it costs the linker, in units of kMaxLinkWork, as the parser has found.
    std::uint32_t copyWork = 0;
    /// The part of it that is for its own lines in the shader, with their indentation.
    std::uint32_t lineWork = 0;

    MorlSentence() = default;
};

/// The empty statement.
struct MORL_API MorlEmptySentence : MorlSentence {
    MorlEmptySentence() { unitType = TOKEN_EMPTY_SENTENCE; }
};

/// A statement that consists of one keyword.
struct MORL_API MorlSpecialSentence : MorlSentence {
    ENUM_TOKEN keyword;  ///< left unset by the constructor; TOKEN_DISCARD is the only one

    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init)
    MorlSpecialSentence() { unitType = TOKEN_SPECIAL_SENTENCE; }
};

/// A comment up to the end of its line.
struct MORL_API MorlSingleCommentSentence : MorlSentence {
    std::string text;  ///< what follows the two slashes, without the line break

    MorlSingleCommentSentence() { unitType = TOKEN_SINGLE_COMMENT; }
};

/// A comment between "/*" and "*/".
struct MORL_API MorlMultiCommentSentence : MorlSentence {
    std::string text;  ///< the text between the marks

    MorlMultiCommentSentence() { unitType = TOKEN_MULTI_COMMENT; }
};

/// The definition of a local variable without a value.
struct MORL_API MorlDefinitionSentence : MorlSentence {
    ENUM_TOKEN varType = TOKEN_NONE;
    std::string name;
    MorlExpression* arraySize = nullptr;  ///< owned; null: no array

    MorlDefinitionSentence() { unitType = TOKEN_DEFINITION_SENTENCE; }
    ~MorlDefinitionSentence() override;
};

/// An assignment, the definition of a local variable with a value, or an increment.
struct MORL_API MorlAssignSentence : MorlSentence {
    ENUM_TOKEN varType = TOKEN_NONE;        ///< the type when the statement defines its target
    MorlExpression* target = nullptr;       ///< owned
    ENUM_TOKEN operatorToken = TOKEN_NONE;  ///< none: an increment or decrement
    MorlExpression* value = nullptr;        ///< owned
    bool withSemicolon = true;              ///< false for the step of a `for`

    MorlAssignSentence() { unitType = TOKEN_ASSIGN; }
    ~MorlAssignSentence() override;
};

/// An assignment to a macro, executed by the linker.
struct MORL_API MorlMarcoAssignSentence : MorlAssignSentence {
    MorlMarcoAssignSentence() { unitType = TOKEN_MARCO_ASSIGN_SENTENCE; }
};

/// An `if` with its two parts.
struct MORL_API MorlIfSentence : MorlSentence {
    MorlExpression* condition = nullptr;       ///< owned
    std::vector<MorlSentence*> sentences;      ///< owned
    std::vector<MorlSentence*> elseSentences;  ///< owned
    // In bytes, like `offset`; 0 if there is no such part.
    std::uint32_t endOffset = 0;      ///< the last character of the first part
    std::uint32_t elseOffset = 0;     ///< the `else`
    std::uint32_t elseEndOffset = 0;  ///< the last character of the second part

    MorlIfSentence() { unitType = TOKEN_IF; }
    ~MorlIfSentence() override;
};

/// An `else if` parsed as a separate statement, because a comment precedes its `else`.
struct MORL_API MorlElseIfSentence : MorlIfSentence {
    MorlElseIfSentence() { unitType = TOKEN_ELSE; }
};

/// The statements of an `#if` block.
struct MORL_API MorlMarcoIfSentence : MorlSentence {
    MorlExpression* condition = nullptr;       ///< owned
    std::vector<MorlSentence*> sentences;      ///< owned; used when the condition is not zero
    std::vector<MorlSentence*> elseSentences;  ///< owned; used when it is zero

    MorlMarcoIfSentence() { unitType = TOKEN_MARCO_IF_SENTENCE; }
    ~MorlMarcoIfSentence() override;
};

/// A `for` loop of the generated shader.
struct MORL_API MorlForSentence : MorlSentence {
    MorlSentence* init = nullptr;          ///< owned
    MorlExpression* condition = nullptr;   ///< owned
    MorlAssignSentence* step = nullptr;    ///< owned; without semicolon
    std::vector<MorlSentence*> sentences;  ///< owned
    std::uint32_t endOffset = 0;           ///< the last character of the body, like `offset`

    MorlForSentence() { unitType = TOKEN_FOR; }
    ~MorlForSentence() override;
};

/// The statements of a `#for` block.
struct MORL_API MorlMarcoForSentence : MorlSentence {
    std::string varName;  ///< the macro that bounds the loop, replaced by the loop value
    int start;            ///< the first loop value; left unset by the constructor
    int end = 0;          ///< one past the last loop value; written by the linker
    std::vector<MorlSentence*> sentences;  ///< owned

    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init)
    MorlMarcoForSentence() { unitType = TOKEN_MARCO_FOR_SENTENCE; }
    ~MorlMarcoForSentence() override;
};

}  // namespace ns_ruke
