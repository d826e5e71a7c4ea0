// SPDX-License-Identifier: MIT
#include "morl/check/internal/terms.h"

namespace ns_ruke {
namespace {

void Append(const MorlExpression* expression, Term& next, std::vector<Term>& terms)
{
    if (expression == nullptr) {
        return;
    }
    const auto* operation = expression->unitType == TOKEN_BINARY_OPERATION
                                ? static_cast<const MorlBinaryOperation*>(expression)
                                : nullptr;
    if (operation == nullptr || operation->operatorToken == TOKEN_INDEX) {
        next.operand = expression;
        terms.push_back(next);
        next = {TOKEN_NONE, 0, 0, nullptr};
        return;
    }
    if (operation->left == nullptr) {
        ++next.minusSigns;
    } else {
        Append(operation->left, next, terms);
        next = {operation->operatorToken, 0, operation->offset, nullptr};
    }
    Append(operation->right, next, terms);
}

}  // namespace

void AppendTerms(const MorlExpression* expression, std::vector<Term>& terms)
{
    Term next = {TOKEN_NONE, 0, 0, nullptr};
    Append(expression, next, terms);
}

}  // namespace ns_ruke
