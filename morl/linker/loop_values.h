// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>

namespace ns_ruke {

/// Orders names by length, longer ones first, then by their bytes. A loop name that is part of a
/// longer loop name therefore never spoils the longer one.
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
