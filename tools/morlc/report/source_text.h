// SPDX-License-Identifier: MIT
#pragma once

#include <morl/core/excerpt.h>
#include <morl/core/text_lines.h>
#include <cstddef>
#include <string>

namespace morlc {

/// Where in a file, or in the source of a node, something is.
struct Place {
    std::string file;  ///< empty if in no file
    int line = 0;      ///< 1-based; 0: anywhere in the file
    int column = 0;    ///< 1-based, in bytes; 0 if the line is 0
    ns_ruke::Excerpt excerpt{};
};

/// A text whose places can be looked up. As in the compiler, a line ends at each line feed.
class SourceText {
public:
    /// @param newFile the file that its places name
    explicit SourceText(std::string newFile = {}, std::string newText = {});

    /// @param line, column 1-based, the column in bytes. A blank or nonexistent line has no
    /// excerpt.
    Place At(int line, int column) const;

    /// The place of a byte, counted from 0.
    Place AtByte(std::size_t offset) const;

    const std::string& File() const { return file; }
    const std::string& Text() const { return text; }

private:
    std::string file;
    std::string text;
    ns_ruke::TextLines lines;
};

}  // namespace morlc
