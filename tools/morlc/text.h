// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace morlc {

/// The text as it may go to a terminal, on one line: with "?" in place of each control character,
/// each mark that changes the direction of writing, and each byte that is not UTF-8.
std::string Printable(const std::string& text);

/// The text with "?" in place of every byte that is not part of a UTF-8 character.
std::string ValidUtf8(std::string text);

/// " (did you mean 'NAME'?)" with the name most similar to `wanted`; empty if none is.
std::string Suggestion(const std::vector<std::string>& names, const std::string& wanted);

/// A number that changes when the text changes: 64 bits of FNV-1a, as 16 hexadecimal digits.
std::string Fingerprint(const std::string& text);

}  // namespace morlc
