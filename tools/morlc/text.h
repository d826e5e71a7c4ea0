// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace morlc {

/// The text on one line and without control characters, whatever it holds.
std::string Printable(std::string text);

/// The text with "?" in place of every byte that does not belong to a character of UTF-8.
std::string ValidUtf8(std::string text);

/// Whether a byte continues a character of UTF-8.
bool IsContinuation(char c);

/// A number that changes when the text changes: 64 bits of FNV-1a, as 16 hexadecimal digits.
std::string Fingerprint(const std::string& text);

}  // namespace morlc
