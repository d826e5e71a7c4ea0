// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

namespace ns_ruke {

/// The whole file, or nothing when it cannot be read (it is missing, a directory or a pipe, say).
/// Windows reads it as a text: line breaks of two bytes become one.
/// @param path in UTF-8
std::optional<std::string> ReadFile(const std::string& path);

}  // namespace ns_ruke
