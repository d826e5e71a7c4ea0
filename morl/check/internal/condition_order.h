// SPDX-License-Identifier: MIT
#pragma once

#include "morl/ast/expressions.h"

#include <string>
#include <unordered_map>

namespace ns_ruke {

/// Whether the condition of a macro block comes out otherwise than by the priorities that C gives
/// its operators, with these macros. A condition on what a node itself assigns never does.
bool CountsOtherwise(const MorlExpression& condition,
                     const std::unordered_map<std::string, int>& macros);

}  // namespace ns_ruke
