// SPDX-License-Identifier: MIT
#include "morl/check/internal/condition_order.h"

#include "morl/check/internal/terms.h"
#include "morl/linker/morl_linker.h"

#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <vector>

namespace ns_ruke {
namespace {

using Macros = std::unordered_map<std::string, int>;

/// How tightly C binds an operator; the loosest is 0.
int PriorityOf(ENUM_TOKEN token)
{
    switch (token) {
    case TOKEN_OR:
        return 0;
    case TOKEN_AND:
        return 1;
    case TOKEN_EQUAL:
    case TOKEN_NOT_EQUAL:
        return 2;
    case TOKEN_PLUS:
    case TOKEN_MINUS:
        return 4;
    case TOKEN_MULTIPLY:
    case TOKEN_DIVIDE:
    case TOKEN_MODULO:
        return 5;
    default:
        return 3;
    }
}

double Truth(bool value)
{
    return value ? 1.0 : 0.0;
}

double Combined(ENUM_TOKEN token, double left, double right)
{
    switch (token) {
    case TOKEN_PLUS:
        return left + right;
    case TOKEN_MINUS:
        return left - right;
    case TOKEN_MULTIPLY:
        return left * right;
    case TOKEN_DIVIDE:
        return left / right;
    case TOKEN_MODULO:
        return right != 0.0 ? std::fmod(left, right) : 0.0;
    case TOKEN_LESS:
        return Truth(left < right);
    case TOKEN_LESS_EQUAL:
        return Truth(left <= right);
    case TOKEN_GREATER:
        return Truth(left > right);
    case TOKEN_GREATER_EQUAL:
        return Truth(left >= right);
    case TOKEN_EQUAL:
        return Truth(left == right);
    case TOKEN_NOT_EQUAL:
        return Truth(left != right);
    case TOKEN_AND:
        return Truth(left != 0.0 && right != 0.0);
    case TOKEN_OR:
        return Truth(left != 0.0 || right != 0.0);
    default:
        return 0.0;
    }
}

/// Calculates an expression as C does.
class UsualOrder {
public:
    UsualOrder(const MorlExpression& expression, const Macros& newMacros) : macros(newMacros)
    {
        AppendTerms(&expression, terms);
    }

    double Value() { return terms.empty() ? 0.0 : From(0); }

    /// Whether nothing in it is set by the node itself, as `$n` is.
    bool IsKnown() const { return isKnown; }

private:
    double From(int priority)
    {
        double value = Operand();
        while (at < terms.size() && PriorityOf(terms[at].operatorToken) >= priority) {
            const ENUM_TOKEN token = terms[at].operatorToken;
            const double right = From(PriorityOf(token) + 1);
            value = Combined(token, value, right);
        }
        return value;
    }

    double Operand()
    {
        const Term& term = terms[at];
        ++at;
        const double value = ValueOf(*term.operand);
        return term.minusSigns % 2 != 0 ? -value : value;
    }

    double ValueOf(const MorlExpression& operand)
    {
        switch (operand.unitType) {
        case TOKEN_NUMBER:
            return std::strtod(static_cast<const MorlNumber&>(operand).value.c_str(), nullptr);
        case TOKEN_IDENTIFIER: {
            const std::string& name = static_cast<const MorlVariable&>(operand).name;
            isKnown = isKnown && name[0] != '$';
            const auto macro = macros.find(name);
            return macro != macros.end() ? macro->second : 0.0;
        }
        case TOKEN_PARENTHESISE_EXPRESSION: {
            const MorlExpression* inner =
                static_cast<const MorlParenthesiseExpression&>(operand).expression;
            if (inner == nullptr) {
                return 0.0;
            }
            UsualOrder order(*inner, macros);
            const double value = order.Value();
            isKnown = isKnown && order.IsKnown();
            return value;
        }
        default:
            return 0.0;
        }
    }

    const Macros& macros;
    std::vector<Term> terms;
    std::size_t at = 0;
    bool isKnown = true;
};

}  // namespace

bool CountsOtherwise(const MorlExpression& condition, const Macros& macros)
{
    if (condition.unitType == TOKEN_IDENTIFIER) {
        return false;
    }
    UsualOrder order(condition, macros);
    const bool usual = order.Value() != 0.0;
    Macros values = macros;
    return order.IsKnown() && usual != (MorlLinker().Evaluate(values, &condition) != 0.0F);
}

}  // namespace ns_ruke
