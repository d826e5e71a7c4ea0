// SPDX-License-Identifier: MIT
#include "morl/check/internal/warning_list.h"

#include <cstddef>

namespace ns_ruke {
void WarningList::Add(CheckKind kind, int node, std::uint32_t offset, std::string_view name,
                      std::string_view hint)
{
    const CheckInfo& info = InfoOf(kind);
    const bool hasPlace = node >= 0 && offset != kNoOffset;
    if (warnings.size() >= kMaxWarnings || !target.Has(info.traits) ||
        (hasPlace && !places.emplace(kind, node, offset).second)) {
        return;
    }
    ReportWarning& warning = warnings.emplace_back();
    warning.check = info.name;
    warning.name = name;
    warning.text = WarningText(info, name, hint);
    warning.isRefused = info.isRefused;
    if (node >= 0) {
        warning.node = link.origins[static_cast<std::size_t>(node)].node->GetName();
    }
    if (hasPlace) {
        const TextPlace place = link.origins[static_cast<std::size_t>(node)].node->PlaceOf(offset);
        warning.line = place.line;
        warning.column = place.column;
    }
}

}  // namespace ns_ruke
