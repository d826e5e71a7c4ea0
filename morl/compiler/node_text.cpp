// SPDX-License-Identifier: MIT
#include "morl/compiler/node_text.h"

#include "morl/core/text_lines.h"

#include <algorithm>
#include <charconv>

namespace ns_ruke {
namespace {

/// A character as a JSON string has it.
struct JsonCharacter {
    std::size_t size = 1;  ///< of the text
    int bytes = 1;         ///< of the value
    bool isLineBreak = false;
};

/// The code unit of an escape, "\uXXXX"; 0 if there is none.
unsigned UnitAt(std::string_view text, std::size_t start)
{
    constexpr std::size_t kDigits = 4;
    unsigned unit = 0;
    if (text.substr(start, 2) == "\\u") {
        const std::string_view digits = text.substr(start + 2, kDigits);
        std::from_chars(digits.data(), digits.data() + digits.size(), unit, 16);
    }
    return unit;
}

JsonCharacter CharacterAt(std::string_view text, std::size_t start)
{
    if (text[start] != '\\') {
        return {1, 1, text[start] == '\n'};
    }
    if (start + 1 < text.size() && text[start + 1] != 'u') {
        return {2, 1, text[start + 1] == 'n'};
    }
    constexpr std::size_t kEscape = 6;
    const unsigned unit = UnitAt(text, start);
    if (unit >= 0xD800U && unit < 0xDC00U && UnitAt(text, start + kEscape) >= 0xDC00U) {
        return {2 * kEscape, 4, false};
    }
    const int bytes = unit < 0x80U ? 1 : unit < 0x800U ? 2 : 3;
    return {kEscape, bytes, unit == '\n'};
}

}  // namespace

NodeTextError::~NodeTextError() = default;

TextPlace PlaceInNodeText(std::string_view text, std::size_t content, const TextPlace& place)
{
    std::size_t offset = std::min(content, text.size());
    if (offset < text.size() && text[offset] == '"') {
        ++offset;
        TextPlace at = {1, 1};
        while (offset < text.size() && text[offset] != '"') {
            const JsonCharacter next = CharacterAt(text, offset);
            const int end = at.column + next.bytes;
            if (at.line >= place.line && (end > place.column || next.isLineBreak)) {
                break;
            }
            offset += next.size;
            at = next.isLineBreak ? TextPlace{at.line + 1, 1} : TextPlace{at.line, end};
        }
    }
    return TextLines(text).PlaceOf(std::min(offset, text.size()));
}

}  // namespace ns_ruke
