// SPDX-License-Identifier: MIT
#include "check/findings.h"

#include <morl/morl.h>
#include <algorithm>

namespace morlc {
void Findings::Add(const Finding& finding, const FindingContext& context)
{
    // Compilers have their own words for the same fault.
    const Key key = {finding.check, finding.node, finding.line, finding.column,
                     finding.isVerdict && finding.line > 0 ? "" : finding.text};
    const auto [known, isNew] = byKey.try_emplace(key, entries.size());
    if (isNew) {
        entries.push_back({finding, context, {}});
    }
    entries[known->second].targets.insert(context.target);
}

std::vector<Diagnostic> Findings::Tell(std::size_t allTargets) const
{
    // A verdict on how the stages fit together has no line.
    const bool hasStageWarnings =
        std::any_of(entries.begin(), entries.end(), [](const Entry& entry) {
            return entry.finding.check == "varying-type" ||
                   entry.finding.check == "unmatched-input";
        });
    std::set<Line> warned;
    std::set<Line> judged;
    for (const Entry& entry : entries) {
        const Finding& finding = entry.finding;
        const Line line = {finding.node, finding.line};
        if (finding.line > 0 && finding.isVerdict) {
            judged.insert(line);
        } else if (finding.line > 0 && !finding.check.empty()) {
            warned.insert(line);
        }
    }
    std::vector<Diagnostic> told;
    for (const Entry& entry : entries) {
        const Finding& finding = entry.finding;
        const Line line = {finding.node, finding.line};
        const bool isTold = finding.line > 0 ? warned.count(line) > 0 : hasStageWarnings;
        if (finding.isVerdict && isTold) {
            continue;
        }
        Diagnostic& diagnostic = told.emplace_back();
        const bool isConfirmed = judged.count(line) > 0 && !finding.check.empty();
        diagnostic.severity = isConfirmed ? Severity::Error : finding.severity;
        diagnostic.check = finding.check;
        diagnostic.node = finding.node;
        diagnostic.place.line = finding.line;
        diagnostic.place.column = finding.column;
        diagnostic.text = finding.text;
        diagnostic.generated = finding.generated;
        diagnostic.shader = entry.first.shader;
        diagnostic.variant = entry.first.variant;
        if (entry.targets.size() < allTargets) {
            for (const std::string& target : ns_ruke::MorlTargets()) {
                if (entry.targets.count(target) > 0) {
                    diagnostic.targets.push_back(target);
                }
            }
        }
    }
    return told;
}

}  // namespace morlc
