// SPDX-License-Identifier: MIT
#include "build/variants.h"

#include "build/pass_texts.h"
#include "build/unused_names.h"
#include "parallel.h"
#include "passes.h"
#include "text.h"

#include <algorithm>
#include <array>
#include <deque>
#include <set>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace morlc {
namespace {

using ns_ruke::MorlCompiler;
using ns_ruke::PassProperty;
using ns_ruke::ShaderOutput;

/// The most variants that a thread takes at a time; neighbours are made from the same nodes.
constexpr std::size_t kMaxBatch = 8;

/// What one variant reported.
struct VariantReport {
    std::vector<Diagnostic> diagnostics;  ///< those that its thread had not reported before
    bool failed = false;
    std::string brokenNode;  ///< one of its nodes that has faults, whichever variant reported them
};

/// The state of one thread.
struct Worker {
    MorlCompiler& compiler;
    std::set<std::string> broken;            ///< nodes with faults
    std::unordered_set<std::string> seen{};  ///< diagnostics, by identity
};

/// What all variants of one pass have in common.
struct PassPlan {
    std::vector<std::string> nodes;
    std::vector<std::string> mentioned;  ///< the macros that the nodes mention
};

using StagePlans = std::array<PassPlan, kStageCount>;

StagePlans PlanStages(const ManifestShader& shader, const MorlCompiler& compiler)
{
    StagePlans plans;
    for (std::size_t i = 0; i < kStageCount; ++i) {
        for (const NodeName& node : NodesOf(shader, kStages[i].stage)) {
            plans[i].nodes.push_back(node.name);
        }
        plans[i].mentioned = MentionedMacros(compiler, plans[i].nodes, shader.macros);
    }
    return plans;
}

/// Notes the nodes with faults.
void NoteBroken(const std::vector<Diagnostic>& diagnostics, std::set<std::string>& broken)
{
    for (const Diagnostic& diagnostic : diagnostics) {
        if (diagnostic.IsError() && diagnostic.nodePlace.line > 0) {
            broken.insert(diagnostic.node);
        }
    }
}

/// The first of some nodes that has faults; empty if none has.
std::string FindBroken(const std::vector<std::string>& names, const Worker& worker)
{
    const auto found = std::find_if(names.begin(), names.end(), [&](const std::string& name) {
        return worker.broken.count(name) > 0;
    });
    return found != names.end() ? *found : "";
}

TextRecord MakeTextRecord(const ManifestShader& shader, const std::string& target,
                          const StageName& stage, PassText& text)
{
    const MacroValues values = shader.Macros(text.first, target);
    ns_ruke::PassReport& report = text.report;
    report.macros.clear();
    for (const std::string& macro : text.macros) {
        const auto value = values.find(macro);
        const bool isSet = value != values.end();
        report.macros.push_back({macro, isSet ? value->second : 0, isSet});
    }
    report.unusedMacros.clear();
    for (const auto& [macro, value] : values) {
        if (text.macros.count(macro) == 0) {
            report.unusedMacros.push_back(macro);
        }
    }
    ns_ruke::PassProperty pass;
    pass.target = target;
    pass.stage = static_cast<int>(stage.stage);
    pass.samplerRegisters = {shader.samplers.begin(), shader.samplers.end()};
    return {Fingerprint(text.output.code), ns_ruke::ReportText(pass, text.output, report)};
}

void AddTexts(const ManifestShader& shader, const std::string& target, const StageName& stage,
              PassTexts& texts, BuiltShader& built)
{
    std::unordered_map<const PassText*, const std::string*> files;
    for (PassText& text : texts.texts) {
        const std::string file =
            shader.name + "/" + target + "/" + shader.VariantName(text.first) + stage.extension;
        built.used.Add(text.report);
        built.used.macros.insert(text.macros.begin(), text.macros.end());
        built.record.texts[file] = MakeTextRecord(shader, target, stage, text);
        built.codes[file] = std::move(text.output.code);
        files[&text] = built.record.File(file);
    }
    for (const auto& [variant, text] : texts.byVariant) {
        VariantRecord& record = built.record.variants[target][shader.VariantName(variant)];
        (stage.stage == Stage::Vertex ? record.vertex : record.fragment) = files.at(text);
    }
    built.passes += texts.byVariant.size();
}

/// The state that the threads of a build share.
class VariantCompilation {
public:
    explicit VariantCompilation(const VariantWork& newWork)
        : work(newWork), reports(newWork.variants.size())
    {
        for (const Variant& variant : work.variants) {
            texts[{variant.shader, variant.target}];
        }
        for (const ManifestShader& shader : work.manifest.shaders) {
            auto& names = places.emplace_back();
            for (const StageName& stage : kStages) {
                for (const NodeName& node : NodesOf(shader, stage.stage)) {
                    names.emplace(node.name, &node.place);
                }
            }
            plans.push_back(PlanStages(shader, *work.compilers.front()));
        }
    }

