// SPDX-License-Identifier: MIT
#include "text.h"

#include <algorithm>
#include <cstdint>

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

}  // namespace

std::string Printable(std::string text)
{
    const auto isControl = [](char c) {
        return static_cast<unsigned char>(c) < ' ' || c == '\x7f';
    };
    std::replace_if(text.begin(), text.end(), isControl, '?');
    return text;
}

std::string ValidUtf8(std::string text)
{
    std::size_t position = 0;
    while (position < text.size()) {
        const std::size_t size = CharacterSize(static_cast<unsigned char>(text[position]));
        std::size_t end = position + 1;
        while (end < text.size() && end < position + size && IsContinuation(text[end])) {
            ++end;
        }
        if (size == 0 || end != position + size) {
            text[position] = '?';
            end = position + 1;
        }
        position = end;
    }
    return text;
}

bool IsContinuation(char c)
{
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80;
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
