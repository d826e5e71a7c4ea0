// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ns_ruke {

/// The name most like `wanted`, or nothing if none is similar, and for long names, which nobody
/// types. Looks at the first 2,000 names only.
std::string NearestName(const std::vector<std::string_view>& names, std::string_view wanted);

}  // namespace ns_ruke