    void Run()
    {
        const std::size_t threads = work.compilers.size();
        const std::size_t count = work.variants.size();
        const std::size_t batch = std::clamp<std::size_t>(count / (4 * threads), 1, kMaxBatch);
        std::deque<Worker> workers;
        for (const std::unique_ptr<MorlCompiler>& compiler : work.compilers) {
            workers.push_back({*compiler, {}});
        }
        RunParallel(threads, (count + batch - 1) / batch, [&](std::size_t thread, std::size_t i) {
            const std::size_t begin = i * batch;
            const std::size_t end = std::min(begin + batch, count);
            for (std::size_t variant = begin; variant < end; ++variant) {
                Compile(workers[thread], work.variants[variant], reports[variant]);
            }
            work.progress(end - begin);
        });
    }

    std::vector<BuiltShader> Collect()
    {
        std::vector<BuiltShader> shaders(work.manifest.shaders.size());
        for (auto part = texts.begin(); part != texts.end(); part = texts.erase(part)) {
            const auto& [shader, target] = part->first;
            for (std::size_t i = 0; i < kStageCount; ++i) {
                AddTexts(work.manifest.shaders[shader], target, kStages[i], part->second[i],
                         shaders[shader]);
            }
        }
        Report(shaders);
        return shaders;
    }

private:
    using StageTexts = std::array<PassTexts, kStageCount>;

    /// Each thread meets the variants in their order. A node's parse errors are therefore always
    /// reported by the first variant that uses it, on whatever thread, so a thread may discard
    /// diagnostics it has already reported.
    void Compile(Worker& worker, const Variant& variant, VariantReport& report)
    {
        LogCollection log(worker.compiler, LogCollection::Mode::Keep);
        CompileStages(worker, variant, log, report);
        for (Diagnostic& diagnostic : log.kept) {
            report.failed = report.failed || diagnostic.IsError();
            AddContext(variant, diagnostic);
            if (worker.seen.insert(Identity(diagnostic)).second) {
                report.diagnostics.push_back(std::move(diagnostic));
            }
        }
    }

    void CompileStages(Worker& worker, const Variant& variant, LogCollection& log,
                       VariantReport& report)
    {
        const ManifestShader& shader = work.manifest.shaders[variant.shader];
        StageTexts& stages = texts.at({variant.shader, variant.target});
        const MacroValues macros = shader.Macros(variant.number, variant.target);
        const PassText* vertex = nullptr;
        for (std::size_t i = 0; i < kStageCount; ++i) {
            const PassPlan& plan = plans[variant.shader][i];
            if (plan.nodes.empty()) {
                continue;
            }
            const std::string key =
                KeyOf(plan.mentioned, macros, vertex != nullptr ? vertex->semantics : "");
            const PassText* text = stages[i].Reuse(variant.number, key);
            if (text == nullptr) {
                PassProperty pass = MakePass(shader, variant.target, kStages[i].stage, macros);
                if (vertex != nullptr) {
                    pass.semantics = vertex->output.semantics;
                }
                text = CompilePass(worker, variant.number, pass, key, log, stages[i]);
            }
            // A request that is refused parses nothing, and gives no text.
            if (!text->output.code.empty() && report.brokenNode.empty()) {
                report.brokenNode = FindBroken(plan.nodes, worker);
            }
            vertex = text;
        }
    }

