// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace ns_ruke {

/// Blanks the comments of a JSON text out, so that all else keeps its line and column. The reader
/// of JSON takes comments itself, but not everywhere between values: one in an empty array, or
/// before a comma, would make it give the document up.
void RemoveComments(std::string& text);

}  // namespace ns_ruke
