// SPDX-License-Identifier: MIT
#pragma once

#include "build/manifest.h"
#include "options.h"

#include <string>
#include <vector>

namespace morlc {

/// A rule of Make, as Ninja reads it too: the outputs depend on the inputs.
std::string FormatDepfile(const std::vector<std::string>& outputs,
                          const std::vector<std::string>& inputs);

/// Writes a Ninja file that builds the manifest: an edge per shader, one for the index, and one
/// that writes the file anew when the manifest changes. All paths in it are absolute. Each edge has
/// a manifest of its shader alone, DIR/SHADER.manifest.json, written beside what it makes; so a
/// change to another shader does not concern it.
/// @param program the path of morlc.
/// @throws std::runtime_error when a file cannot be written.
void WriteNinjaFile(const std::string& program, const BuildOptions& options,
                    const Manifest& manifest);

}  // namespace morlc
