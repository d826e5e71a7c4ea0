// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace ns_ruke {

bool IsDigit(char c);

/// Whether names, numbers and keywords have this character.
bool IsWordCharacter(char c);

/// The first hint that the words of a line give, from the left; comments do not count. Empty if all
/// of them are words of the language, or unknown.
std::string HintInWords(std::string_view line);

/// The functions that every target has.
std::string_view PortableIntrinsics();

}  // namespace ns_ruke
