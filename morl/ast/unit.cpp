// SPDX-License-Identifier: MIT
#include "morl/ast/unit.h"

namespace ns_ruke {

MorlUnit::~MorlUnit() = default;

}  // namespace ns_ruke
