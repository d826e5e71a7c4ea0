// SPDX-License-Identifier: MIT
#include "morl/check/internal/pass_check.h"

#include "morl/check/internal/lost_code_checks.h"
#include "morl/check/internal/pass_checker.h"
#include "morl/core/internal/nearest.h"

#include <map>

namespace ns_ruke {
namespace {

/// "; did you mean 'NAME'?", or nothing.
std::string Suggest(const std::vector<std::string_view>& names, const std::string& wanted)
{
    const std::string nearest = NearestName(names, wanted);
    return nearest.empty() ? "" : "; did you mean '" + nearest + "'?";
}

void CheckReferences(const PassCheckInput& input, WarningList& warnings)
{
    for (std::size_t i = 0; i < input.link.origins.size(); ++i) {
        for (const std::string& reference : input.link.origins[i].node->GetReference()) {
            if (input.nodes.count(reference) > 0) {
                continue;
            }
            std::vector<std::string_view> names;
            for (const auto& [name, node] : input.nodes) {
                names.push_back(name);
            }
            warnings.Add(CheckKind::UnknownReference, static_cast<int>(i), 0, reference,
                         Suggest(names, reference));
        }
    }
}

void CheckMacros(const PassCheckInput& input, WarningList& warnings)
{
    std::vector<std::string_view> unused;
    for (const auto& [name, value] : input.pass.macros) {
        if (input.link.usedMacros.count(name) == 0) {
            unused.push_back(name);
        }
    }
    std::vector<std::string_view> unset;
    for (const auto& [name, place] : input.link.usedMacros) {
        if (input.pass.macros.count(name) == 0) {
            unset.push_back(name);
            warnings.Add(CheckKind::UnsetMacro, place.node, place.offset, name,
                         Suggest(unused, name));
        }
    }
    std::sort(unused.begin(), unused.end());
    for (const std::string_view name : unused) {
        warnings.Add(CheckKind::UnusedMacro, -1, 0, name, Suggest(unset, std::string(name)));
    }
}

}  // namespace

void CheckPass(const PassCheckInput& input, std::vector<ReportWarning>& warnings)
{
    WarningList list(input.link, input.pass.target, warnings);
    for (std::size_t i = 0; i < input.link.origins.size(); ++i) {
        CheckLostCode(*input.link.origins[i].node, static_cast<int>(i), list);
    }
    CheckReferences(input, list);
    CheckMacros(input, list);
    PassChecker(input, list).Run();
}

}  // namespace ns_ruke
