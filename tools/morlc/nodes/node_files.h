// SPDX-License-Identifier: MIT
#pragma once

#include "nodes/node_origins.h"
#include "report/diagnostics.h"

#include <memory>
#include <string>
#include <vector>

namespace morlc {

/// The nodes below the current directory.
struct LoadedNodes {
    /// Null if a node file or a node source is not valid; this has then been reported.
    std::unique_ptr<ns_ruke::MorlCompiler> compiler;
    /// Where each node is from. If several nodes of the node files have the same name, the last one
    /// counts.
    std::shared_ptr<NodeOrigins> origins;
    /// The node files, the folders of sources and the sources, as far as they exist.
    std::vector<std::string> inputs;
};

/// Loads the nodes, and tells `diagnostics` which files they are from. Unlike a compiler that loads
/// the files itself, this reads node sources too, and reports everything that is wrong.
/// @param prefix put before file names in messages: empty, or a directory ending in "/".
LoadedNodes LoadNodes(const std::string& prefix, Diagnostics& diagnostics);

/// Fails if the current directory has no nodes at all.
/// @throws std::runtime_error
void RequireNodeFolder(const std::string& prefix);

/// A compiler with the same nodes, none of them parsed.
std::unique_ptr<ns_ruke::MorlCompiler> CopyNodes(const ns_ruke::MorlCompiler& original);

/// Changes the current directory.
/// @return the prefix for the names of its files in messages: empty, or the directory ending in
/// "/".
/// @throws std::runtime_error when that is not possible.
std::string EnterDirectory(const std::string& directory);

}  // namespace morlc
