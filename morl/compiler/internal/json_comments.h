// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace ns_ruke {

/// Replaces the comments in a JSON text with spaces, so that everything else keeps its line and
/// column. The JSON reader accepts comments itself, but not everywhere between values: one in an
/// empty array, or before a comma, would make it reject the document.
void RemoveComments(std::string& text);

}  // namespace ns_ruke
