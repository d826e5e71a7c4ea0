// SPDX-License-Identifier: MIT
#include "text.h"

#include <morl/core/nearest.h>
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>

namespace morlc {
namespace {

/// How many bytes a character has that starts with this byte; 0 if none does. Some overlong forms
/// are accepted, because readers show them as one character too.
std::size_t CharacterSize(unsigned char first)
{
    if (first < 0x80) {
        return 1;
    }
    if (first >= 0xC2 && first < 0xE0) {
        return 2;
    }
    if (first >= 0xE0 && first < 0xF0) {
        return 3;
    }
    return first >= 0xF0 && first < 0xF5 ? 4 : 0;
}

/// The size of the character that begins at a byte; 0: none does.
std::size_t SizeAt(const std::string& text, std::size_t start)
{
    const std::size_t size = CharacterSize(static_cast<unsigned char>(text[start]));
    std::size_t end = start + 1;
    while (end < text.size() && end < start + size &&
           (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) {
        ++end;
    }
    return end == start + size ? size : 0;
}

/// The code point of a character in UTF-8.
std::uint32_t CodePoint(std::string_view character)
{
    const auto first = static_cast<unsigned char>(character[0]);
    std::uint32_t code = character.size() == 1 ? first : first & (0x7FU >> character.size());
    for (const char c : character.substr(1)) {
        code = code << 6U | (static_cast<unsigned char>(c) & 0x3FU);
    }
    return code;
}

/// Whether a character controls a terminal, or changes the direction of writing.
bool IsControl(std::string_view character)
{
    struct Range {
        std::uint32_t first;
        std::uint32_t last;
    };
    constexpr Range kControls[] = {
        {0x00, 0x1F},      // C0
        {0x7F, 0x9F},      // DEL and C1
        {0x61C, 0x61C},    // the Arabic letter mark
        {0x200E, 0x200F},  // marks of direction
        {0x202A, 0x202E},  // embeddings and overrides
        {0x2066, 0x2069},  // isolates
    };
    const std::uint32_t code = CodePoint(character);
    return std::any_of(std::begin(kControls), std::end(kControls), [code](const Range& range) {
        return range.first <= code && code <= range.last;
    });
}

}  // namespace

std::string Printable(const std::string& text)
{
    std::string printable;
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t size = std::max<std::size_t>(SizeAt(text, i), 1);
        const std::string_view character = std::string_view(text).substr(i, size);
        const bool isShown = SizeAt(text, i) > 0 && !IsControl(character);
        printable.append(isShown ? character : "?");
        i += size;
    }
    return printable;
}

std::string ValidUtf8(std::string text)
{
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t size = SizeAt(text, i);
        if (size == 0) {
            text[i] = '?';
        }
        i += std::max<std::size_t>(size, 1);
    }
    return text;
}

std::string Suggestion(const std::vector<std::string>& names, const std::string& wanted)
{
    return ns_ruke::DidYouMean(ns_ruke::NearestName({names.begin(), names.end()}, wanted), " (",
                               ")");
}

std::string Fingerprint(const std::string& text)
{
    std::uint64_t hash = 0xcbf29ce484222325U;
    for (const char c : text) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3U;
    }
    std::string digits;
    for (int shift = 60; shift >= 0; shift -= 4) {
        digits += "0123456789abcdef"[(hash >> static_cast<unsigned>(shift)) & 0xFU];
    }
    return digits;
}

}  // namespace morlc
