// SPDX-License-Identifier: MIT
#include "grid.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <exception>
#include <mutex>
#include <set>
#include <thread>
#include <unordered_map>
#include <utility>

namespace morlc {
namespace {

using ns_ruke::MorlCompiler;
using ns_ruke::PassProperty;
using ns_ruke::ShaderOutput;

/// How many jobs a thread takes at a time: neighbours share what they are made from.
constexpr std::size_t kBatch = 8;

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
            use(variant, text->first, text->output);
        }
    }

private:
    struct Text {
        std::size_t first = 0;
        ShaderOutput output;
    };

    std::mutex mutex;
    std::unordered_map<std::string, Text> texts;
    std::vector<std::pair<std::size_t, const Text*>> byVariant;
};

/// What one job reported.
struct JobReport {
    std::vector<Diagnostic> diagnostics;
    std::vector<std::string>
        brokenNodes;  ///< those of its nodes that have faults, whoever reported them
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
    }

    void Run()
    {
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
        for (auto& [key, stages] : texts) {
            for (const Stage& stage : kStages) {
                Collect(work.manifest.shaders[key.first], key.second, stage,
                        stages[static_cast<std::size_t>(stage.number)], shaders[key.first]);
            }
        }
        Report(shaders);
        return shaders;
    }

private:
    using StageTexts = std::array<PassTexts, 2>;

    /// One thread: takes jobs until there are none left. Each thread meets the jobs in their order,
    /// so whatever first goes wrong with a node is reported by the first job that uses it.
    void Work(MorlCompiler& compiler)
    {
        std::set<std::string> broken;
        try {
            for (std::size_t begin = next.fetch_add(kBatch); begin < work.jobs.size();
                 begin = next.fetch_add(kBatch)) {
                const std::size_t end = std::min(begin + kBatch, work.jobs.size());
                for (std::size_t i = begin; i < end; ++i) {
                    RunJob(compiler, i, broken);
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

    void RunJob(MorlCompiler& compiler, std::size_t index, std::set<std::string>& broken)
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
        LogCollection log(compiler, LogCollection::Mode::Keep);
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
            compiler.Compile(pass, output);
            pass.semantics = output.semantics;
            NoteBroken(log.kept, broken);
            ListBroken(pass.nodeNames, broken, report);
            stages[static_cast<std::size_t>(stage.number)].Add(job.variant, output);
        }
        report.diagnostics = std::move(log.kept);
        for (Diagnostic& diagnostic : report.diagnostics) {
            Locate(shader, diagnostic);
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

    static void ListBroken(const std::vector<std::string>& names,
                           const std::set<std::string>& broken, JobReport& report)
    {
        for (const std::string& name : names) {
            if (broken.count(name) > 0) {
                report.brokenNodes.push_back(name);
            }
        }
    }

    /// What concerns a request as a whole is shown where the manifest makes it: a node that is not
    /// there at its name, anything else at the shader.
    static void Locate(const ManifestShader& shader, Diagnostic& diagnostic)
    {
        if (!diagnostic.node.empty() || !diagnostic.file.empty()) {
            return;
        }
        const Diagnostic* place = &shader.place;
        for (const std::vector<NodeName>* nodes : {&shader.vertex, &shader.fragment}) {
            for (const NodeName& node : *nodes) {
                const std::string start = "Morl Compiler: unknown node: " + node.name;
                if (diagnostic.text == start || diagnostic.text.find(start + " (") == 0) {
                    place = &node.place;
                }
            }
        }
        std::string text = std::move(diagnostic.text);
        const bool isError = diagnostic.isError;
        diagnostic = *place;
        diagnostic.text = std::move(text);
        diagnostic.isError = isError;
        diagnostic.shader = shader.name;
    }

    void Collect(const ManifestShader& shader, const std::string& target, const Stage& stage,
                 const PassTexts& passTexts, BuiltShader& built) const
    {
        passTexts.ForEach([&](std::size_t variant, std::size_t first, const ShaderOutput& output) {
            const std::string file =
                shader.name + "/" + target + "/" + shader.VariantName(first) + stage.extension;
            VariantRecord& files = built.record.variants[target][shader.VariantName(variant)];
            (stage.number == 0 ? files.vertex : files.fragment) = file;
            ++built.passes;
            if (!built.codes.emplace(file, output.code).second) {
                return;
            }
            TextRecord& text = built.record.texts[file];
            text.target = target;
            text.stage = stage.name;
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
                built.failed = built.failed || diagnostic.isError;
            }
            if (!reports[i].brokenNodes.empty()) {
                built.failed = true;
                reasons[work.jobs[i].shader] =
                    ": node '" + reports[i].brokenNodes.front() + "' has errors";
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
    std::mutex mutex;                                                 ///< of what follows
    std::size_t done = 0;
    std::exception_ptr failure;
};

}  // namespace

std::vector<Job> MakeJobs(const Manifest& manifest)
{
    std::vector<Job> jobs;
    for (const std::string& target : ns_ruke::MorlTargets()) {
        for (std::size_t i = 0; i < manifest.shaders.size(); ++i) {
            const ManifestShader& shader = manifest.shaders[i];
            if (std::count(shader.targets.begin(), shader.targets.end(), target) == 0) {
                continue;
            }
            for (std::size_t variant = 0; variant < shader.variants; ++variant) {
                jobs.push_back({i, target, variant});
            }
        }
    }
    return jobs;
}

std::vector<Job> TakeShare(const std::vector<Job>& jobs, std::size_t shard, std::size_t shardCount)
{
    const auto bound = [&](std::size_t share) {
        return jobs.begin() + static_cast<std::ptrdiff_t>(jobs.size() * share / shardCount);
    };
    return {bound(shard - 1), bound(shard)};
}

std::vector<BuiltShader> RunGrid(const GridWork& work)
{
    Grid grid(work);
    grid.Run();
    return grid.Collect();
}

}  // namespace morlc
