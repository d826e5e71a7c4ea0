// SPDX-License-Identifier: MIT
#pragma once

#include "morl/ast/program.h"
#include "morl/check/internal/node_index.h"
#include "morl/compiler/morl_node.h"
#include "morl/compiler/pass_property.h"
#include "morl/compiler/pass_report.h"
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
    NodeIndex& index;                                         ///< of all nodes
};

/// Finds what is probably a mistake in a linked pass.
void CheckPass(const PassCheckInput& input, std::vector<ReportWarning>& warnings);

}  // namespace ns_ruke
