// SPDX-License-Identifier: MIT
#include "morl/check/stages.h"

#include "morl/check/internal/check_kind.h"
#include "morl/core/limits.h"
#include "morl/core/nearest.h"
#include "morl/translator/targets.h"

#include <algorithm>
#include <cstddef>
#include <unordered_map>

namespace ns_ruke {
namespace {

/// What the vertex pass hands on: its outputs but the position, in the order of the struct.
std::vector<const ReportDeclare*> Varyings(const std::vector<ReportDeclare>& declares)
{
    std::vector<const ReportDeclare*> list;
    for (const ReportDeclare& declare : declares) {
        if (IsVarying(declare)) {
            list.push_back(&declare);
        }
    }
    return list;
}

void Add(CheckKind kind, const PassReport& report, const ReportDeclare& declare,
         const std::string& hint, std::vector<ReportWarning>& warnings)
{
    const CheckInfo& info = InfoOf(kind);
    warnings.push_back({info.name, report.nodes[static_cast<std::size_t>(declare.node)],
                        declare.line, declare.column, declare.name,
                        WarningText(info, declare.name, hint), info.isRefused});
}

std::string Suggestion(const std::vector<const ReportDeclare*>& outputs, const std::string& name)
{
    std::vector<std::string_view> names;
    names.reserve(outputs.size());
    for (const ReportDeclare* output : outputs) {
        names.push_back(output->name);
    }
    const std::string meant = DidYouMean(NearestName(names, name), "; ");
    return meant.empty() ? "; add a node that declares it as 'out'" : meant;
}

bool Concerns(CheckKind kind, const std::string& target)
{
    const TargetInfo* info = FindTargetInfo(target);
    return info != nullptr && info->Has(InfoOf(kind).traits);
}

/// Macros that are set for both passes, but that neither of them asks for.
void CheckMacros(const PassReport& vertex, const PassReport& fragment,
                 std::vector<ReportWarning>& warnings)
{
    const CheckInfo& info = InfoOf(CheckKind::UnusedMacro);
    for (const std::string& name : vertex.unusedMacros) {
        if (std::binary_search(fragment.unusedMacros.begin(), fragment.unusedMacros.end(), name)) {
            warnings.push_back(
                {info.name, "", 0, 0, name, WarningText(info, name, ""), info.isRefused});
        }
    }
}

}  // namespace

void CheckStages(const PassReport& vertex, const PassReport& fragment, const std::string& target,
                 std::vector<ReportWarning>& warnings)
{
    const std::vector<const ReportDeclare*> outputs = Varyings(vertex.outputs);
    const std::vector<const ReportDeclare*> inputs = Varyings(fragment.inputs);
    CheckMacros(vertex, fragment, warnings);
    std::unordered_map<std::string_view, std::size_t> places;
    for (std::size_t i = 0; i < outputs.size(); ++i) {
        places.emplace(outputs[i]->name, i);
    }
    bool hasMoved = false;
    for (std::size_t i = 0; i < inputs.size(); ++i) {
        const ReportDeclare& input = *inputs[i];
        if (warnings.size() >= kMaxWarnings) {
            return;
        }
        const auto found = places.find(input.name);
        if (found == places.end()) {
            Add(CheckKind::UnmatchedInput, fragment, input, Suggestion(outputs, input.name),
                warnings);
            continue;
        }
        const std::size_t place = found->second;
        const bool hasOtherSemantic = outputs[place]->semantic != input.semantic &&
                                      !input.semantic.empty() && !outputs[place]->semantic.empty();
        if (hasOtherSemantic && Concerns(CheckKind::VaryingSemantic, target)) {
            Add(CheckKind::VaryingSemantic, fragment, input, "", warnings);
        }
        if (outputs[place]->type != input.type) {
            Add(CheckKind::VaryingType, fragment, input, "", warnings);
        }
        if (place != i && !hasMoved && Concerns(CheckKind::VaryingPlace, target)) {
            hasMoved = true;
            Add(CheckKind::VaryingPlace, fragment, input, "", warnings);
        }
    }
}

}  // namespace ns_ruke
