// SPDX-License-Identifier: MIT
#pragma once

#include <morl/compiler/node_source.h>
#include <string>
#include <vector>

namespace morlc {

struct MergedNodes {
    std::vector<ns_ruke::NodeSource> nodes;
    /// What nobody can merge: nodes with the marks of a conflict, and in words what has happened.
    std::vector<std::string> conflicts;
    std::vector<std::string> moved;  ///< those that both have moved: they are where ours has them
};

/// Merges two edits of some nodes. Each list has a name once. A node that one side has renamed, and
/// not changed otherwise, is the same node, and references to its old name follow it.
/// @throws std::runtime_error if git, which merges lines, cannot be run
MergedNodes MergeNodes(const std::vector<ns_ruke::NodeSource>& base,
                       const std::vector<ns_ruke::NodeSource>& ours,
                       const std::vector<ns_ruke::NodeSource>& theirs);

}  // namespace morlc
