// SPDX-License-Identifier: MIT
#pragma once

#include "morl/check/internal/check_kind.h"
#include "morl/compiler/morl_node.h"
#include "morl/compiler/pass_report.h"
#include "morl/core/limits.h"
#include "morl/linker/link_report.h"
#include "morl/translator/targets.h"

#include <cstdint>
#include <set>
#include <string_view>
#include <tuple>
#include <vector>

namespace ns_ruke {

/// Collects the warnings of one pass: those that concern its target, each place once (a `#for`
/// repeats its content), and kMaxWarnings at most.
class WarningList {
public:
    /// Stands for a place that is not in the source of the node.
    static constexpr std::uint32_t kNoOffset = UINT32_MAX;

    /// The arguments must outlive this object.
    WarningList(const LinkReport& newLink, const TargetInfo& newTarget,
                std::vector<ReportWarning>& newWarnings)
        : link(newLink), target(newTarget), warnings(newWarnings)
    {
    }

    /// @param node an index into the link's list; -1: none
    /// @param offset in the source of the node, in bytes
    /// @param name what the text is about
    /// @param hint what follows the text, such as a suggestion
    void Add(CheckKind kind, int node, std::uint32_t offset, std::string_view name = {},
             std::string_view hint = {});

    /// Whether a warning at this place would be new; saves the work for its text.
    bool IsNew(CheckKind kind, int node, std::uint32_t offset) const
    {
        return warnings.size() < kMaxWarnings && places.count({kind, node, offset}) == 0;
    }

    /// @param node an index into the link's list
    const std::string& NodeName(int node) const
    {
        return link.origins[static_cast<std::size_t>(node)].node->Name();
    }

    /// Whether a suggestion should be looked for. Nobody reads hundreds, and looking takes time.
    bool WantsHint()
    {
        constexpr int kMaxHints = 20;
        return ++hints <= kMaxHints;
    }

private:
    const LinkReport& link;
    const TargetInfo& target;
    std::vector<ReportWarning>& warnings;
    std::set<std::tuple<CheckKind, int, std::uint32_t>> places;
    int hints = 0;
};

}  // namespace ns_ruke
