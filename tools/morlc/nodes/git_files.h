// SPDX-License-Identifier: MIT
// Node files as git sees them.
#pragma once

#include "options.h"
#include "report/diagnostics.h"

namespace morlc {

/// Writes the nodes of a node file to standard output as sources, in byte order of their names. A
/// file that is not valid is written as it is, with a warning: git shows nothing at all if this
/// fails.
void ShowText(const Options& options, Diagnostics& diagnostics);

/// Merges two edits of a node file into the first one. Every conflict is an error, and leaves its
/// marks in a node. A file that cannot be merged by its nodes stays, which is an error, too.
void Merge(const Options& options, Diagnostics& diagnostics);

}  // namespace morlc
