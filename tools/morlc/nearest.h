// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace morlc {

/// " (did you mean 'NAME'?)" of the name most like `wanted`; empty when none is like it, and for
/// long names, which nobody types.
std::string Suggestion(const std::vector<std::string>& names, const std::string& wanted);

}  // namespace morlc
