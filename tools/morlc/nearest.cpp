// SPDX-License-Identifier: MIT
#include "nearest.h"

#include <algorithm>
#include <numeric>
#include <string_view>
#include <utility>

namespace morlc {
namespace {

/// How many insertions, deletions and replacements make one name of the other.
std::size_t EditDistance(std::string_view a, std::string_view b)
{
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i);
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t replaced = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
            diagonal = std::exchange(row[j], std::min({replaced, row[j] + 1, row[j - 1] + 1}));
        }
    }
    return row.back();
}

}  // namespace

std::string Nearest(const std::vector<std::string>& names, const std::string& wanted)
{
    std::string nearest;
    std::size_t best = wanted.size() / 3 + 2;
    for (const std::string& name : names) {
        const std::size_t distance = EditDistance(name, wanted);
        if (distance < best) {
            best = distance;
            nearest = name;
        }
    }
    return nearest;
}

std::string Suggestion(const std::vector<std::string>& names, const std::string& wanted)
{
    const std::string nearest = Nearest(names, wanted);
    return nearest.empty() ? "" : " (did you mean '" + nearest + "'?)";
}

}  // namespace morlc
