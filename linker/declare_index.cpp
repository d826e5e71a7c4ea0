// SPDX-License-Identifier: MIT
#include "morl/linker/declare_index.h"

#include <algorithm>

namespace ns_ruke {
namespace {

/// Up to this length, comparing names costs less than hashing them.
constexpr std::size_t kLongestScan = 32;

}  // namespace

bool DeclareIndex::Contains(const std::vector<MorlDeclare*>& declares, const std::string& name)
{
    if (declares.size() <= kLongestScan) {
        return std::any_of(declares.begin(), declares.end(),
                           [&name](const MorlDeclare* declare) { return declare->name == name; });
    }
    Names& names = lists[&declares];
    for (; names.counted < declares.size(); ++names.counted) {
        names.set.insert(declares[names.counted]->name);
    }
    return names.set.count(name) != 0;
}

void DeclareIndex::Clear()
{
    lists.clear();
}

}  // namespace ns_ruke
