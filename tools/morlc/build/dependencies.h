// SPDX-License-Identifier: MIT
#pragma once

#include "build/manifest.h"
#include "options.h"

#include <string>
#include <vector>

namespace morlc {

/// A Make rule, which Ninja can read as well: the outputs depend on the inputs.
std::string FormatDepfile(const std::vector<std::string>& outputs,
                          const std::vector<std::string>& inputs);

/// Writes a Ninja file that builds the manifest: an edge per shader, one for the index, and one
/// that rewrites the file when the manifest changes. All paths in it are absolute. Each shader's
/// edge reads a manifest of that shader alone, DIR/SHADER.manifest.json, so changes to other
/// shaders do not affect it.
/// @param program the path of morlc.
/// @throws std::runtime_error when a file cannot be written.
void WriteNinjaFile(const std::string& program, const BuildOptions& options,
                    const Manifest& manifest);

}  // namespace morlc
