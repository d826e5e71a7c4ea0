// SPDX-License-Identifier: MIT
#include "build.h"

#include "dependencies.h"
#include "grid.h"
#include "json_file.h"
#include "node_files.h"
#include "output_file.h"

#include <unistd.h>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <stdexcept>

namespace morlc {
namespace {

using Clock = std::chrono::steady_clock;
using Compilers = std::vector<std::unique_ptr<ns_ruke::MorlCompiler>>;
namespace fs = std::filesystem;

/// What the summary tells.
struct Totals {
    std::size_t shaders = 0;
    std::size_t variants = 0;
    std::size_t passes = 0;
    std::size_t texts = 0;    ///< different ones
    std::size_t written = 0;  ///< those that were not there yet
};

/// A line on a terminal that is written over and over; nothing elsewhere.
class Progress {
public:
    Progress(std::size_t newTotal, bool quiet)
        : total(newTotal), isShown(!quiet && ::isatty(STDERR_FILENO) == 1)
    {
    }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress()
    {
        if (isShown) {
            std::fputs("\r\x1b[K", stderr);
        }
    }

    void Show(std::size_t done)
    {
        constexpr std::chrono::milliseconds kInterval(50);
        const Clock::time_point now = Clock::now();
        if (isShown && now - last >= kInterval) {
            last = now;
            std::fprintf(stderr, "\r[%zu/%zu] variants", done, total);
            std::fflush(stderr);
        }
    }

private:
    std::size_t total;
    bool isShown;
    Clock::time_point last;
};

std::string Counted(std::size_t count, const char* what)
{
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

void PrintSummary(const Totals& totals, std::size_t errors, Clock::time_point start)
{
    const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
    std::printf("%s, %s, %zu distinct of %s (%zu written), %s, %.2f s\n",
                Counted(totals.shaders, "shader").c_str(),
                Counted(totals.variants, "variant").c_str(), totals.texts,
                Counted(totals.passes, "text").c_str(), totals.written,
                Counted(errors, "error").c_str(), seconds);
    if (std::fflush(stdout) != 0) {
        throw std::runtime_error("cannot write to standard output");
    }
}

/// Null compilers never are in the list; an empty list says that the node files are not valid.
Compilers LoadCompilers(std::size_t count, const std::string& prefix, Diagnostics& diagnostics)
{
    Compilers compilers;
    compilers.push_back(LoadNodes(NodeFiles(prefix, diagnostics), prefix, diagnostics));
    if (!compilers.front()) {
        return {};
    }
    while (compilers.size() < count) {
        compilers.push_back(std::make_unique<ns_ruke::MorlCompiler>());
    }
    return compilers;
}

/// One run of "morlc build" that compiles.
class BuildRun {
public:
    BuildRun(const BuildOptions& newOptions, const std::string& newPrefix,
             Diagnostics& newDiagnostics)
        : options(newOptions),
          prefix(newPrefix),
          diagnostics(newDiagnostics),
          manifest(newOptions.manifest)
    {
        if (!options.shaders.empty()) {
            manifest.Select(options.shaders);
        }
    }

    void Run()
    {
        const Clock::time_point start = Clock::now();
        std::vector<Job> jobs = MakeJobs(manifest);
        if (options.shard > 0) {
            jobs = TakeShare(jobs, options.shard, options.shardCount);
        }
        const Compilers compilers = LoadCompilers(
            std::min(options.jobs, std::max<std::size_t>(jobs.size(), 1)), prefix, diagnostics);
        if (compilers.empty()) {
            return;
        }
        Totals totals;
        totals.variants = jobs.size();
        const std::vector<BuiltShader> shaders = Compile(jobs, compilers);
        for (std::size_t i = 0; i < shaders.size(); ++i) {
            Write(manifest.shaders[i], shaders[i], totals);
        }
        WriteIndex(shaders);
        if (diagnostics.ErrorCount() == 0) {
            WriteDependencies();
        }
        if (!options.quiet) {
            PrintSummary(totals, diagnostics.ErrorCount(), start);
        }
    }

private:
    std::vector<BuiltShader> Compile(const std::vector<Job>& jobs, const Compilers& compilers)
    {
        Progress progress(jobs.size(), options.quiet);
        return RunGrid({manifest, jobs, compilers, diagnostics,
                        [&](std::size_t done) { progress.Show(done); }});
    }

    void Write(const ManifestShader& shader, const BuiltShader& built, Totals& totals) const
    {
        if (built.passes == 0) {
            return;  // No part of it is in this share.
        }
        ++totals.shaders;
        totals.passes += built.passes;
        totals.texts += built.codes.size();
        if (built.failed) {
            return;
        }
        const fs::path directory = options.output;
        for (const auto& [file, code] : built.codes) {
            totals.written += WriteIfChanged((directory / file).string(), code) ? 1 : 0;
        }
        WriteIfChanged(
            RecordPath(directory, shader.name, options.shard, options.shardCount).string(),
            FormatJsonFile(built.record.ToJson(shader)));
    }

    /// The index leads to what there is: for a shader with errors that is what an earlier build
    /// left.
    void WriteIndex(const std::vector<BuiltShader>& shaders) const
    {
        if (options.shard > 0 || !options.shaders.empty()) {
            return;
        }
        std::map<std::string, ShaderRecord> records;
        for (std::size_t i = 0; i < shaders.size(); ++i) {
            const std::string& name = manifest.shaders[i].name;
            if (!shaders[i].failed) {
                records[name] = shaders[i].record;
            } else if (const auto old = ReadOldRecord(RecordPath(options.output, name))) {
                records[name] = *old;
            }
        }
        WriteIfChanged(IndexPath(options.output).string(), FormatJsonFile(MakeIndex(records)));
    }

    static std::optional<ShaderRecord> ReadOldRecord(const fs::path& path)
    {
        try {
            return ShaderRecord::Read(path);
        } catch (const DiagnosticError&) {
            return std::nullopt;  // There was no earlier build.
        }
    }

    void WriteDependencies() const
    {
        if (options.depfile.empty()) {
            return;
        }
        std::vector<std::string> outputs;
        if (options.shard == 0 && options.shaders.empty()) {
            outputs.push_back(AsGiven(IndexPath(options.output)));
        }
        for (const ManifestShader& shader : manifest.shaders) {
            outputs.push_back(AsGiven(
                RecordPath(options.output, shader.name, options.shard, options.shardCount)));
        }
        std::vector<std::string> inputs = {AsGiven(options.manifest)};
        for (const std::string& path : NodeFilePaths()) {
            inputs.push_back(AsGiven(path));
        }
        WriteIfChanged(options.depfile, FormatDepfile(outputs, inputs));
    }

    /// A path as those see it who have not entered the directory of the node files.
    std::string AsGiven(const fs::path& path) const
    {
        return path.is_absolute() ? path.string() : prefix + path.string();
    }

    const BuildOptions& options;
    std::string prefix;
    Diagnostics& diagnostics;
    Manifest manifest;
};

/// The shares of a shader put together: what one build of the whole would have recorded.
class Join {
public:
    Join(const fs::path& newDirectory, const ManifestShader& newShader, std::size_t newCount)
        : directory(newDirectory), shader(newShader), count(newCount)
    {
    }

    ShaderRecord Run()
    {
        for (std::size_t share = 1; share <= count; ++share) {
            const fs::path path = RecordPath(directory, shader.name, share, count);
            if (fs::exists(path)) {
                Take(ShaderRecord::Read(path));
                shares.push_back(path);
            }
        }
        for (const std::string& target : shader.targets) {
            std::map<std::string, std::string> files;
            for (std::size_t variant = 0; variant < shader.variants; ++variant) {
                Place(target, shader.VariantName(variant), files);
            }
        }
        return record;
    }

    /// Removes what only the shares need. To be called when the result is written.
    void RemoveShares() const
    {
        for (const fs::path& path : shares) {
            fs::remove(path);
        }
        for (const auto& [file, text] : all.texts) {
            if (record.texts.count(file) == 0) {
                fs::remove(directory / file);
            }
        }
    }

private:
    void Take(const ShaderRecord& share)
    {
        all.texts.insert(share.texts.begin(), share.texts.end());
        for (const auto& [target, variants] : share.variants) {
            all.variants[target].insert(variants.begin(), variants.end());
        }
    }

    void Place(const std::string& target, const std::string& variant,
               std::map<std::string, std::string>& files)
    {
        const auto found = all.variants[target].find(variant);
        if (found == all.variants[target].end()) {
            throw std::runtime_error("the shares of shader '" + shader.name + "' in " +
                                     directory.string() + " lack " + target + "/" + variant +
                                     ": build all " + std::to_string(count) + " of them first");
        }
        record.variants[target][variant] = {Unique(found->second.vertex, ".vert", files),
                                            Unique(found->second.fragment, ".frag", files)};
    }

    /// The file of the first variant that has the same text in the same stage.
    std::string Unique(const std::string& file, const std::string& stage,
                       std::map<std::string, std::string>& files)
    {
        if (file.empty()) {
            return file;
        }
        std::string& first = firstOf[file];
        if (first.empty()) {
            const std::string text = stage + ReadFile((directory / file).string());
            first = files.emplace(text, file).first->second;
            record.texts[first] = all.texts[first];
        }
        return first;
    }

    const fs::path& directory;
    const ManifestShader& shader;
    std::size_t count;
    std::vector<fs::path> shares;
    ShaderRecord all;                            ///< as the shares have it
    ShaderRecord record;                         ///< with each text once
    std::map<std::string, std::string> firstOf;  ///< by file of a share, the file of the result
};

void JoinShares(const BuildOptions& options)
{
    const fs::path directory = options.output;
    const Manifest manifest(options.manifest);
    std::map<std::string, ShaderRecord> records;
    for (const ManifestShader& shader : manifest.shaders) {
        Join join(directory, shader, options.joinCount);
        records[shader.name] = join.Run();
        WriteIfChanged(RecordPath(directory, shader.name).string(),
                       FormatJsonFile(records[shader.name].ToJson(shader)));
        join.RemoveShares();
    }
    WriteIfChanged(IndexPath(directory).string(), FormatJsonFile(MakeIndex(records)));
}

void WriteIndexOnly(const BuildOptions& options)
{
    const fs::path directory = options.output;
    const Manifest manifest(options.manifest);
    std::map<std::string, ShaderRecord> records;
    for (const ManifestShader& shader : manifest.shaders) {
        records[shader.name] = ShaderRecord::Read(RecordPath(directory, shader.name));
    }
    WriteIfChanged(IndexPath(directory).string(), FormatJsonFile(MakeIndex(records)));
}

}  // namespace

void Build(const Options& options, Diagnostics& diagnostics)
{
    const BuildOptions& build = options.build;
    const std::string prefix = EnterDirectory(options.common.directory);
    if (!build.ninjaFile.empty()) {
        WriteNinjaFile(options.program, build, Manifest(build.manifest));
    } else if (build.indexOnly) {
        WriteIndexOnly(build);
    } else if (build.joinCount > 0) {
        JoinShares(build);
    } else {
        BuildRun(build, prefix, diagnostics).Run();
    }
}

}  // namespace morlc
