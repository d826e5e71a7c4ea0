// SPDX-License-Identifier: MIT
#include "grid.h"

#include "text.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <exception>
#include <mutex>
#include <set>
#include <thread>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace morlc {
namespace {

using ns_ruke::MorlCompiler;
using ns_ruke::PassProperty;
using ns_ruke::ShaderOutput;

/// How many jobs a thread takes at a time, at most: neighbours share what they are made from.
constexpr std::size_t kMaxBatch = 8;

struct Stage {
    int number;  ///< as PassProperty has it
    const char* name;
    const char* extension;
};

constexpr std::array<Stage, 2> kStages = {{{0, "vertex", ".vert"}, {1, "fragment", ".frag"}}};

/// The different texts that one pass has over the variants of a shader in one target.
class PassTexts {
public:
    /// Keeps the text of a variant. Safe to be called by several threads.
    void Add(std::size_t variant, const ShaderOutput& output)
    {
        const std::lock_guard<std::mutex> lock(mutex);
        const auto [entry, isNew] = texts.try_emplace(output.code);
        Text& text = entry->second;
        if (isNew) {
            // The text determines the rest: it spells every uniform and every semantic.
            text.first = variant;
            text.output = output;
            text.output.code.clear();
            text.code = &entry->first;
        }
        text.first = std::min(text.first, variant);
        byVariant.emplace_back(variant, &text);
    }

    /// Calls `use` with each variant, the first variant of the same text, and that text with what
    /// belongs to it. To be called when no thread adds anything any more.
    template <class Use>
    void ForEach(const Use& use) const
    {
        for (const auto& [variant, text] : byVariant) {
            use(variant, text->first, *text->code, text->output);
        }
    }

private:
    struct Text {
        std::size_t first = 0;
        const std::string* code = nullptr;
        ShaderOutput output;  ///< without the code
    };

    std::mutex mutex;
    std::unordered_map<std::string, Text> texts;
    std::vector<std::pair<std::size_t, const Text*>> byVariant;
};

/// What one job reported.
struct JobReport {
    std::vector<Diagnostic> diagnostics;  ///< those that its thread had not reported before
    bool failed = false;
    std::string brokenNode;  ///< one of its nodes that has faults, whichever job reported them
};

/// What one thread knows.
struct Worker {
    MorlCompiler& compiler;
    std::set<std::string> broken;            ///< nodes with faults
    std::unordered_set<std::string> seen{};  ///< diagnostics, by identity
};

/// Waits for its threads at its end.
struct Threads {
    Threads() = default;
    Threads(const Threads&) = delete;
    Threads& operator=(const Threads&) = delete;
    ~Threads()
    {
        for (std::thread& thread : list) {
            thread.join();
        }
    }

    std::vector<std::thread> list;
};

/// The state that the threads of a build share.
class Grid {
public:
    explicit Grid(const GridWork& newWork) : work(newWork), reports(newWork.jobs.size())
    {
        for (const Job& job : work.jobs) {
            texts[{job.shader, job.target}];
        }
        for (const ManifestShader& shader : work.manifest.shaders) {
            auto& names = places.emplace_back();
            for (const std::vector<NodeName>* nodes : {&shader.vertex, &shader.fragment}) {
                for (const NodeName& node : *nodes) {
                    names.emplace(node.name, &node.place);
                }
            }
        }
    }

    void Run()
    {
        const std::size_t share = work.jobs.size() / (4 * work.compilers.size());
        batch = std::clamp<std::size_t>(share, 1, kMaxBatch);
        {
            Threads threads;
            for (std::size_t i = 1; i < work.compilers.size(); ++i) {
                threads.list.emplace_back([this, i] { Work(*work.compilers[i]); });
            }
            Work(*work.compilers[0]);
        }
        if (failure) {
            std::rethrow_exception(failure);
        }
    }

    std::vector<BuiltShader> Collect()
    {
        std::vector<BuiltShader> shaders(work.manifest.shaders.size());
        for (auto part = texts.begin(); part != texts.end(); part = texts.erase(part)) {
            const auto& [shader, target] = part->first;
            for (const Stage& stage : kStages) {
                Collect(work.manifest.shaders[shader], target, stage,
                        part->second[static_cast<std::size_t>(stage.number)], shaders[shader]);
            }
        }
        Report(shaders);
        return shaders;
    }

private:
    using StageTexts = std::array<PassTexts, 2>;

