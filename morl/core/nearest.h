// SPDX-License-Identifier: MIT
#pragma once

#include "morl/core/export.h"

#include <string>
#include <string_view>
#include <vector>

namespace ns_ruke {

/// How many insertions, deletions, replacements and swaps of neighbours turn one name into the
/// other.
std::size_t EditDistance(std::string_view a, std::string_view b);

/// The name most like `wanted`, the first one if several are; looks at the first 2,000 only. Empty
/// if nothing is similar, or `wanted` exceeds 64 bytes.
MORL_API std::string NearestName(const std::vector<std::string_view>& names,
                                 std::string_view wanted);

/// The question "did you mean 'NAME'?", between `before` and `after`; empty without a name.
MORL_API std::string DidYouMean(std::string_view name, std::string_view before,
                                std::string_view after = {});

}  // namespace ns_ruke
