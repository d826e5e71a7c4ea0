// SPDX-License-Identifier: MIT
#pragma once

#include "morl/check/checks.h"
#include "morl/compiler/morl_node.h"
#include "morl/compiler/pass_property.h"
#include "morl/linker/link_report.h"
#include "morl/translator/internal/target_record.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace ns_ruke {

/// What a pass is checked with.
struct PassCheckInput {
    const PassProperty& pass;
    const TargetRecord& target;
    const MorlProgram& linked;
    const LinkReport& link;
    const std::unordered_map<std::string, MorlNode*>& nodes;  ///< all that there are, by name
    const UnknownReferences& unknownReferences;               ///< of all nodes
};

/// Finds the references of all nodes that name no node.
UnknownReferences FindUnknownReferences(const std::unordered_map<std::string, MorlNode*>& nodes);

/// Finds what is probably a mistake in a linked pass.
void CheckPass(const PassCheckInput& input, std::vector<ReportWarning>& warnings);

}  // namespace ns_ruke
