// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace morlc {

/// Writes a file whole or not at all: a regular file appears under its name only when it is
/// complete, and the old file stays until then. "-" is standard output.
/// @throws std::runtime_error, with a text that names the file, when it cannot be written.
void WriteWhole(const std::string& path, const std::string& text);

/// Writes a file like WriteWhole, unless it already holds this text; then it keeps its time stamp.
/// Creates missing directories.
/// @return whether it was written.
bool WriteIfChanged(const std::string& path, const std::string& text);

}  // namespace morlc
