// SPDX-License-Identifier: MIT
#pragma once

#include "options.h"
#include "report/diagnostics.h"

#include <string>
#include <vector>

namespace morlc {

/// "morlc build": builds what the options ask for from a manifest. Problems in the shaders go to
/// the diagnostics. A shader with errors is not written: files from an earlier build stay, and the
/// index still points to them.
/// @throws std::exception when the manifest is not valid, or a file cannot be read or written.
void Build(const Options& options, Diagnostics& diagnostics);

struct BuildResult {
    std::vector<std::string>
        outputs;          ///< the texts that were written, as the caller would write them
    std::string summary;  ///< on one line; empty if the nodes are not valid
};

/// The same for shaders of a manifest in the current directory.
/// @param prefix put before file names in messages: empty, or a directory ending in "/"
BuildResult BuildShaders(const BuildOptions& options, const std::string& prefix,
                         Diagnostics& diagnostics);

}  // namespace morlc
