// SPDX-License-Identifier: MIT
#pragma once

#include "morl/core/export.h"

#include <cstddef>
#include <map>
#include <string>
#include <string_view>

namespace ns_ruke {

/// Orders names by length, longer ones first, then by their bytes. A loop name that is part of a
/// longer loop name therefore never spoils the longer one.
struct MORL_API LongerNameFirst {
    using is_transparent = void;

    bool operator()(std::string_view a, std::string_view b) const
    {
        return a.size() != b.size() ? a.size() > b.size() : a < b;
    }

    // Comparisons with a length stand for all names of that length.
    bool operator()(std::string_view a, std::size_t length) const { return a.size() > length; }
    bool operator()(std::size_t length, std::string_view b) const { return length > b.size(); }
};

/// The values, as decimal text, that loops and macro assignments have given to names, in the order
/// in which they are substituted.
using LoopValues = std::map<std::string, std::string, LongerNameFirst>;

/// A copy of `name` in which every name in force is replaced by its value, as plain text, wherever
/// it occurs: one after the other in the order of the map, as by StringHelper::ReplaceAll.
/// @param work is increased by what it took, in units of kMaxLinkWork.
std::string SubstituteLoopValues(const LoopValues& values, const std::string& name,
                                 std::size_t& work);

}  // namespace ns_ruke
