// SPDX-License-Identifier: MIT
#pragma once

#include "options.h"
#include "report/diagnostics.h"

#include <string>

namespace morlc {

/// "morlc check": looks for mistakes in what the options ask for, and writes nothing.
/// @throws std::exception when the manifest is not valid, or a file cannot be read.
void Check(const Options& options, Diagnostics& diagnostics);

/// The same in the current directory.
/// @param prefix put before file names in messages: empty, or a directory ending in "/"
void CheckShaders(const CheckOptions& options, const std::string& prefix, Diagnostics& diagnostics);

}  // namespace morlc
