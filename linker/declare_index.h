// SPDX-License-Identifier: MIT
#pragma once

#include "morl/ast/declarations.h"
#include "morl/core/export.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace ns_ruke {

/// Answers which names a growing list of declarations holds. Short lists are scanned; for a longer
/// one a set of its names is kept, so that merging many declarations stays linear.
class MORL_API DeclareIndex {
public:
    /// Whether a declaration of `declares` has this name. Between two calls a list may only grow at
    /// its end, and its declarations must keep their names.
    bool Contains(const std::vector<MorlDeclare*>& declares, const std::string& name);

    /// Forgets all lists.
    void Clear();

private:
    struct Names {
        std::size_t counted = 0;  ///< how many declarations of the list are in the set
        std::unordered_set<std::string_view> set;
    };

    std::unordered_map<const void*, Names> lists;  ///< by the address of the list
};

}  // namespace ns_ruke
