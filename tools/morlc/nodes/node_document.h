// SPDX-License-Identifier: MIT
#pragma once

#include "report/diagnostics.h"

#include <morl/compiler/node_source.h>
#include <optional>
#include <string>
#include <vector>

namespace morlc {

/// A node file with all that it holds.
struct NodeDocument {
    std::string path;
    bool exists = false;
    SourceText text;
    std::vector<ns_ruke::NodeSource> nodes;
    /// What WriteNodeText cannot keep: comments, values that nobody reads, anything after the list.
    std::vector<Place> losses;
};

/// Reads a node file, and reports what is wrong with it. One that does not exist has no nodes.
/// @return nothing if it is not valid
std::optional<NodeDocument> ReadNodeDocument(const std::string& path, const std::string& prefix,
                                             Diagnostics& diagnostics);

/// The comments of a node file's text, a line break after each.
std::string CommentsOf(const std::string& text);

/// Whether two nodes are the same, apart from where their names stand.
bool IsSameNode(const ns_ruke::NodeSource& a, const ns_ruke::NodeSource& b);

}  // namespace morlc
