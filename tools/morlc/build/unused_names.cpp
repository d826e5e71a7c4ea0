// SPDX-License-Identifier: MIT
#include "build/unused_names.h"

#include "build/pass_texts.h"
#include "text.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace morlc {
namespace {

/// Suggests only names that are not given as well.
void WarnAboutUnused(const NamePlaces& given, const std::set<std::string>& used,
                     const std::string& text, const std::string& check, Diagnostics& diagnostics)
{
    std::vector<std::string> others;
    std::copy_if(used.begin(), used.end(), std::back_inserter(others),
                 [&](const std::string& name) { return given.count(name) == 0; });
    for (const auto& [name, place] : given) {
        if (used.count(name) == 0) {
            std::string warning = text;
            warning.append(" '").append(name).append("'").append(Suggestion(others, name));
            Diagnostic diagnostic = WarningAt(place, warning);
            diagnostic.check = check;
            diagnostics.Report(diagnostic);
        }
    }
}

}  // namespace

void UsedNames::Add(const ns_ruke::PassReport& report)
{
    for (const ns_ruke::ReportMacro& macro : report.macros) {
        macros.insert(macro.name);
    }
    for (const ns_ruke::ReportDeclare& uniform : report.uniforms) {
        (uniform.semantic == kAutomaticRegister ? samplers : otherUniforms).insert(uniform.name);
    }
}

void UsedNames::AddMentioned(const ns_ruke::MorlCompiler& compiler,
                             const std::vector<std::string>& nodes, const NamePlaces& given)
{
    for (const std::string& name : nodes) {
        const ns_ruke::MorlNode* node = compiler.FindNode(name);
        for (const auto& [macro, place] : given) {
            if (node != nullptr && Mentions(node->Content(), macro)) {
                macros.insert(macro);
            }
        }
    }
}

void ReportUnusedNames(const NamePlaces& macros, const NamePlaces& samplers, const UsedNames& used,
                       const std::string& where, bool namesChecks, Diagnostics& diagnostics)
{
    WarnAboutUnused(macros, used.macros, "no node of " + where + " has the macro",
                    namesChecks ? "unused-macro" : "", diagnostics);
    NamePlaces unknown = samplers;
    for (const auto& [name, place] : samplers) {
        if (used.otherUniforms.count(name) > 0) {
            Diagnostic diagnostic = WarningAt(
                place, "'" + name + "' is not bound to SAUTO, so this register has no effect");
            diagnostic.check = namesChecks ? "unused-sampler" : "";
            diagnostics.Report(diagnostic);
            unknown.erase(name);
        }
    }
    WarnAboutUnused(unknown, used.samplers, "there is no sampler in " + where + " called",
                    namesChecks ? "unused-sampler" : "", diagnostics);
}

}  // namespace morlc
