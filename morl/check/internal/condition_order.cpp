// SPDX-License-Identifier: MIT
#include "morl/check/internal/condition_order.h"

#include "morl/check/internal/terms.h"
#include "morl/linker/internal/calculate.h"
#include "morl/linker/morl_linker.h"

#include <cstddef>
#include <cstdlib>
#include <locale>
#include <sstream>
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

/// The value that the digits of a number read as, whatever the host's locale.
float ReadNumber(const std::string& digits)
{
    if (digits.find('.') == std::string::npos) {
        return std::strtof(digits.c_str(), nullptr);
    }
    std::istringstream stream(digits);
    stream.imbue(std::locale::classic());
    float value = 0.0F;
    stream >> value;
    return value;
}

/// Calculates an expression as C does.
class UsualOrder {
public:
    UsualOrder(const MorlExpression& expression, const Macros& newMacros) : macros(newMacros)
    {
        AppendTerms(&expression, terms);
    }

    float Value() { return terms.empty() ? 0.0F : From(0); }

    /// Whether nothing in it is set by the node itself, as `$n` is.
    bool IsKnown() const { return isKnown; }

private:
    float From(int priority)
    {
        float value = Operand();
        while (at < terms.size() && PriorityOf(terms[at].operatorToken) >= priority) {
            const ENUM_TOKEN token = terms[at].operatorToken;
            const float right = From(PriorityOf(token) + 1);
            value = Calculate(token, value, right);
        }
        return value;
    }

    float Operand()
    {
        const Term& term = terms[at];
        ++at;
        const float value = ValueOf(*term.operand);
        return term.minusSigns % 2 != 0 ? -value : value;
    }

    float ValueOf(const MorlExpression& operand)
    {
        switch (operand.unitType) {
        case TOKEN_NUMBER:
            return ReadNumber(static_cast<const MorlNumber&>(operand).value);
        case TOKEN_IDENTIFIER: {
            const std::string& name = static_cast<const MorlVariable&>(operand).name;
            isKnown = isKnown && name[0] != '$';
            const auto macro = macros.find(name);
            return macro != macros.end() ? static_cast<float>(macro->second) : 0.0F;
        }
        case TOKEN_PARENTHESISE_EXPRESSION: {
            const MorlExpression* inner =
                static_cast<const MorlParenthesiseExpression&>(operand).expression;
            if (inner == nullptr) {
                return 0.0F;
            }
            UsualOrder order(*inner, macros);
            const float value = order.Value();
            isKnown = isKnown && order.IsKnown();
            return value;
        }
        default:
            return 0.0F;
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
    const bool usual = order.Value() != 0.0F;
    Macros values = macros;
    return order.IsKnown() && usual != (MorlLinker().Evaluate(values, &condition) != 0.0F);
}

}  // namespace ns_ruke
