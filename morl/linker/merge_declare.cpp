// SPDX-License-Identifier: MIT
#include "morl/core/internal/graphics_log.h"
#include "morl/core/limits.h"
#include "morl/core/messages.h"
#include "morl/linker/morl_linker.h"

#include <algorithm>
#include <memory>

namespace ns_ruke {
namespace {

/// Up to this length, comparing names costs less than looking them up.
constexpr std::size_t kLongestScan = 32;

}  // namespace

// The first declaration of a name wins. The new name is compared before substitution with existing
// names after substitution, so inside a `#for` every copy is added, no matter how often the group
// is merged.
void MorlLinker::MergeDeclare(std::vector<MorlDeclare*>& declares, MorlDeclare* declare,
                              bool reportConflict)
{
    ++work;
    if (!IsDeclared(declares, declare->name)) {
        AppendDeclare(declares, declare);
        if (declares.size() > kLongestScan) {
            AddNames(declares, declares.size() == kLongestScan + 1 ? 0 : declares.size() - 1);
        }
        return;
    }
    if (linkReport != nullptr && linkReport->repetitions.size() < kMaxWarnings) {
        linkReport->repetitions.push_back({declare, static_cast<int>(linkReport->origins.size())});
    }
    if (reportConflict) {
        LogGraphicsError(messages::kDeclare + declare->name + messages::kConflicts);
    }
}

bool MorlLinker::IsDeclared(const std::vector<MorlDeclare*>& declares,
                            const std::string& name) const
{
    if (declares.size() > kLongestScan) {
        return declaredNames.count({&declares, name}) != 0;
    }
    return std::any_of(declares.begin(), declares.end(),
                       [&name](const MorlDeclare* declare) { return declare->name == name; });
}

void MorlLinker::AddNames(const std::vector<MorlDeclare*>& declares, std::size_t first)
{
    for (std::size_t i = first; i < declares.size(); ++i) {
        declaredNames.emplace(&declares, declares[i]->name);
    }
}

}  // namespace ns_ruke
