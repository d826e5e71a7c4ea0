// SPDX-License-Identifier: MIT
#include "morl/check/internal/scope.h"

namespace ns_ruke {

const ScopeEntry* Scope::Declare(ScopeEntry entry)
{
    const auto index = static_cast<std::ptrdiff_t>(entries.size());
    const auto [known, isNew] = byName.try_emplace(entry.name, index);
    entry.depth = Depth();
    entry.hides = isNew ? -1 : known->second;
    known->second = index;
    entries.push_back(entry);
    return entry.hides >= 0 ? &entries[static_cast<std::size_t>(entry.hides)] : nullptr;
}

ScopeEntry* Scope::Find(std::string_view name)
{
    const auto known = byName.find(name);
    return known != byName.end() && known->second >= 0
               ? &entries[static_cast<std::size_t>(known->second)]
               : nullptr;
}

void Scope::EndBlock()
{
    while (entries.size() > blocks.back()) {
        byName[entries.back().name] = entries.back().hides;
        entries.pop_back();
    }
    blocks.pop_back();
}

}  // namespace ns_ruke
