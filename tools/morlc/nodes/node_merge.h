// SPDX-License-Identifier: MIT
#pragma once

#include <morl/compiler/node_source.h>
#include <string>
#include <vector>

namespace morlc {

struct MergedNodes {
    std::vector<ns_ruke::NodeSource> nodes;
    std::vector<std::string> conflicts;  ///< the nodes that have the marks of a conflict
    std::vector<std::string> moved;  ///< those that both have moved: they are where ours has them
};

/// Merges two edits of some nodes. Each list has a name once. A node that one side has renamed, and
/// not changed otherwise, is the same node.
/// @throws std::runtime_error if git, which merges lines, cannot be run
MergedNodes MergeNodes(const std::vector<ns_ruke::NodeSource>& base,
                       const std::vector<ns_ruke::NodeSource>& ours,
                       const std::vector<ns_ruke::NodeSource>& theirs);

}  // namespace morlc
