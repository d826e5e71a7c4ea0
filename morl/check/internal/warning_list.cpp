// SPDX-License-Identifier: MIT
#include "morl/check/internal/warning_list.h"

#include "morl/core/limits.h"
#include "morl/core/string_helper.h"

#include <algorithm>

namespace ns_ruke {
namespace {

bool Concerns(const CheckInfo& info, const std::string& target)
{
    if (info.targets.empty()) {
        return true;
    }
    const std::vector<std::string> targets =
        StringHelper::Split(std::string(info.targets), " ", true);
    return std::find(targets.begin(), targets.end(), target) != targets.end();
}

std::string TextOf(const CheckInfo& info, std::string_view name, std::string_view hint)
{
    std::string text = StringHelper::ReplaceAll(std::string(info.text), "{}", std::string(name));
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
    if (warnings.size() >= kMaxWarnings || !Concerns(info, std::string(target)) ||
        (node >= 0 && !places.emplace(kind, node, offset).second)) {
        return;
    }
    ReportWarning& warning = warnings.emplace_back();
    warning.check = info.name;
    warning.text = TextOf(info, name, hint);
    if (node >= 0) {
        const MorlNode& source = *link.origins[static_cast<std::size_t>(node)].node;
        const TextPlace place = source.PlaceOf(offset);
        warning.node = source.GetName();
        warning.line = place.line;
        warning.column = place.column;
    }
}

}  // namespace ns_ruke
