// SPDX-License-Identifier: MIT
#pragma once

#include "diagnostics.h"

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace morlc {

/// The node files, in the order in which the compiler loads them, relative to the current
/// directory.
const std::vector<std::string>& NodeFilePaths();

/// The node files of a directory, read as the compiler reads them; for what the compiler does not
/// tell: which file a node is from, and what is wrong with a file that it leaves out without a
/// word.
class NodeFiles {
public:
    /// Reads the files below the current directory and reports those that are not valid.
    /// @param prefix stands before the names in what is reported; empty or a directory with its
    /// "/".
    NodeFiles(const std::string& prefix, Diagnostics& diagnostics);

    /// Whether a file is so broken that loading the nodes is no use.
    bool IsBroken() const { return broken; }

    /// The file, with the prefix, that each node is from. Of several nodes of one name the last
    /// counts.
    const std::unordered_map<std::string, std::string>& FileByNode() const { return fileByNode; }

private:
    bool broken = false;
    std::unordered_map<std::string, std::string> fileByNode;
};

/// The compiler of the nodes below the current directory, with `diagnostics` told where they are
/// from; null when a node file is not valid.
std::unique_ptr<ns_ruke::MorlCompiler> LoadNodes(const NodeFiles& files, const std::string& prefix,
                                                 Diagnostics& diagnostics);

/// Makes a directory the current one.
/// @return what stands before the names of its files in messages: empty, or the directory with its
/// "/".
/// @throws DiagnosticError when that is not possible.
std::string EnterDirectory(const std::string& directory);

}  // namespace morlc
