// SPDX-License-Identifier: MIT
#include "check/check.h"

#include "build/manifest.h"
#include "build/unused_names.h"
#include "check/author_place.h"
#include "check/checked_units.h"
#include "check/findings.h"
#include "check/units.h"
#include "check/verdicts.h"
#include "nodes/node_files.h"
#include "path.h"

#include <morl/morl.h>
#include <algorithm>
#include <filesystem>
#include <optional>
#include <set>
#include <stdexcept>
#include <string_view>

namespace morlc {
namespace {

using ns_ruke::ReportFault;
using ns_ruke::ReportWarning;

/// One run of "morlc check".
class CheckRun {
public:
    CheckRun(const CheckOptions& newOptions, const std::string& newPrefix,
             Diagnostics& newDiagnostics)
        : options(newOptions), prefix(newPrefix), diagnostics(newDiagnostics)
    {
    }

    void Run()
    {
        nodes = LoadNodes(prefix, diagnostics);
        if (!nodes.compiler) {
            return;
        }
        MakeUnits();
        FindJudges();
        checked.emplace(units, *nodes.compiler, options.jobs);
        Collect();
        for (Diagnostic& diagnostic : findings.Tell(targets.size())) {
            Tell(diagnostic);
        }
        TellUnsetMacros();
        TellUnusedNames();
    }

private:
    void FindJudges()
    {
        if (!Tells("verdict")) {
            return;
        }
        judges.emplace(options.direct3dCompiler);
        for (const std::string& note : judges->DescribeMissing(targets)) {
            Diagnostic diagnostic;
            diagnostic.severity = Severity::Info;
            diagnostic.text = note;
            diagnostics.Report(diagnostic);
        }
    }

    /// All in one line: they count as 0, which is what most authors mean.
    void TellUnsetMacros()
    {
        if (unsetMacros.empty()) {
            return;
        }
        std::string names;
        for (const std::string& name : unsetMacros) {
            names += (names.empty() ? "'" : ", '") + name + "'";
        }
        Diagnostic diagnostic;
        diagnostic.severity = Severity::Info;
        diagnostic.check = "unset-macro";
        diagnostic.text = std::to_string(unsetMacros.size()) +
                          (unsetMacros.size() == 1 ? " macro is not set, and counts"
                                                   : " macros are not set, and count") +
                          " as 0: " + names;
        diagnostics.Report(diagnostic);
    }

    bool Tells(const std::string& check) const
    {
        bool tells = true;
        std::string group;
        for (const ns_ruke::CheckInfo& info : ns_ruke::MorlChecks()) {
            group = info.name == check ? info.group : group;
        }
        for (const std::string& name : options.warnings) {
            const bool isOff = name.compare(0, 3, "no-") == 0;
            const std::string subject = isOff ? name.substr(3) : name;
            if (subject == check || subject == group) {
                tells = !isOff;
            }
        }
        return tells;
    }

    void MakeUnits()
    {
        targets = options.targets.empty() ? ns_ruke::MorlTargets() : options.targets;
        if (options.manifest.empty()) {
            units = UnitsOf(options.pass, targets);
            return;
        }
        RefuseNodeAsManifest();
        manifest.emplace(options.manifest, prefix);
        manifest->CheckNames(options.shaders);
        units = UnitsOf(*manifest, options.shaders, targets);
        for (const ManifestShader& shader : manifest->shaders) {
            for (const auto& [macro, place] : shader.macroPlaces) {
                setMacros.insert(macro);
            }
        }
    }

    /// Who means a node gets a cure in place of "no such file".
    void RefuseNodeAsManifest() const
    {
        const std::string& name = options.manifest;
        if (nodes.compiler->FindNode(name) != nullptr && !std::filesystem::exists(ToPath(name))) {
            throw std::runtime_error("there is no manifest " + name + "; to check the node '" +
                                     name + "', say its stage: morlc check -s STAGE " + name);
        }
    }

    /// What the parser says of nodes that no shader names, since nothing else looks at them.
    void CollectUnnamed()
    {
        const LogCollection log(*nodes.compiler, LogCollection::Mode::Keep);
        for (const std::string& name : nodes.compiler->GetNodeNames()) {
            ns_ruke::MorlNode node;
            node.SetName(name);
            node.SetContent(nodes.compiler->FindNode(name)->GetContent());
            ns_ruke::MorlParser parser;
            node.Compile(&parser, "");
            Collect(node.GetFaults(), {});
        }
    }

