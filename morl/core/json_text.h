// SPDX-License-Identifier: MIT
#pragma once

#include "morl/core/export.h"
#include "morl/core/text_lines.h"

#include <string>

namespace ns_ruke {

/// Why a JSON text is not valid.
struct JsonFault {
    TextPlace place;
    std::string text;  ///< on one line
};

/// The first fault that the JSON reader describes.
/// @param messages its formatted error messages.
MORL_API JsonFault FirstJsonFault(const std::string& messages);

/// Replaces the comments in a JSON text with spaces, so that everything else keeps its line and
/// column. The JSON reader accepts comments itself, but not everywhere between values: one in an
/// empty array, or before a comma, would make it reject the document.
MORL_API void RemoveComments(std::string& text);

}  // namespace ns_ruke
