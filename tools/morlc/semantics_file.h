// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <unordered_map>

namespace morlc {

/// The table of automatic texture coordinates, by declaration name.
using Semantics = std::unordered_map<std::string, std::string>;

/// Reads a table: a JSON object whose values are strings.
/// @throws DiagnosticError when it cannot be read or is not one.
Semantics ReadSemantics(const std::string& path);

/// The table as JSON text, in the order of the names.
std::string FormatSemantics(const Semantics& semantics);

}  // namespace morlc
