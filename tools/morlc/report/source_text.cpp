// SPDX-License-Identifier: MIT
#include "report/source_text.h"

#include "text.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

namespace morlc {
namespace {

/// How much of a line is shown, in bytes.
constexpr std::size_t kWidth = 120;

}  // namespace

SourceText::SourceText(std::string newFile, std::string newText)
    : file(std::move(newFile)), text(std::move(newText)), lines(text)
{
}

Excerpt SourceText::ExcerptAt(int line, int column) const
{
    const std::vector<std::size_t>& starts = lines.Starts();
    const auto index = static_cast<std::size_t>(line) - 1;
    if (line < 1 || column < 1 || index >= starts.size()) {
        return {};
    }
    const std::size_t end = index + 1 < starts.size() ? starts[index + 1] - 1 : text.size();
    std::string_view shown(text.data() + starts[index], end - starts[index]);
    if (!shown.empty() && shown.back() == '\r') {
        shown.remove_suffix(1);
    }
    std::size_t place = std::min(static_cast<std::size_t>(column) - 1, shown.size());
    const std::size_t before =
        std::string_view(text).substr(0, starts[index] + place).find_last_not_of(" \t\r\n");
    if (shown.size() > kWidth) {
        std::size_t skipped = place - std::min(place, kWidth / 2);
        while (skipped < place && IsContinuation(shown[skipped])) {
            ++skipped;
        }
        shown = shown.substr(skipped, kWidth);
        place -= skipped;
    }
    Excerpt excerpt;
    excerpt.before = before != std::string_view::npos ? text[before] : '\0';
    if (shown.find_first_not_of(" \t\r") == std::string_view::npos) {
        return excerpt;
    }
    excerpt.line = shown;
    // Tabs become spaces, so that the caret is in the right place on any terminal.
    std::replace(excerpt.line.begin(), excerpt.line.end(), '\t', ' ');
    const std::string_view left = shown.substr(0, place);
    excerpt.caret = left.size() - static_cast<std::size_t>(
                                      std::count_if(left.begin(), left.end(), IsContinuation));
    return excerpt;
}

Place SourceText::At(int line, int column) const
{
    return {file, line, column, ExcerptAt(line, column)};
}

Place SourceText::AtByte(std::size_t offset) const
{
    const ns_ruke::TextPlace place = lines.PlaceOf(offset);
    return At(place.line, place.column);
}

}  // namespace morlc
