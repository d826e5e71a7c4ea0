// SPDX-License-Identifier: MIT
#include "morl/check/internal/warning_list.h"

#include <cstddef>

namespace ns_ruke {
namespace {

bool Concerns(const CheckInfo& info, std::string_view target)
{
    if (info.targets.empty()) {
        return true;
    }
    for (std::size_t found = info.targets.find(target); found != std::string_view::npos;
         found = info.targets.find(target, found + 1)) {
        const std::size_t end = found + target.size();
        const bool isWhole = (found == 0 || info.targets[found - 1] == ' ') &&
                             (end == info.targets.size() || info.targets[end] == ' ');
        if (isWhole) {
            return true;
        }
    }
    return false;
}

std::string TextOf(const CheckInfo& info, std::string_view name, std::string_view hint)
{
    constexpr std::string_view kPlace = "{}";
    std::string text;
    text.reserve(info.text.size() + 2 * name.size() + info.cure.size() + hint.size());
    std::string_view rest = info.text;
    for (std::size_t found = rest.find(kPlace); found != std::string_view::npos;
         found = rest.find(kPlace)) {
        text.append(rest.substr(0, found)).append(name);
        rest.remove_prefix(found + kPlace.size());
    }
    text.append(rest);
    if (!info.cure.empty()) {
        text.append(info.group == "targets" ? "; instead: " : "; ").append(info.cure);
    }
    return text.append(hint);
}

}  // namespace

void WarningList::Add(CheckKind kind, int node, std::uint32_t offset, std::string_view name,
                      std::string_view hint)
{
    const CheckInfo& info = InfoOf(kind);
    const bool hasPlace = node >= 0 && offset != kNoOffset;
    if (warnings.size() >= kMaxWarnings || !Concerns(info, target) ||
        (hasPlace && !places.emplace(kind, node, offset).second)) {
        return;
    }
    ReportWarning& warning = warnings.emplace_back();
    warning.check = info.name;
    warning.name = name;
    warning.text = TextOf(info, name, hint);
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
