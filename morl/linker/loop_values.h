// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>

namespace ns_ruke {

/// Orders names by length, longest first, then by their bytes. Substituting a loop name therefore
/// never damages a longer loop name that contains it.
struct LongerNameFirst {
    bool operator()(const std::string& a, const std::string& b) const
    {
        return a.size() != b.size() ? a.size() > b.size() : a < b;
    }
};

/// The values, as decimal text, that loops and macro assignments have given to names, in the order
/// in which they are substituted.
using LoopValues = std::map<std::string, std::string, LongerNameFirst>;

}  // namespace ns_ruke