    /// Only a text that was made without a word, from nodes without faults, may be reused.
    /// Otherwise it would depend on the threads which variant reports a problem, and what is to
    /// blame.
    static const PassText* CompilePass(Worker& worker, std::size_t variant, PassProperty& pass,
                                       const std::string& key, LogCollection& log,
                                       PassTexts& passTexts)
    {
        const std::size_t before = log.kept.size();
        ShaderOutput output;
        ns_ruke::PassReport report;
        worker.compiler.CompileReported(pass, output, report);
        for (const ns_ruke::ReportFault& fault : report.faults) {
            if (fault.line > 0) {
                log.kept.push_back(log.Describe(fault));
            }
        }
        NoteBroken(log.kept, worker.broken);
        const bool isSound =
            log.kept.size() == before && FindBroken(pass.nodeNames, worker).empty();
        return passTexts.Add(variant, key, isSound, std::move(output), std::move(report));
    }

    /// Adds the shader and the variant to an error in a request, as opposed to the source of a
    /// node. If no node is affected, the error is shown in the manifest: an unknown node at its
    /// name, anything else at the shader.
    void AddContext(const Variant& variant, Diagnostic& diagnostic) const
    {
        if (diagnostic.nodePlace.line > 0 || !diagnostic.IsError()) {
            return;
        }
        const ManifestShader& shader = work.manifest.shaders[variant.shader];
        if (diagnostic.node.empty() && diagnostic.place.file.empty()) {
            const auto named = places[variant.shader].find(diagnostic.unknownNode);
            diagnostic.place =
                named != places[variant.shader].end() ? *named->second : shader.place;
        }
        diagnostic.shader = shader.name;
        diagnostic.variant = variant.target + "/" + shader.VariantName(variant.number);
    }

    /// Shows what the variants reported, in their order, and marks and names the shaders that must
    /// not be used.
    void Report(std::vector<BuiltShader>& shaders) const
    {
        std::vector<std::string> reasons(shaders.size());
        for (std::size_t i = 0; i < reports.size(); ++i) {
            const std::size_t shader = work.variants[i].shader;
            for (const Diagnostic& diagnostic : reports[i].diagnostics) {
                work.diagnostics.Report(diagnostic);
            }
            const std::string& brokenNode = reports[i].brokenNode;
            if (reports[i].failed || !brokenNode.empty()) {
                shaders[shader].failed = true;
            }
            if (!brokenNode.empty()) {
                reasons[shader] = ": node '" + brokenNode + "' has errors";
            }
        }
        for (std::size_t i = 0; i < shaders.size(); ++i) {
            if (shaders[i].failed) {
                const ManifestShader& shader = work.manifest.shaders[i];
                Diagnostic diagnostic = ErrorAt(
                    shader.place, "shader '" + shader.name + "' is not written" + reasons[i]);
                diagnostic.shader = shader.name;
                work.diagnostics.Report(diagnostic);
            } else if (shaders[i].passes > 0) {
                const ManifestShader& shader = work.manifest.shaders[i];
                for (const PassPlan& plan : plans[i]) {
                    shaders[i].used.AddMentioned(*work.compilers.front(), plan.nodes,
                                                 shader.macroPlaces);
                }
                ReportUnusedNames(shader.macroPlaces, shader.samplerPlaces, shaders[i].used,
                                  "shader '" + shader.name + "'", false, work.diagnostics);
            }
        }
    }

    const VariantWork& work;
    std::map<std::pair<std::size_t, std::string>, StageTexts> texts;  ///< by shader and target
    std::vector<VariantReport> reports;                               ///< by variant
    std::vector<StagePlans> plans;                                    ///< by shader
    /// Where the manifest names each node, by shader and name.
    std::vector<std::unordered_map<std::string, const Place*>> places;
};

}  // namespace

std::vector<Variant> ListVariants(const Manifest& manifest, const std::vector<std::string>& shaders)
{
    const std::unordered_set<std::string> wanted(shaders.begin(), shaders.end());
    std::vector<Variant> variants;
    for (const std::string& target : ns_ruke::MorlTargets()) {
        for (std::size_t i = 0; i < manifest.shaders.size(); ++i) {
            const ManifestShader& shader = manifest.shaders[i];
            const bool isWanted = wanted.empty() || wanted.count(shader.name) > 0;
            if (!isWanted ||
                std::count(shader.targets.begin(), shader.targets.end(), target) == 0) {
                continue;
            }
            for (std::size_t number = 0; number < shader.variants; ++number) {
                variants.push_back({i, target, number});
            }
        }
    }
    return variants;
}

std::vector<BuiltShader> CompileVariants(const VariantWork& work)
{
    VariantCompilation compilation(work);
    compilation.Run();
    return compilation.Collect();
}

}  // namespace morlc
