// SPDX-License-Identifier: MIT
#include "morl/check/internal/scope.h"

namespace ns_ruke {

const ScopeEntry* Scope::Declare(const ScopeEntry& entry)
{
    entries.push_back(entry);
    ScopeEntry& added = entries.back();
    std::int32_t& number = visible[added.name];
    added.depth = depth;
    added.hidden = number;
    number = static_cast<std::int32_t>(entries.size());
    return EntryOf(added.hidden);
}

ScopeEntry* Scope::Find(std::string_view name)
{
    const std::int32_t* number = visible.Find(name);
    return EntryOf(number != nullptr ? *number : 0);
}

ScopeEntry* Scope::EntryOf(std::int32_t number)
{
    return number > 0 ? &entries[static_cast<std::size_t>(number) - 1] : nullptr;
}

void Scope::EndBlock()
{
    while (!entries.empty() && entries.back().depth == depth) {
        visible[entries.back().name] = entries.back().hidden;
        entries.pop_back();
    }
    --depth;
}

}  // namespace ns_ruke
