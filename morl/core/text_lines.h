// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <vector>

namespace ns_ruke {

/// A line and a column of a text, both 1-based, the column in bytes; both 0: no place.
struct TextPlace {
    int line = 0;
    int column = 0;
};

/// The lines of a text. A line ends at each line feed. Only one thread may use an object at a time.
class TextLines {
public:
    explicit TextLines(std::string_view text = {}) : starts(1)
    {
        for (std::size_t end = text.find('\n'); end != std::string_view::npos;
             end = text.find('\n', end + 1)) {
            starts.push_back(end + 1);
        }
    }

    /// The place of a byte, counted from 0. Fastest when asked for in their order.
    TextPlace PlaceOf(std::size_t offset) const
    {
        if (IsIn(last + 1, offset)) {
            ++last;
        } else if (!IsIn(last, offset)) {
            const auto next = std::upper_bound(starts.begin(), starts.end(), offset);
            last = static_cast<std::size_t>(next - starts.begin()) - 1;
        }
        return {static_cast<int>(last) + 1, static_cast<int>(offset - starts[last]) + 1};
    }

    /// Where each line begins, in bytes.
    const std::vector<std::size_t>& Starts() const { return starts; }

private:
    bool IsIn(std::size_t line, std::size_t offset) const
    {
        return line + 1 < starts.size() && starts[line] <= offset && offset < starts[line + 1];
    }

    std::vector<std::size_t> starts;
    mutable std::size_t last = 0;  ///< the line of the last place, counted from 0
};

}  // namespace ns_ruke
