// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace morlc {

/// The name most like `wanted`; empty when none is like it, and for long names, which nobody types.
std::string Nearest(const std::vector<std::string>& names, const std::string& wanted);

/// " (did you mean 'NAME'?)" of the nearest name; empty when there is none.
std::string Suggestion(const std::vector<std::string>& names, const std::string& wanted);

}  // namespace morlc
