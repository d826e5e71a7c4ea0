// SPDX-License-Identifier: MIT
#pragma once

#include "options.h"
#include "report/diagnostics.h"

namespace morlc {

/// Compiles what the options ask for and writes it. Problems of the shaders go to the log.
/// @throws std::exception when a file cannot be read or written.
void Compile(const Options& options, Diagnostics& diagnostics);

}  // namespace morlc
