// SPDX-License-Identifier: MIT
#pragma once

#include "morl/ast/unit.h"

#include <string>
#include <vector>

namespace ns_ruke {

/// The base of all expressions. Any operand may be null, if its source text failed to parse. A null
/// operand counts as 0 when evaluated and is written as nothing.
struct MORL_API MorlExpression : MorlUnit {
    MorlExpression() { unitType = TOKEN_EXPRESSION; }
};

/// A call of a type's constructor or of an intrinsic function.
struct MORL_API MorlFunctionCall : MorlExpression {
    std::string name;                        ///< as written
    ENUM_TOKEN functionToken = TOKEN_NONE;   ///< the token of the called name
    std::vector<MorlExpression*> arguments;  ///< owned, in source order

    MorlFunctionCall() { unitType = TOKEN_FUNCTION_CALL; }
    ~MorlFunctionCall() override;
};

/// A postfix increment or decrement.
struct MORL_API MorlUnaryOperation : MorlExpression {
    ENUM_TOKEN operatorToken = TOKEN_NONE;
    MorlExpression* operand = nullptr;  ///< owned

    MorlUnaryOperation() { unitType = TOKEN_UNARY_OPERATION; }
    ~MorlUnaryOperation() override;
};

/// An operation with two operands. Indexing a[b] has the operator TOKEN_INDEX; a prefix minus is a
/// subtraction without a left operand.
struct MORL_API MorlBinaryOperation : MorlExpression {
    ENUM_TOKEN operatorToken = TOKEN_NONE;
    MorlExpression* left = nullptr;   ///< owned; for TOKEN_INDEX the indexed value
    MorlExpression* right = nullptr;  ///< owned; for TOKEN_INDEX the index

    MorlBinaryOperation() { unitType = TOKEN_BINARY_OPERATION; }
    ~MorlBinaryOperation() override;
};

/// An expression in parentheses.
struct MORL_API MorlParenthesiseExpression : MorlExpression {
    MorlExpression*
        expression;  ///< owned; left unset by the constructor, assigned by whoever makes one

    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init)
    MorlParenthesiseExpression() { unitType = TOKEN_PARENTHESISE_EXPRESSION; }
    ~MorlParenthesiseExpression() override;
};

/// A name used as a value, or the member's name after a ".".
struct MORL_API MorlVariable : MorlExpression {
    std::string name;

    MorlVariable() { unitType = TOKEN_IDENTIFIER; }
};

/// A number literal, kept as text so that it is written back exactly as it was read.
struct MORL_API MorlNumber : MorlExpression {
    std::string value;

    MorlNumber() { unitType = TOKEN_NUMBER; }
};

}  // namespace ns_ruke
