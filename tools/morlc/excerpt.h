// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace morlc {

/// What is shown of a source line, and where the caret stands under it.
struct Excerpt {
    std::string line;  ///< the line, or of a long one the surroundings of the place; empty: none
    std::size_t caret = 0;  ///< how many characters stand to the left of the caret
};

/// A text of which lines are shown. Lines end as the compiler counts them: at each line feed.
class SourceLines {
public:
    explicit SourceLines(std::string newText = {});

    /// @param line, column 1-based, the column in bytes.
    /// @return nothing for a blank line, and for one that is not there.
    Excerpt At(int line, int column) const;

    /// The 1-based line and column of a byte.
    std::pair<int, int> Locate(std::size_t offset) const;

    bool IsEmpty() const { return text.empty(); }
    const std::string& Text() const { return text; }

private:
    std::string text;
    std::vector<std::size_t> starts;  ///< of the lines, in bytes
};

}  // namespace morlc
