// SPDX-License-Identifier: MIT
#pragma once

#include "morl/parser/token.h"

namespace ns_ruke {

/// What an operator of macro conditions and macro assignments makes of two values. A value is true
/// unless it equals 0; NaN is true. What is no such operator makes 0.
float Calculate(ENUM_TOKEN operatorToken, float left, float right);

}  // namespace ns_ruke
