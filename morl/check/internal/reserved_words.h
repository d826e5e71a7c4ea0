// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace ns_ruke {

/// Whether a variable of this name clashes with a word of a target.
bool IsReservedWord(std::string_view name, std::string_view target);

}  // namespace ns_ruke
