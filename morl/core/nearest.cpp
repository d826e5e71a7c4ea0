// SPDX-License-Identifier: MIT
#include "morl/core/nearest.h"

#include <algorithm>
#include <numeric>

namespace ns_ruke {
namespace {

/// The only name that begins with `wanted`, an abbreviation; empty if there are none or several.
std::string_view OnlyCompletion(const std::vector<std::string_view>& names, std::string_view wanted)
{
    constexpr std::size_t kShortest = 4;
    std::string_view completion;
    for (const std::string_view name : names) {
        if (wanted.size() < kShortest || name.substr(0, wanted.size()) != wanted) {
            continue;
        }
        if (!completion.empty() && completion != name) {
            return {};
        }
        completion = name;
    }
    return completion;
}

}  // namespace

std::size_t EditDistance(std::string_view a, std::string_view b)
{
    using Row = std::vector<std::size_t>;
    Row before(b.size() + 1);
    Row last(b.size() + 1);
    Row row(b.size() + 1);
    std::iota(last.begin(), last.end(), std::size_t{0});
    for (std::size_t i = 1; i <= a.size(); ++i) {
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t replaced = last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            row[j] = std::min({replaced, last[j] + 1, row[j - 1] + 1});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
                row[j] = std::min(row[j], before[j - 2] + 1);
            }
        }
        before.swap(last);
        last.swap(row);
    }
    return last.back();
}

std::string NearestName(const std::vector<std::string_view>& names, std::string_view wanted)
{
    constexpr std::size_t kLongest = 64;
    constexpr std::size_t kMostNames = 2000;  // comparing takes time
    std::string_view nearest;
    std::size_t best = wanted.size() / 3 + 1;
    if (wanted.size() > kLongest) {
        return {};
    }
    const std::size_t count = std::min(names.size(), kMostNames);
    for (std::size_t i = 0; i < count; ++i) {
        const std::string_view name = names[i];
        const std::size_t longer = std::max(name.size(), wanted.size());
        const std::size_t shorter = std::min(name.size(), wanted.size());
        const std::size_t distance =
            longer - shorter < best ? EditDistance(name, wanted) : longer - shorter;
        if (distance < best) {
            best = distance;
            nearest = name;
        }
    }
    return std::string(nearest.empty() ? OnlyCompletion(names, wanted) : nearest);
}

std::string DidYouMean(std::string_view name, std::string_view before, std::string_view after)
{
    if (name.empty()) {
        return {};
    }
    std::string text(before);
    text.append("did you mean '").append(name).append("'?").append(after);
    return text;
}

}  // namespace ns_ruke
