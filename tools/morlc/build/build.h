// SPDX-License-Identifier: MIT
#pragma once

#include "options.h"
#include "report/diagnostics.h"

namespace morlc {

/// "morlc build": builds what the options ask for from a manifest. Problems in the shaders go to
/// the diagnostics. A shader with errors is not written: files from an earlier build stay, and the
/// index still points to them.
/// @throws std::exception when the manifest is not valid, or a file cannot be read or written.
void Build(const Options& options, Diagnostics& diagnostics);

}  // namespace morlc
