// SPDX-License-Identifier: MIT
#include "check/findings.h"

#include <morl/morl.h>
#include <algorithm>

namespace morlc {
void Findings::Add(const Finding& finding, const FindingContext& context)
{
    // Compilers have their own words for the same fault. What is in no node is the shader's.
    const bool isVerdictOnLine = finding.isVerdict && finding.line > 0;
    const Key key = {finding.check, finding.node,   finding.node.empty() ? context.shader : "",
                     finding.line,  finding.column, isVerdictOnLine ? "" : finding.text};
    const auto [known, isNew] = byKey.try_emplace(key, entries.size());
    if (isNew) {
        entries.push_back({finding, context, {}});
        if (IsRefused(finding.check)) {
            refused.insert({finding.node, finding.line});
        }
    }
    entries[known->second].targets.insert(context.target);
}

bool Findings::IsRefused(const std::string& check)
{
    const auto& checks = ns_ruke::MorlChecks();
    return std::any_of(checks.begin(), checks.end(),
                       [&](const auto& info) { return info.name == check && info.isRefused; });
}

/// Whether a warning has said the same as a verdict. How the stages fit together is a verdict
/// without a line, and a warning with one.
bool Findings::ConfirmsAWarning(const Entry& verdict) const
{
    if (verdict.finding.line > 0) {
        return refused.count({verdict.finding.node, verdict.finding.line}) > 0;
    }
    return std::any_of(entries.begin(), entries.end(), [&](const Entry& entry) {
        const std::string& check = entry.finding.check;
        return (check == "varying-type" || check == "unmatched-input") &&
               entry.first.shader == verdict.first.shader;
    });
}

std::vector<Diagnostic> Findings::Tell(std::size_t allTargets) const
{
    std::map<Line, std::set<std::string>> judged;  ///< the targets of the verdicts on a line
    for (const Entry& entry : entries) {
        if (entry.finding.isVerdict && entry.finding.line > 0) {
            judged[{entry.finding.node, entry.finding.line}].insert(entry.targets.begin(),
                                                                    entry.targets.end());
        }
    }
    std::vector<Diagnostic> told;
    for (const Entry& entry : entries) {
        const Finding& finding = entry.finding;
        const Line line = {finding.node, finding.line};
        if (finding.isVerdict && ConfirmsAWarning(entry)) {
            continue;
        }
        Diagnostic& diagnostic = told.emplace_back();
        const bool isConfirmed = judged.count(line) > 0 && IsRefused(finding.check);
        diagnostic.severity = finding.severity;
        diagnostic.check = finding.check;
        diagnostic.node = finding.node;
        diagnostic.nodePlace = {finding.line, finding.column};
        diagnostic.reference = finding.reference;
        diagnostic.text = finding.text;
        diagnostic.hint = finding.hint;
        diagnostic.generated = finding.generated;
        diagnostic.shader = entry.first.shader;
        diagnostic.variant = entry.first.variant;
        std::set<std::string> targets = entry.targets;
        if (isConfirmed) {
            targets.insert(judged[line].begin(), judged[line].end());
        }
        if (targets.size() < allTargets) {
            for (const std::string& target : ns_ruke::MorlTargets()) {
                if (targets.count(target) > 0) {
                    diagnostic.targets.push_back(target);
                }
            }
        }
    }
    return told;
}

}  // namespace morlc
