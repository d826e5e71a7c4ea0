// SPDX-License-Identifier: MIT
#pragma once

#include "morl/ast/expressions.h"

#include <cstdint>
#include <vector>

namespace ns_ruke {

/// An operand, and what stands before it.
struct Term {
    ENUM_TOKEN operatorToken;  ///< TOKEN_NONE: it is the first one
    int minusSigns;            ///< how many precede it, not counting the operator
    std::uint32_t offset;      ///< of the operator
    const MorlExpression* operand;
};

/// Appends the operands of an expression in the order of the source, with the operators between
/// them. The tree of an expression does not always follow the priorities of the targets; the
/// written text does, because it keeps this order.
void AppendTerms(const MorlExpression* expression, std::vector<Term>& terms);

}  // namespace ns_ruke
