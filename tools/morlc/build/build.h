// SPDX-License-Identifier: MIT
#pragma once

#include "options.h"
#include "report/diagnostics.h"

namespace morlc {

/// "morlc build": makes of a manifest what the options ask for. Problems of the shaders go to the
/// diagnostics. A shader with errors is not written: what an earlier build left stays, and the
/// index leads to it.
/// @throws std::exception when the manifest is not valid, or a file cannot be read or written.
void Build(const Options& options, Diagnostics& diagnostics);

}  // namespace morlc
