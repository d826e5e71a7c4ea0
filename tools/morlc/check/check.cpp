// SPDX-License-Identifier: MIT
#include "check/check.h"

#include "build/manifest.h"
#include "build/unused_names.h"
#include "build/variants.h"
#include "check/author_place.h"
#include "check/findings.h"
#include "check/verdict.h"
#include "node_files.h"
#include "parallel.h"
#include "passes.h"
#include "progress.h"

#include <morl/morl.h>
#include <algorithm>
#include <iterator>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <unordered_map>
#include <utility>

namespace morlc {
namespace {

using ns_ruke::MorlCompiler;
using ns_ruke::PassProperty;
using ns_ruke::PassReport;
using ns_ruke::ReportFault;
using ns_ruke::ReportWarning;
using ns_ruke::ShaderOutput;

/// A shader in one target and variant, with the passes that it has.
struct Unit {
    FindingContext context;
    std::size_t shader = 0;  ///< its index in the manifest
    std::optional<PassProperty> vertex;
    std::optional<PassProperty> fragment;
};

/// What one pass of a unit gave.
struct CheckedPass {
    bool exists = false;
    ShaderOutput output;
    PassReport report;
    std::vector<ReportWarning> warnings;

    /// Whether a compiler can say more about it than the faults do.
    bool IsSound() const { return exists && !output.code.empty() && report.faults.empty(); }
};

/// A distinct text of one pass, with the report of the first unit that has it.
struct CheckedText {
    std::size_t unit;  ///< the number of that unit
    std::string code;
    PassReport report;
};

/// What is kept of a checked unit; a manifest may have a hundred thousand.
struct CheckedUnit {
    std::vector<ReportFault> faults;
    std::vector<ReportWarning> warnings;
    const CheckedText* vertex = nullptr;    ///< null: no such pass, or not sound
    const CheckedText* fragment = nullptr;  ///< likewise
    bool isJudged = false;
    std::size_t verdict = 0;  ///< an index into the verdicts
};

/// Texts that are judged together.
using TextPair = std::pair<const CheckedText*, const CheckedText*>;

CheckedPass CheckOne(MorlCompiler& compiler, std::optional<PassProperty> pass)
{
    CheckedPass result;
    if (pass) {
        result.exists = true;
        compiler.CompileReported(*pass, result.output, result.report, result.warnings);
    }
    return result;
}

/// Stands in for a vertex pass that is not checked: a texture coordinate for each input that needs
/// one.
void AssignTexcoords(MorlCompiler& compiler, PassProperty& pass)
{
    const CheckedPass first = CheckOne(compiler, pass);
    for (const ns_ruke::ReportDeclare& input : first.report.inputs) {
        if (input.semantic == "TEXAUTO") {
            pass.semantics[input.name] = "TEXCOORD" + std::to_string(pass.semantics.size());
        }
    }
}

/// Both passes of a unit, and what does not fit between them.
struct CheckedPasses {
    CheckedPass vertex;
    CheckedPass fragment;
    std::vector<ReportWarning> stageWarnings;
};

CheckedPasses CheckPasses(MorlCompiler& compiler, Unit unit)
{
    const LogCollection log(compiler, LogCollection::Mode::Keep);
    CheckedPasses result;
    result.vertex = CheckOne(compiler, unit.vertex);
    if (unit.fragment && unit.vertex) {
        unit.fragment->semantics = result.vertex.output.semantics;
    } else if (unit.fragment) {
        AssignTexcoords(compiler, *unit.fragment);
    }
    result.fragment = CheckOne(compiler, unit.fragment);
    if (result.vertex.IsSound() && result.fragment.IsSound()) {
        ns_ruke::CheckStages(result.vertex.report, result.fragment.report, unit.context.target,
                             result.stageWarnings);
    }
    return result;
}

template <class Element>
void AppendTo(std::vector<Element>& list, std::vector<Element>&& more)
{
    std::move(more.begin(), more.end(), std::back_inserter(list));
}

std::vector<Unit> UnitsOf(const PassOptions& options, const std::vector<std::string>& targets)
{
    std::vector<Unit> units;
    for (const std::string& target : targets) {
        Unit& unit = units.emplace_back();
        unit.context.target = target;
        if (options.BothPasses()) {
            unit.vertex = MakePass(options, target, ns_ruke::kVertexStage, options.vertexNodes);
            unit.fragment =
                MakePass(options, target, ns_ruke::kFragmentStage, options.fragmentNodes);
        } else {
            const bool isVertex = options.stage == ns_ruke::kVertexStage;
            (isVertex ? unit.vertex : unit.fragment) =
                MakePass(options, target, options.stage, options.nodes);
        }
    }
    return units;
}

std::vector<Unit> UnitsOf(const Manifest& manifest, const std::vector<std::string>& shaders,
                          const std::vector<std::string>& targets)
{
    std::vector<Unit> units;
    for (const Variant& variant : ListVariants(manifest, shaders)) {
        if (std::find(targets.begin(), targets.end(), variant.target) == targets.end()) {
            continue;
        }
        const ManifestShader& shader = manifest.shaders[variant.shader];
        const std::string name = shader.VariantName(variant.number);
        Unit& unit = units.emplace_back();
        unit.context = {variant.target, shader.name, variant.target + "/" + name};
        unit.shader = variant.shader;
        const MacroValues macros = shader.Macros(variant.number, variant.target);
        if (!shader.vertex.empty()) {
            unit.vertex = MakePass(shader, variant.target, ns_ruke::kVertexStage,
                                   NamesOf(shader.vertex), macros);
        }
        if (!shader.fragment.empty()) {
            unit.fragment = MakePass(shader, variant.target, ns_ruke::kFragmentStage,
                                     NamesOf(shader.fragment), macros);
        }
    }
    return units;
}

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
        if (!HasVerdict() && Tells("verdict")) {
            throw std::runtime_error(
                "this morlc was built without a compiler; check with -W no-verdict");
        }
        nodes = LoadNodes(prefix, diagnostics);
        if (!nodes.compiler) {
            return;
        }
        MakeUnits();
        CheckUnits();
        JudgeTexts();
        Collect();
        for (Diagnostic& diagnostic : findings.Tell(targets.size())) {
            Tell(diagnostic);
        }
        TellUnusedNames();
    }

private:
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
        manifest.emplace(options.manifest, prefix);
        manifest->CheckNames(options.shaders);
        units = UnitsOf(*manifest, options.shaders, targets);
        for (const ManifestShader& shader : manifest->shaders) {
            for (const auto& [macro, place] : shader.macroPlaces) {
                setMacros.insert(macro);
            }
        }
    }

    void CheckUnits()
    {
        const std::size_t threads = ThreadCount(options.jobs, units.size());
        std::vector<std::unique_ptr<MorlCompiler>> copies;
        for (std::size_t i = 0; i < threads; ++i) {
            copies.push_back(CopyNodes(*nodes.compiler));
        }
        checked.resize(units.size());
        RunParallel(threads, units.size(), [&](std::size_t thread, std::size_t i) {
            Keep(i, CheckPasses(*copies[thread], units[i]));
        });
        for (std::size_t i = 0; i < units.size(); ++i) {
            PlanVerdict(units[i], checked[i]);
        }
    }

    /// Keeps what is needed of the passes of a unit.
    void Keep(std::size_t number, CheckedPasses passes)
    {
        const Unit& unit = units[number];
        CheckedUnit& result = checked[number];
        for (CheckedPass* pass : {&passes.vertex, &passes.fragment}) {
            AppendTo(result.faults, std::move(pass->report.faults));
            AppendTo(result.warnings, std::move(pass->warnings));
            pass->report.faults.clear();
        }
        AppendTo(result.warnings, std::move(passes.stageWarnings));
        const bool isSound = result.faults.empty();
        const std::lock_guard<std::mutex> lock(mutex);
        if (!isSound) {
            broken.insert(unit.shader);
        }
        for (CheckedPass* pass : {&passes.vertex, &passes.fragment}) {
            used[unit.shader].Add(pass->report);
            if (isSound && pass->exists) {
                const bool isVertex = pass == &passes.vertex;
                (isVertex ? result.vertex : result.fragment) =
                    KeepText(number, unit.context.target + (isVertex ? "v" : "f"), *pass);
            }
        }
    }

    const CheckedText* KeepText(std::size_t number, const std::string& kind, CheckedPass& pass)
    {
        std::unique_ptr<CheckedText>& text = texts[kind + pass.output.code];
        if (!text || number < text->unit) {
            if (!text) {
                text = std::make_unique<CheckedText>();
            }
            text->unit = number;
            text->code = std::move(pass.output.code);
            text->report = std::move(pass.report);
        }
        return text.get();
    }

    void PlanVerdict(const Unit& unit, CheckedUnit& result)
    {
        const bool areSound = result.vertex != nullptr || result.fragment != nullptr;
        if (!areSound || !Tells("verdict")) {
            return;
        }
        const TextPair pair = {result.vertex, result.fragment};
        const auto [known, isNew] = byPair.try_emplace(pair, pairs.size());
        if (isNew) {
            pairs.emplace_back(unit.context.target, pair);
        }
        result.verdict = known->second;
        result.isJudged = true;
    }

    void JudgeTexts()
    {
        const auto codeOf = [](const CheckedText* text) {
            return text != nullptr ? text->code : std::string();
        };
        verdicts.resize(pairs.size());
        Progress progress(pairs.size(), "texts", options.quiet);
        RunParallel(ThreadCount(options.jobs, pairs.size()), pairs.size(),
                    [&](std::size_t /*thread*/, std::size_t i) {
                        const auto& [target, pair] = pairs[i];
                        verdicts[i] = Judge(target, codeOf(pair.first), codeOf(pair.second));
                        progress.Advance(1);
                    });
    }

    void Collect()
    {
        for (std::size_t i = 0; i < units.size(); ++i) {
            const CheckedUnit& result = checked[i];
            Collect(result.faults, units[i]);
            Collect(result.warnings, units[i]);
            if (result.isJudged) {
                Collect(verdicts[result.verdict], result, units[i]);
            }
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
            findings.Add(finding, unit.context);
        }
    }

    void Collect(const std::vector<ReportWarning>& warnings, const Unit& unit)
    {
        for (const ReportWarning& warning : warnings) {
            const std::string check(warning.check);
            // Whether a macro is used, or set, is a question for all shaders together: one that
            // another shader sets is left out on purpose.
            const bool isElsewhere = check == "unused-macro" ||
                                     (check == "unset-macro" && setMacros.count(warning.name) > 0);
            if (isElsewhere || !Tells(check)) {
                continue;
            }
            Finding finding;
            finding.severity = Severity::Warning;
            finding.check = check;
            finding.node = warning.node;
            finding.line = warning.line;
            finding.column = warning.column;
            finding.text = warning.text;
            findings.Add(finding, unit.context);
        }
    }

    void Collect(const std::vector<VerdictMessage>& messages, const CheckedUnit& result,
                 const Unit& unit)
    {
        for (const VerdictMessage& message : messages) {
            Finding finding;
            finding.isVerdict = true;
            finding.text = message.text;
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
            TellUnusedNames(number, "shader '" + shader.name + "'", shader.macroPlaces,
                            shader.samplerPlaces);
        }
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
                    used[shader].AddMentioned(*nodes.compiler, (*pass)->nodeNames, macros);
                }
            }
            break;
        }
        // What has faults may have lost its uniforms.
        const bool tellsSamplers = Tells("unused-sampler") && broken.count(shader) == 0;
        ReportUnusedNames(Tells("unused-macro") ? macros : NamePlaces(),
                          tellsSamplers ? samplers : NamePlaces(), used[shader], where, true,
                          diagnostics);
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
        const auto file = nodes.fileByNode.find(diagnostic.node);
        if (file != nodes.fileByNode.end()) {
            if (diagnostic.node != lastNode) {
                lastNode = diagnostic.node;
                lastSource =
                    SourceText(file->second, nodes.compiler->FindNode(lastNode)->Content());
            }
            diagnostic.place = lastSource.At(diagnostic.place.line, diagnostic.place.column);
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
    std::set<std::string> setMacros;  ///< by any shader of the manifest
    std::vector<std::string> targets;
    std::vector<Unit> units;
    std::vector<CheckedUnit> checked;  ///< by unit
    std::mutex mutex;                  ///< protects the next three members
    std::unordered_map<std::string, std::unique_ptr<CheckedText>> texts;  ///< by target and code
    std::set<std::size_t> broken;                                         ///< shaders with faults
    std::map<std::size_t, UsedNames> used;                                ///< by shader
    std::vector<std::pair<std::string, TextPair>> pairs;                  ///< with their targets
    std::map<TextPair, std::size_t> byPair;
    std::vector<std::vector<VerdictMessage>> verdicts;  ///< by pair
    Findings findings;
    // The source of the node that was told about last: most findings of a node follow each other.
    std::string lastNode;
    SourceText lastSource;
};

}  // namespace

void Check(const Options& options, Diagnostics& diagnostics)
{
    diagnostics.SetWarningsAsErrors(options.check.warningsAsErrors);
    const std::string prefix = EnterDirectory(options.common.directory);
    CheckRun(options.check, prefix, diagnostics).Run();
}

}  // namespace morlc