    /// One thread: takes jobs until there are none left. Each thread meets the jobs in their order.
    /// A node's parse errors are therefore always reported by the first job that uses it, on
    /// whatever thread, so a thread may discard diagnostics it has already reported.
    void Work(MorlCompiler& compiler)
    {
        Worker worker{compiler, {}};
        try {
            for (std::size_t begin = next.fetch_add(batch); begin < work.jobs.size();
                 begin = next.fetch_add(batch)) {
                const std::size_t end = std::min(begin + batch, work.jobs.size());
                for (std::size_t i = begin; i < end; ++i) {
                    RunJob(worker, i);
                }
                ShowProgress(end - begin);
            }
        } catch (...) {
            const std::lock_guard<std::mutex> lock(mutex);
            failure = std::current_exception();
            next = work.jobs.size();
        }
    }

    void ShowProgress(std::size_t count)
    {
        const std::lock_guard<std::mutex> lock(mutex);
        done += count;
        work.progress(done);
    }

    void RunJob(Worker& worker, std::size_t index)
    {
        const Job& job = work.jobs[index];
        const ManifestShader& shader = work.manifest.shaders[job.shader];
        StageTexts& stages = texts.at({job.shader, job.target});
        JobReport& report = reports[index];
        PassProperty pass;
        pass.target = job.target;
        for (const auto& [name, value] : shader.Macros(job.variant, job.target)) {
            pass.macros[name] = value;
        }
        pass.samplerRegisters.insert(shader.samplers.begin(), shader.samplers.end());
        LogCollection log(worker.compiler, LogCollection::Mode::Keep);
        for (const Stage& stage : kStages) {
            const std::vector<NodeName>& nodes =
                stage.number == 0 ? shader.vertex : shader.fragment;
            if (nodes.empty()) {
                continue;
            }
            pass.stage = stage.number;
            pass.nodeNames.clear();
            for (const NodeName& node : nodes) {
                pass.nodeNames.push_back(node.name);
            }
            ShaderOutput output;
            worker.compiler.Compile(pass, output);
            pass.semantics = output.semantics;
            NoteBroken(log.kept, worker.broken);
            // A request that is refused parses nothing, and gives no text.
            if (!output.code.empty()) {
                FindBroken(pass.nodeNames, worker.broken, report);
            }
            stages[static_cast<std::size_t>(stage.number)].Add(job.variant, output);
        }
        const std::string variant = job.target + "/" + shader.VariantName(job.variant);
        for (Diagnostic& diagnostic : log.kept) {
            report.failed = report.failed || diagnostic.isError;
            Locate(job, variant, diagnostic);
            if (worker.seen.insert(Identity(diagnostic)).second) {
                report.diagnostics.push_back(std::move(diagnostic));
            }
        }
    }

    /// A compiler reports the faults of a node when it parses it, and not again for later jobs.
    static void NoteBroken(const std::vector<Diagnostic>& diagnostics,
                           std::set<std::string>& broken)
    {
        for (const Diagnostic& diagnostic : diagnostics) {
            if (diagnostic.isError && diagnostic.line > 0) {
                broken.insert(diagnostic.node);
            }
        }
    }

    static void FindBroken(const std::vector<std::string>& names,
                           const std::set<std::string>& broken, JobReport& report)
    {
        const auto found = std::find_if(names.begin(), names.end(), [&](const std::string& name) {
            return broken.count(name) > 0;
        });
        if (report.brokenNode.empty() && found != names.end()) {
            report.brokenNode = *found;
        }
    }

    /// What goes wrong with a request, rather than with the source of a node, gets the shader and
    /// the variant. Where no node is concerned it is shown in the manifest: a node that is not
    /// there at its name, anything else at the shader.
    void Locate(const Job& job, const std::string& variant, Diagnostic& diagnostic) const
    {
        if (diagnostic.line > 0 || !diagnostic.isError) {
            return;
        }
        if (diagnostic.node.empty() && diagnostic.file.empty()) {
            const auto named = places[job.shader].find(diagnostic.unknownNode);
            const Diagnostic& place = named != places[job.shader].end()
                                          ? *named->second
                                          : work.manifest.shaders[job.shader].place;
            diagnostic.file = place.file;
            diagnostic.line = place.line;
            diagnostic.column = place.column;
            diagnostic.excerpt = place.excerpt;
        }
        diagnostic.shader = work.manifest.shaders[job.shader].name;
        diagnostic.variant = variant;
    }

