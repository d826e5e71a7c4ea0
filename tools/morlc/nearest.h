// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace morlc {

/// " (did you mean 'NAME'?)" with the name most similar to `wanted`; empty if none is similar, and
/// for long names, which nobody types.
std::string Suggestion(const std::vector<std::string>& names, const std::string& wanted);

}  // namespace morlc
