// SPDX-License-Identifier: MIT
#pragma once

#include "report/diagnostics.h"

#include <memory>
#include <string>
#include <unordered_map>

namespace morlc {

/// The nodes below the current directory.
struct LoadedNodes {
    /// Null if a node file is not valid; this has then been reported.
    std::unique_ptr<ns_ruke::MorlCompiler> compiler;
    /// The file that each node is from, as shown in messages. If several nodes have the same name,
    /// the last one counts.
    std::unordered_map<std::string, std::string> fileByNode;
};

/// Loads the nodes, and tells `diagnostics` which files they are from. Unlike a compiler that loads
/// the files itself, this reports everything that is wrong with them.
/// @param prefix put before file names in messages: empty, or a directory ending in "/".
LoadedNodes LoadNodes(const std::string& prefix, Diagnostics& diagnostics);

/// A compiler with the same nodes, none of them parsed.
std::unique_ptr<ns_ruke::MorlCompiler> CopyNodes(const ns_ruke::MorlCompiler& original);

/// Changes the current directory.
/// @return the prefix for the names of its files in messages: empty, or the directory ending in
/// "/".
/// @throws std::runtime_error when that is not possible.
std::string EnterDirectory(const std::string& directory);

}  // namespace morlc
