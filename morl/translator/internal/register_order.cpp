// SPDX-License-Identifier: MIT
#include "morl/translator/internal/register_order.h"

#include "morl/core/string_helper.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>

namespace ns_ruke {

int RankOfTexcoord(std::string_view semantic)
{
    constexpr int kFirst = 4;
    constexpr std::string_view kTexcoord = "TEXCOORD";
    if (semantic.size() < kTexcoord.size()) {
        return kFirst;
    }
    const std::int64_t number =
        StringHelper::ConvertToInt32(std::string(semantic.substr(kTexcoord.size())));
    return static_cast<int>(
        std::min<std::int64_t>(kFirst + number, std::numeric_limits<int>::max()));
}

// Uses std::sort with the position as tie-break, because std::stable_sort allocates through a
// facility that the standard has withdrawn.
void SortByRank(std::vector<RankedDeclare>& ranked)
{
    std::sort(ranked.begin(), ranked.end(), [](const RankedDeclare& a, const RankedDeclare& b) {
        return a.rank != b.rank ? a.rank < b.rank : a.position < b.position;
    });
}

}  // namespace ns_ruke
