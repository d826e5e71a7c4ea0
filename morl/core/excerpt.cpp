// SPDX-License-Identifier: MIT
#include "morl/core/excerpt.h"

#include <algorithm>
#include <vector>

namespace ns_ruke {
namespace {

/// How much of a line is shown, in bytes.
constexpr std::size_t kWidth = 120;

/// Whether a byte continues a UTF-8 character.
bool IsContinuation(char c)
{
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

}  // namespace

Excerpt ExcerptAt(std::string_view text, const TextLines& lines, const TextPlace& place)
{
    const std::vector<std::size_t>& starts = lines.Starts();
    const auto index = static_cast<std::size_t>(place.line) - 1;
    if (place.line < 1 || place.column < 1 || index >= starts.size()) {
        return {};
    }
    const std::size_t end = index + 1 < starts.size() ? starts[index + 1] - 1 : text.size();
    std::string_view shown = text.substr(starts[index], end - starts[index]);
    if (!shown.empty() && shown.back() == '\r') {
        shown.remove_suffix(1);
    }
    std::size_t caret = std::min(static_cast<std::size_t>(place.column) - 1, shown.size());
    const std::size_t before = text.substr(0, starts[index] + caret).find_last_not_of(" \t\r\n");
    if (shown.size() > kWidth) {
        std::size_t skipped = caret - std::min(caret, kWidth / 2);
        while (skipped < caret && IsContinuation(shown[skipped])) {
            ++skipped;
        }
        shown = shown.substr(skipped, kWidth);
        caret -= skipped;
    }
    Excerpt excerpt;
    excerpt.before = before != std::string_view::npos ? text[before] : '\0';
    if (shown.find_first_not_of(" \t\r") == std::string_view::npos) {
        return excerpt;
    }
    excerpt.line = shown;
    // Tabs become spaces, so that the caret is in the right place on any terminal.
    std::replace(excerpt.line.begin(), excerpt.line.end(), '\t', ' ');
    const std::string_view left = shown.substr(0, caret);
    excerpt.caret = left.size() - static_cast<std::size_t>(
                                      std::count_if(left.begin(), left.end(), IsContinuation));
    return excerpt;
}

}  // namespace ns_ruke
