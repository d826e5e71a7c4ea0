// SPDX-License-Identifier: MIT
#include "morl/check/internal/pass_check.h"

#include "morl/check/internal/lost_code_checks.h"
#include "morl/check/internal/pass_checker.h"
#include "morl/core/internal/nearest.h"

#include <algorithm>
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
    if (input.unknownReferences.empty()) {
        return;
    }
    std::vector<std::string_view> names;
    for (const auto& [name, node] : input.nodes) {
        names.push_back(name);
    }
    std::sort(names.begin(), names.end());
    for (std::size_t i = 0; i < input.link.origins.size(); ++i) {
        const auto unknown = input.unknownReferences.equal_range(input.link.origins[i].node);
        for (auto entry = unknown.first; entry != unknown.second; ++entry) {
            warnings.Add(CheckKind::UnknownReference, static_cast<int>(i), WarningList::kNoOffset,
                         entry->second,
                         warnings.WantsHint() ? Suggest(names, entry->second) : std::string());
        }
    }
}

/// Macros that are set but not used are a question for both passes: see CheckStages.
void CheckMacros(const PassCheckInput& input, WarningList& warnings)
{
    for (const auto& [name, place] : input.link.usedMacros) {
        if (input.pass.macros.count(name) > 0) {
            continue;
        }
        std::vector<std::string_view> unused;
        for (const auto& [other, value] : input.pass.macros) {
            if (input.link.usedMacros.count(other) == 0) {
                unused.push_back(other);
            }
        }
        std::sort(unused.begin(), unused.end());
        warnings.Add(CheckKind::UnsetMacro, place.node, place.offset, name,
                     warnings.WantsHint() ? Suggest(unused, name) : std::string());
    }
}

}  // namespace

UnknownReferences FindUnknownReferences(const std::unordered_map<std::string, MorlNode*>& nodes)
{
    UnknownReferences unknown;
    for (const auto& [name, node] : nodes) {
        for (const std::string& reference : node->References()) {
            if (nodes.count(reference) == 0) {
                unknown.emplace(node, reference);
            }
        }
    }
    return unknown;
}

void CheckPass(const PassCheckInput& input, std::vector<ReportWarning>& warnings)
{
    WarningList list(input.link, input.target.info, warnings);
    for (std::size_t i = 0; i < input.link.origins.size(); ++i) {
        CheckLostCode(*input.link.origins[i].node, static_cast<int>(i), list);
    }
    CheckReferences(input, list);
    CheckMacros(input, list);
    PassChecker(input, list).Run();
}

}  // namespace ns_ruke
