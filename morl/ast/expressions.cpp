// SPDX-License-Identifier: MIT
#include "morl/ast/expressions.h"

#include "morl/ast/internal/ownership.h"

namespace ns_ruke {

MorlExpression::~MorlExpression() = default;

MorlFunctionCall::~MorlFunctionCall()
{
    DeleteElements(arguments);
}

MorlUnaryOperation::~MorlUnaryOperation()
{
    delete operand;
}

MorlBinaryOperation::~MorlBinaryOperation()
{
    delete left;
    delete right;
}

MorlParenthesiseExpression::~MorlParenthesiseExpression()
{
    delete expression;
}

MorlVariable::~MorlVariable() = default;

MorlNumber::~MorlNumber() = default;

}  // namespace ns_ruke
