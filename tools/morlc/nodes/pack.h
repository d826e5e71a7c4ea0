// SPDX-License-Identifier: MIT
#pragma once

#include "options.h"
#include "report/diagnostics.h"

namespace morlc {

/// Turns node sources into node files: those beside them, and then the sources are removed; or
/// others below a directory. Whatever goes wrong, no node is lost: all files are written before any
/// is removed, and a file that somebody else has changed meanwhile stays.
void Pack(const Options& options, Diagnostics& diagnostics);

/// Turns nodes of the node files into sources, likewise.
void Unpack(const Options& options, Diagnostics& diagnostics);

}  // namespace morlc
