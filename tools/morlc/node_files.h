// SPDX-License-Identifier: MIT
#pragma once

#include "report/diagnostics.h"

#include <memory>
#include <string>
#include <unordered_map>

namespace morlc {

/// The nodes below the current directory.
struct LoadedNodes {
    /// Null when a node file is not valid, which has been reported then.
    std::unique_ptr<ns_ruke::MorlCompiler> compiler;
    /// The file, as it is reported, that each node is from. Of several nodes of one name the last
    /// counts.
    std::unordered_map<std::string, std::string> fileByNode;
};

/// Loads the nodes, and tells `diagnostics` where they are from. The files are also read beside the
/// compiler, as it does; for what it does not tell: which file a node is from, and what is wrong
/// with a file that it leaves out without a word.
/// @param prefix stands before the names of the files in what is reported; empty, or a directory
/// with its "/".
LoadedNodes LoadNodes(const std::string& prefix, Diagnostics& diagnostics);

/// Makes a directory the current one.
/// @return what stands before the names of its files in messages: empty, or the directory with its
/// "/".
/// @throws std::runtime_error when that is not possible.
std::string EnterDirectory(const std::string& directory);

}  // namespace morlc
