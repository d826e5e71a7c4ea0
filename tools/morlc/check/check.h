// SPDX-License-Identifier: MIT
#pragma once

#include "options.h"
#include "report/diagnostics.h"

namespace morlc {

/// "morlc check": looks for mistakes in what the options ask for, and writes nothing.
/// @throws std::exception when the manifest is not valid, or a file cannot be read.
void Check(const Options& options, Diagnostics& diagnostics);

}  // namespace morlc