    void Collect()
    {
        std::optional<Verdicts> verdicts;
        if (judges) {
            verdicts.emplace(*judges, units, *checked, options.jobs, options.quiet);
        }
        for (std::size_t i = 0; i < units.size(); ++i) {
            const CheckedUnit& result = (*checked)[i];
            Collect(result.faults, units[i]);
            Collect(result.warnings, units[i]);
            if (verdicts) {
                Collect(verdicts->Of(i), result, units[i]);
            }
        }
        if (manifest && options.shaders.empty()) {
            CollectUnnamed();
        }
    }

    void Collect(const std::vector<ReportFault>& faults, const Unit& unit)
    {
        for (const ReportFault& fault : faults) {
            Finding finding;
            finding.node = fault.node;
            finding.line = fault.line;
            finding.column = fault.column;
            finding.text = fault.text;
            finding.hint = fault.hint;
            findings.Add(finding, unit.context);
        }
    }

    /// Whether a warning says more than what all of its check say, which ends with the cure.
    static bool HasSuggestion(const ReportWarning& warning)
    {
        const auto& checks = ns_ruke::MorlChecks();
        const auto info = std::find_if(checks.begin(), checks.end(),
                                       [&](const auto& one) { return one.name == warning.check; });
        const std::string_view text = warning.text;
        return info != checks.end() && text.size() > info->cure.size() &&
               text.substr(text.size() - info->cure.size()) != info->cure;
    }

    void Collect(const std::vector<ReportWarning>& warnings, const Unit& unit)
    {
        for (const ReportWarning& warning : warnings) {
            const std::string check(warning.check);
            // Whether a macro is used, or set, is a question for all shaders together: one that
            // another shader sets is left out on purpose. What a vertex pass does not feed is told
            // by name.
            const bool isElsewhere =
                check == "unused-macro" ||
                (check == "unset-macro" && setMacros.count(warning.name) > 0) ||
                (check == "unassigned-texcoord" && unit.vertex);
            if (isElsewhere || !Tells(check)) {
                continue;
            }
            // One with a suggestion is probably a slip; others are meant to be 0.
            if (check == "unset-macro" && !HasSuggestion(warning)) {
                unsetMacros.insert(warning.name);
                continue;
            }
            Finding finding;
            finding.severity = Findings::IsRefused(check) ? Severity::Error : Severity::Warning;
            finding.check = check;
            finding.node = warning.node;
            finding.line = warning.line;
            finding.column = warning.column;
            finding.reference = warning.line == 0 ? warning.name : "";
            finding.text = warning.text;
            findings.Add(finding, unit.context);
        }
    }

    void Collect(const Verdict& messages, const CheckedUnit& result, const Unit& unit)
    {
        for (const VerdictMessage& message : messages) {
            Finding finding;
            finding.text = message.text;
            if (message.isMissing || message.isWarning) {
                finding.severity = Severity::Warning;
                finding.check = "verdict";
            }
            if (message.isMissing) {
                findings.Add(finding, unit.context);
                continue;
            }
            finding.isVerdict = !message.isWarning;
            const bool isVertex =
                message.stage == ns_ruke::kVertexStage || result.fragment == nullptr;
            const CheckedText& text = isVertex ? *result.vertex : *result.fragment;
            AuthorPlace place;
            if (message.line > 0) {
                place = FindAuthorPlace(*nodes.compiler, text.report, message.line, message.word);
                finding.generated = GeneratedLine(text.code, unit, message);
            } else {
                place = FindDeclaration(text.report, message.text);
            }
            finding.node = place.node;
            finding.line = place.line;
            finding.column = place.column;
            findings.Add(finding, unit.context);
        }
    }

    static std::string GeneratedLine(const std::string& code, const Unit& unit,
                                     const VerdictMessage& message)
    {
        const ns_ruke::TextLines lines(code);
        const auto index = static_cast<std::size_t>(message.line) - 1;
        if (index >= lines.Starts().size()) {
            return {};
        }
        const std::size_t start =
            std::min(code.find_first_not_of(" \t", lines.Starts()[index]), code.size() - 1);
        const char* const extension = message.stage == ns_ruke::kVertexStage ? ".vert:" : ".frag:";
        return unit.context.target + extension + std::to_string(message.line) + ": " +
               code.substr(start, code.find('\n', start) - start);
    }

