// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace morlc {

/// The text with "?" in place of every control character, so that it fits on one line.
std::string Printable(std::string text);

/// The text with "?" in place of every byte that is not part of a UTF-8 character.
std::string ValidUtf8(std::string text);

/// Whether a byte continues a character of UTF-8.
bool IsContinuation(char c);

/// A number that changes when the text changes: 64 bits of FNV-1a, as 16 hexadecimal digits.
std::string Fingerprint(const std::string& text);

}  // namespace morlc
