// SPDX-License-Identifier: MIT
// The node sources beside the node files: "morl/fragment_shader/" holds those that belong to
// "morl/fragment_shader.morl".
#pragma once

#include "report/diagnostics.h"

#include <morl/compiler/node_source.h>
#include <optional>
#include <string>
#include <vector>

namespace morlc {

constexpr const char* kSourceEnding = ".morlsource";

/// A node source that was read.
struct SourceFile {
    std::string path;
    SourceText text;
    std::string name;  ///< of the node: what the header says, or else the name of the file
    ns_ruke::NodeSource source;
};

/// The folder of the sources that belong to a node file.
std::string SourceFolder(const std::string& nodeFile);

/// Whether there is a folder of sources. Then nodes can do without node files.
bool HasSourceFolder();

/// The paths of the sources that belong to a node file, in byte order. Files whose names begin with
/// a dot do not count: editors make them.
/// @throws std::runtime_error when the folder cannot be read
std::vector<std::string> ListSources(const std::string& nodeFile);

/// Warns of files below morl/ that look like sources, and that nobody reads: in a folder that
/// belongs to no node file, or with another ending.
void WarnOfStraySources(const std::string& prefix, Diagnostics& diagnostics);

/// Reads a source, and reports what is wrong with it.
/// @return nothing if it cannot be used
std::optional<SourceFile> ReadSourceFile(const std::string& path, const std::string& prefix,
                                         Diagnostics& diagnostics);

/// Whether a text can be the name of a source's file, without its ending, on every system.
bool IsFileName(const std::string& stem);

/// A name for the file of a node whose own name cannot be one: what can be read of it, and a number
/// that other names do not have.
std::string SafeStem(const std::string& name);

/// The text as file systems compare it that take capital letters for small ones. Only ASCII letters
/// change.
std::string Folded(std::string text);

}  // namespace morlc
