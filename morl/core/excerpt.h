// SPDX-License-Identifier: MIT
#pragma once

#include "morl/core/export.h"
#include "morl/core/text_lines.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace ns_ruke {

/// What is shown of a source line, and where the caret is under it.
struct Excerpt {
    std::string line;       ///< the line, or the part of a long line around the place; empty: none
    std::size_t caret = 0;  ///< how many characters are to the left of the caret
    char before = '\0';     ///< the last character before the place that is no blank; NUL: none
};

/// What to show of a text at a place. A blank or nonexistent line has no excerpt.
/// @param lines of the text
MORL_API Excerpt ExcerptAt(std::string_view text, const TextLines& lines, const TextPlace& place);

}  // namespace ns_ruke
