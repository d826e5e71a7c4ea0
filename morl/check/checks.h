// SPDX-License-Identifier: MIT
#pragma once

#include "morl/core/export.h"

#include <string>
#include <string_view>
#include <vector>

namespace ns_ruke {

/// What can be wrong with a pass whose sources are free of faults, and how it is reported. The text
/// says what happens, with "{}" for the name that it is about; the cure says what to do.
struct CheckInfo {
    std::string_view name;   ///< "mul-operand"; for the options of tools
    std::string_view group;  ///< "names", "macros", "lost-code", "values", "stages", "targets" or
                             ///< "limits"
    std::string_view text;   ///< "'{}' is not declared here"
    std::string_view cure;   ///< may be empty
    std::string targets;     ///< those that it concerns, separated by blanks; empty: all
    unsigned traits = 0;     ///< TargetTraits: it concerns targets that have one of them
    bool isRefused = false;  ///< whether compilers refuse the text because of it
};

/// All checks, one row each, in a fixed order.
MORL_API const std::vector<CheckInfo>& MorlChecks();

}  // namespace ns_ruke