    /// Macros and samplers that are given, but that no node has.
    void TellUnusedNames()
    {
        if (!manifest) {
            NamePlaces macros;
            for (const auto& [name, value] : options.pass.macros) {
                macros.emplace(name, Place());
            }
            NamePlaces samplers;
            for (const auto& [name, value] : options.pass.samplers) {
                samplers.emplace(name, Place());
            }
            TellUnusedNames(0, "this request", macros, samplers);
            return;
        }
        std::set<std::size_t> numbers;
        for (const Unit& unit : units) {
            numbers.insert(unit.shader);
        }
        for (const std::size_t number : numbers) {
            const ManifestShader& shader = manifest->shaders[number];
            if (HasUnknownNode(shader)) {
                continue;  // which may be the one that has them
            }
            TellUnusedNames(number, "shader '" + shader.name + "'", shader.macroPlaces,
                            shader.samplerPlaces);
        }
    }

    bool HasUnknownNode(const ManifestShader& shader) const
    {
        const auto isUnknown = [&](const NodeName& node) {
            return nodes.compiler->FindNode(node.name) == nullptr;
        };
        return std::any_of(shader.vertex.begin(), shader.vertex.end(), isUnknown) ||
               std::any_of(shader.fragment.begin(), shader.fragment.end(), isUnknown);
    }

    void TellUnusedNames(std::size_t shader, const std::string& where, const NamePlaces& macros,
                         const NamePlaces& samplers)
    {
        for (const Unit& unit : units) {
            if (unit.shader != shader) {
                continue;
            }
            for (const auto* pass : {&unit.vertex, &unit.fragment}) {
                if (*pass) {
                    checked->UsedBy(shader).AddMentioned(*nodes.compiler, (*pass)->nodeNames,
                                                         macros);
                }
            }
            break;
        }
        // What has faults may have lost its uniforms.
        const bool tellsSamplers = Tells("unused-sampler") && !checked->IsBroken(shader);
        ReportUnusedNames(Tells("unused-macro") ? macros : NamePlaces(),
                          tellsSamplers ? samplers : NamePlaces(), checked->UsedBy(shader), where,
                          true, diagnostics);
    }

    /// Points at the name of an unknown node in the manifest.
    void PlaceUnknownNode(Diagnostic& diagnostic) const
    {
        const std::string start = ns_ruke::messages::kUnknownNode;
        if (diagnostic.text.compare(0, start.size(), start) != 0) {
            return;
        }
        diagnostic.unknownNode = diagnostic.text.substr(start.size());
        const std::vector<ManifestShader> none;
        for (const ManifestShader& shader : manifest ? manifest->shaders : none) {
            for (const auto* list : {&shader.vertex, &shader.fragment}) {
                for (const NodeName& node : *list) {
                    if (shader.name == diagnostic.shader && node.name == diagnostic.unknownNode) {
                        diagnostic.place = node.place;
                    }
                }
            }
        }
    }

    void Tell(Diagnostic& diagnostic)
    {
        PlaceUnknownNode(diagnostic);
        if (!diagnostic.node.empty()) {
            if (diagnostic.node != lastNode) {
                lastNode = diagnostic.node;
                lastSource = SourceText("", nodes.compiler->FindNode(lastNode)->Content());
            }
            const ns_ruke::TextPlace& place = diagnostic.nodePlace;
            diagnostic.place.excerpt = lastSource.At(place.line, place.column).excerpt;
        }
        if (!options.showGenerated) {
            diagnostic.generated.clear();
        }
        diagnostics.Report(diagnostic);
    }

    const CheckOptions& options;
    std::string prefix;
    Diagnostics& diagnostics;
    LoadedNodes nodes;
    std::optional<Manifest> manifest;
    std::set<std::string> setMacros;    ///< by any shader of the manifest
    std::set<std::string> unsetMacros;  ///< that some node asks for
    std::vector<std::string> targets;
    std::vector<Unit> units;
    std::optional<Judges> judges;  ///< nothing: no verdicts are asked for
    std::optional<CheckedUnits> checked;
    Findings findings;
    // The source of the node that was told about last: most findings of a node follow each other.
    std::string lastNode;
    SourceText lastSource;
};

}  // namespace

void Check(const Options& options, Diagnostics& diagnostics)
{
    CheckShaders(options.check, EnterDirectory(options.common.directory), diagnostics);
}

void CheckShaders(const CheckOptions& options, const std::string& prefix, Diagnostics& diagnostics)
{
    diagnostics.SetWarningsAsErrors(options.warningsAsErrors);
    CheckRun(options, prefix, diagnostics).Run();
}

}  // namespace morlc
