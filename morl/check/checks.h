// SPDX-License-Identifier: MIT
#pragma once

#include "morl/core/export.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace ns_ruke {

class MorlNode;

/// What can be wrong with a pass whose sources are free of faults, and how it is told. The text
/// says what happens, with "{}" for the name that it is about; the cure says what to do.
struct CheckInfo {
    std::string_view name;   ///< "mul-operand"; for the options of tools
    std::string_view group;  ///< "names", "macros", "lost-code", "stages" or "targets"
    std::string_view text;   ///< "'{}' is not declared here"
    std::string_view cure;   ///< may be empty
    std::string targets;     ///< those that it concerns, separated by blanks; empty: all
    unsigned traits = 0;     ///< TargetTraits: it concerns targets that have one of them
    bool isRefused = false;  ///< whether compilers refuse the text because of it
};

/// All checks, one row each, in a fixed order.
MORL_API const std::vector<CheckInfo>& MorlChecks();

/// References that name no node, by the node that has them.
using UnknownReferences = std::multimap<const MorlNode*, std::string>;

/// Something that is probably a mistake, although the source has no fault.
struct ReportWarning {
    std::string_view check;  ///< the name of the check
    std::string node;        ///< empty: the request as a whole
    int line = 0;            ///< 1-based, in the node's content; 0: no place
    int column = 0;          ///< 1-based, in bytes; 0: no place
    std::string name;        ///< what the text is about, such as a variable; may be empty
    std::string text;        ///< what happens, and what to do
};

}  // namespace ns_ruke
