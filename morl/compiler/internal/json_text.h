// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace ns_ruke {

/// A line and a column of a text, both 1-based, the column in bytes; both 0: no place.
struct TextPlace {
    int line = 0;
    int column = 0;
};

/// Finds the places of bytes.
class TextLines {
public:
    explicit TextLines(std::string_view text);

    /// @param offset of the byte, counted from 0
    TextPlace PlaceOf(std::size_t offset) const;

private:
    std::vector<std::size_t> starts;  ///< of the lines
};

/// Why a JSON text is not valid.
struct JsonFault {
    TextPlace place;
    std::string text;  ///< on one line
};

/// The first fault that the JSON reader describes.
/// @param messages its formatted error messages.
JsonFault FirstJsonFault(const std::string& messages);

/// Replaces the comments in a JSON text with spaces, so that everything else keeps its line and
/// column. The JSON reader accepts comments itself, but not everywhere between values: one in an
/// empty array, or before a comma, would make it reject the document.
void RemoveComments(std::string& text);

}  // namespace ns_ruke