    void Collect(const ManifestShader& shader, const std::string& target, const Stage& stage,
                 const PassTexts& passTexts, BuiltShader& built) const
    {
        passTexts.ForEach([&](std::size_t variant, std::size_t first, const std::string& code,
                              const ShaderOutput& output) {
            const std::string file =
                shader.name + "/" + target + "/" + shader.VariantName(first) + stage.extension;
            VariantRecord& files = built.record.variants[target][shader.VariantName(variant)];
            (stage.number == 0 ? files.vertex : files.fragment) = file;
            ++built.passes;
            if (!built.codes.try_emplace(file, code).second) {
                return;
            }
            TextRecord& text = built.record.texts[file];
            text.target = target;
            text.stage = stage.name;
            text.hash = Fingerprint(code);
            text.uniforms = output.uniformNames;
            text.semantics.insert(output.semantics.begin(), output.semantics.end());
            for (const std::string& uniform : output.uniformNames) {
                const auto sampler = shader.samplers.find(uniform);
                if (sampler != shader.samplers.end()) {
                    text.samplers.insert(*sampler);
                }
            }
        });
    }

    /// Shows what the jobs reported, in their order, and says which shaders are not to be used.
    void Report(std::vector<BuiltShader>& shaders) const
    {
        std::vector<std::string> reasons(shaders.size());
        for (std::size_t i = 0; i < reports.size(); ++i) {
            BuiltShader& built = shaders[work.jobs[i].shader];
            for (const Diagnostic& diagnostic : reports[i].diagnostics) {
                work.diagnostics.Report(diagnostic);
            }
            built.failed = built.failed || reports[i].failed || !reports[i].brokenNode.empty();
            if (!reports[i].brokenNode.empty()) {
                reasons[work.jobs[i].shader] = ": node '" + reports[i].brokenNode + "' has errors";
            }
        }
        for (std::size_t i = 0; i < shaders.size(); ++i) {
            if (shaders[i].failed) {
                const ManifestShader& shader = work.manifest.shaders[i];
                Diagnostic diagnostic = shader.place;
                diagnostic.text = "shader '" + shader.name + "' is not written" + reasons[i];
                work.diagnostics.Report(diagnostic);
            }
        }
    }

    const GridWork& work;
    std::atomic<std::size_t> next{0};
    std::map<std::pair<std::size_t, std::string>, StageTexts> texts;  ///< by shader and target
    std::vector<JobReport> reports;                                   ///< by job
    /// Where the manifest names each node, by shader and name.
    std::vector<std::unordered_map<std::string, const Diagnostic*>> places;
    std::size_t batch = 1;
    std::mutex mutex;  ///< of what follows
    std::size_t done = 0;
    std::exception_ptr failure;
};

}  // namespace

std::vector<Job> MakeJobs(const Manifest& manifest, const std::vector<std::string>& shaders)
{
    const std::unordered_set<std::string> wanted(shaders.begin(), shaders.end());
    std::vector<Job> jobs;
    for (const std::string& target : ns_ruke::MorlTargets()) {
        for (std::size_t i = 0; i < manifest.shaders.size(); ++i) {
            const ManifestShader& shader = manifest.shaders[i];
            const bool isWanted = wanted.empty() || wanted.count(shader.name) > 0;
            if (!isWanted ||
                std::count(shader.targets.begin(), shader.targets.end(), target) == 0) {
                continue;
            }
            for (std::size_t variant = 0; variant < shader.variants; ++variant) {
                jobs.push_back({i, target, variant});
            }
        }
    }
    return jobs;
}

std::vector<BuiltShader> RunGrid(const GridWork& work)
{
    Grid grid(work);
    grid.Run();
    work.progress(work.jobs.size());
    return grid.Collect();
}

}  // namespace morlc
