// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace morlc {

/// Writes a file whole or not at all: a regular file appears under its name only when it is
/// complete, and what stood there before stays until then. "-" is standard output.
/// @throws std::runtime_error, with a text that names the file, when it cannot be written.
void WriteWhole(const std::string& path, const std::string& text);

/// Writes a file like WriteWhole, unless it holds this text already: then its time stamp stays.
/// Directories that are missing are made.
/// @return whether it was written.
bool WriteIfChanged(const std::string& path, const std::string& text);

}  // namespace morlc
