// SPDX-License-Identifier: MIT
#include "morl/check/internal/pass_check.h"

#include "morl/check/internal/lost_code_checks.h"
#include "morl/check/internal/pass_checker.h"
#include "morl/core/nearest.h"

#include <algorithm>
#include <map>

namespace ns_ruke {
namespace {

void CheckReferences(const PassCheckInput& input, WarningList& warnings)
{
    for (std::size_t i = 0; i < input.link.origins.size(); ++i) {
        for (const std::string& reference : input.link.origins[i].node->References()) {
            if (input.nodes.count(reference) > 0) {
                continue;
            }
            const std::string nearest =
                warnings.WantsHint() ? input.index.NearestNode(input.nodes, reference) : "";
            warnings.Add(CheckKind::UnknownReference, static_cast<int>(i), WarningList::kNoOffset,
                         reference, DidYouMean(nearest, "; "));
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
        const std::string& macro = name;
        const auto isOfThisName = [&macro](const MorlDeclare* uniform) {
            return uniform->name == macro;
        };
        const std::vector<MorlDeclare*>& uniforms = input.linked.uniforms;
        std::string hint =
            warnings.WantsHint() ? DidYouMean(NearestName(unused, name), "; ") : std::string();
        if (std::any_of(uniforms.begin(), uniforms.end(), isOfThisName)) {
            hint = "; the uniform of this name is another thing: use 'if'";
        }
        warnings.Add(CheckKind::UnsetMacro, place.node, place.offset, name, hint);
    }
}

}  // namespace

void CheckPass(const PassCheckInput& input, std::vector<ReportWarning>& warnings)
{
    WarningList list(input.link, input.target.info, warnings);
    for (std::size_t i = 0; i < input.link.origins.size(); ++i) {
        CheckLostCode(*input.link.origins[i].node, static_cast<int>(i), input.pass.macros, list);
    }
    CheckReferences(input, list);
    CheckMacros(input, list);
    PassChecker(input, list).Run();
}

}  // namespace ns_ruke
