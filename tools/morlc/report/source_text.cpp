// SPDX-License-Identifier: MIT
#include "report/source_text.h"

#include <utility>

namespace morlc {
SourceText::SourceText(std::string newFile, std::string newText)
    : file(std::move(newFile)), text(std::move(newText)), lines(text)
{
}

Place SourceText::At(int line, int column) const
{
    return {file, line, column, ns_ruke::ExcerptAt(text, lines, {line, column})};
}

Place SourceText::AtByte(std::size_t offset) const
{
    const ns_ruke::TextPlace place = lines.PlaceOf(offset);
    return At(place.line, place.column);
}

}  // namespace morlc
