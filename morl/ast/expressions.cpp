// SPDX-License-Identifier: MIT
#include "morl/ast/expressions.h"

#include "morl/ast/internal/ownership.h"

namespace ns_ruke {

MorlFunctionCall::~MorlFunctionCall()
{
    DeleteElements(arguments);
}

MorlUnaryOperation::~MorlUnaryOperation()
{
    DeleteUnit(operand);
}

MorlBinaryOperation::~MorlBinaryOperation()
{
    DeleteUnit(left);
    DeleteUnit(right);
}

MorlParenthesiseExpression::~MorlParenthesiseExpression()
{
    DeleteUnit(expression);
}

}  // namespace ns_ruke
