// SPDX-License-Identifier: MIT
#include "build.h"

#include "dependencies.h"
#include "grid.h"
#include "json_file.h"
#include "node_files.h"
#include "output_file.h"
#include "text.h"

#include <unistd.h>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <iomanip>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <utility>

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

/// A line on a terminal that is written over and over, and gone when all is done; nothing
/// elsewhere.
class Progress {
public:
    Progress(std::size_t newTotal, bool quiet)
        : total(newTotal), isShown(!quiet && ::isatty(STDERR_FILENO) == 1)
    {
    }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress() { Clear(); }

    void Show(std::size_t done)
    {
        constexpr std::chrono::milliseconds kInterval(50);
        const Clock::time_point now = Clock::now();
        if (done == total) {
            Clear();
        } else if (isShown && now - last >= kInterval) {
            last = now;
            std::fprintf(stderr, "\r[%zu/%zu] variants", done, total);
            std::fflush(stderr);
        }
    }

private:
    void Clear()
    {
        if (isShown && last != Clock::time_point()) {
            std::fputs("\r\x1b[K", stderr);
            last = Clock::time_point();
        }
    }

    std::size_t total;
    bool isShown;
    Clock::time_point last;  ///< when it was shown; unset: it is not
};

std::string Counted(std::size_t count, const char* what)
{
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

void PrintSummary(const Totals& totals, std::size_t errors, Clock::time_point start)
{
    std::ostringstream summary;
    summary << Counted(totals.shaders, "shader") << ", " << Counted(totals.variants, "variant")
            << ", " << totals.texts << " distinct of " << Counted(totals.passes, "text") << " ("
            << totals.written << " written), " << Counted(errors, "error") << ", " << std::fixed
            << std::setprecision(2) << std::chrono::duration<double>(Clock::now() - start).count()
            << " s\n";
    WriteWhole("-", summary.str());
}

/// Null compilers never are in the list; an empty list says that the node files are not valid.
Compilers LoadCompilers(std::size_t count, const std::string& prefix, Diagnostics& diagnostics)
{
    Compilers compilers;
    compilers.push_back(LoadNodes(prefix, diagnostics).compiler);
    if (!compilers.front()) {
        return {};
    }
    while (compilers.size() < count) {
        compilers.push_back(std::make_unique<ns_ruke::MorlCompiler>());
    }
    return compilers;
}

/// Removes a file, and the directories above it as far as they are empty then and lie below `root`.
void RemoveFile(const fs::path& root, const fs::path& file)
{
    std::error_code ignored;
    fs::remove(root / file, ignored);
    for (fs::path parent = file.parent_path(); !parent.empty(); parent = parent.parent_path()) {
        fs::remove(root / parent, ignored);
    }
}

std::optional<ShaderRecord> ReadOldRecord(const fs::path& path)
{
    try {
        return ShaderRecord::Read(path);
    } catch (const DiagnosticError&) {
        return std::nullopt;  // There was no earlier build.
    }
}

/// Writes what is known of a shader whose texts have been written, and removes the texts of an
/// earlier build that it does not need any more.
void WriteRecord(const fs::path& directory, const ManifestShader& shader,
                 const ShaderRecord& record)
{
    const fs::path path = RecordPath(directory, shader.name);
    const std::optional<ShaderRecord> old = ReadOldRecord(path);
    WriteIfChanged(path.string(), FormatJsonFile(record.ToJson(shader)));
    if (!old) {
        return;
    }
    for (const auto& [file, text] : old->texts) {
        const bool isOurs = file.compare(0, shader.name.size() + 1, shader.name + "/") == 0;
        if (isOurs && record.texts.count(file) == 0) {
            RemoveFile(directory, file);
        }
    }
}

void WriteIndex(const fs::path& directory, const std::map<std::string, ShaderRecord>& records)
{
    WriteIfChanged(IndexPath(directory).string(), FormatJsonFile(MakeIndex(records)));
}

/// The fingerprint of this version and of the node files.
std::string NodeSources()
{
    std::string sources = MORL_VERSION;
    for (const std::string& path : NodeFilePaths()) {
        std::error_code missing;
        sources += Fingerprint(fs::exists(path, missing) ? ReadFile(path) : "");
    }
    return Fingerprint(sources);
}

/// What the texts of a shader are made from. Shares of different sources must not be joined.
std::string SourcesOf(const ManifestShader& shader, const std::string& nodeSources)
{
    std::string sources = nodeSources + FormatJsonFile(shader.entry);
    for (const std::string& target : shader.targets) {
        sources += target + "\n";
    }
    return Fingerprint(sources);
}

/// One run of "morlc build" that compiles.
class BuildRun {
public:
    BuildRun(const BuildOptions& newOptions, const std::string& newPrefix,
             Diagnostics& newDiagnostics)
        : options(newOptions),
          prefix(newPrefix),
          diagnostics(newDiagnostics),
          manifest(newOptions.manifest),
          directory(newOptions.output)
    {
        manifest.CheckNames(options.shaders);
        if (options.shard > 0) {
            directory = ShareDirectory(directory, options.shard, options.shardCount);
            nodeSources = NodeSources();
        }
    }

    void Run()
    {
        const Clock::time_point start = Clock::now();
        std::vector<Job> jobs = MakeJobs(manifest, options.shaders);
        if (options.shard > 0) {
            jobs = TakeShare(jobs, options.shard, options.shardCount);
        }
        const std::size_t threads = std::clamp<std::size_t>(jobs.size(), 1, options.jobs);
        const Compilers compilers = LoadCompilers(threads, prefix, diagnostics);
        if (compilers.empty()) {
            return;
        }
        totals.variants = jobs.size();
        std::vector<BuiltShader> shaders = Compile(jobs, compilers);
        for (std::size_t i = 0; i < shaders.size(); ++i) {
            Write(manifest.shaders[i], shaders[i]);
        }
        if (WritesIndex()) {
            WriteIndex(directory, RecordsForIndex(shaders));
        }
        if (!options.depfile.empty() && diagnostics.ErrorCount() == 0) {
            WriteDependencies(shaders);
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

    void Write(const ManifestShader& shader, BuiltShader& built)
    {
        if (built.passes == 0) {
            return;  // It was not asked for, or no part of it is in this share.
        }
        ++totals.shaders;
        totals.passes += built.passes;
        totals.texts += built.codes.size();
        if (built.failed) {
            return;
        }
        for (const auto& [file, code] : built.codes) {
            totals.written += WriteIfChanged((directory / file).string(), code) ? 1 : 0;
        }
        if (options.shard > 0) {
            built.record.sources = SourcesOf(shader, nodeSources);
        }
        WriteRecord(directory, shader, built.record);
    }

    bool WritesIndex() const { return options.shard == 0 && !options.noIndex; }

    /// The index leads to what there is: of a shader with errors, or one that was not asked for, to
    /// what an earlier build left.
    std::map<std::string, ShaderRecord> RecordsForIndex(
        const std::vector<BuiltShader>& shaders) const
    {
        std::map<std::string, ShaderRecord> records;
        for (std::size_t i = 0; i < shaders.size(); ++i) {
            const std::string& name = manifest.shaders[i].name;
            if (shaders[i].passes > 0 && !shaders[i].failed) {
                records[name] = shaders[i].record;
            } else if (const auto old = ReadOldRecord(RecordPath(directory, name))) {
                records[name] = *old;
            }
        }
        return records;
    }

    void WriteDependencies(const std::vector<BuiltShader>& shaders) const
    {
        std::vector<std::string> outputs;
        if (WritesIndex()) {
            outputs.push_back(AsGiven(IndexPath(directory)));
        }
        for (std::size_t i = 0; i < shaders.size(); ++i) {
            if (shaders[i].passes > 0) {
                outputs.push_back(AsGiven(RecordPath(directory, manifest.shaders[i].name)));
            }
        }
        std::vector<std::string> inputs = {AsGiven(options.manifest)};
        for (const std::string& path : NodeFilePaths()) {
            inputs.push_back(AsGiven(path));
        }
        WriteIfChanged(options.depfile, FormatDepfile(outputs, inputs));
    }

    /// A path relative to the directory that morlc was started in.
    std::string AsGiven(const fs::path& path) const
    {
        return path.is_absolute() ? path.string() : prefix + path.string();
    }

    const BuildOptions& options;
    std::string prefix;
    Diagnostics& diagnostics;
    Manifest manifest;
    fs::path directory;       ///< that is written to
    std::string nodeSources;  ///< of a share
    Totals totals;
};

/// The shares of a shader put together: what one build of the whole would have recorded. Nothing is
/// changed before all shaders are known to be complete.
class Join {
public:
    Join(fs::path newDirectory, const ManifestShader& newShader, std::size_t newCount,
         const std::string& nodeSources)
        : directory(std::move(newDirectory)), shader(newShader), count(newCount)
    {
        const std::string sources = SourcesOf(shader, nodeSources);
        for (std::size_t share = 1; share <= count; ++share) {
            const fs::path path = RecordPath(ShareDirectory({}, share, count), shader.name);
            if (fs::exists(directory / path)) {
                Take(ShaderRecord::Read(directory / path), path, sources);
            }
        }
        for (const std::string& target : shader.targets) {
            std::map<std::string, std::string> firstByText;
            for (std::size_t variant = 0; variant < shader.variants; ++variant) {
                Place(target, shader.VariantName(variant), firstByText);
            }
        }
    }

    const ShaderRecord& Record() const { return record; }

    void Write() const
    {
        for (const auto& [file, code] : codes) {
            WriteIfChanged((directory / file).string(), code);
        }
        WriteRecord(directory, shader, record);
    }

    /// Removes the shares. To be called when all of the manifest is written.
    void RemoveShares() const
    {
        for (const fs::path& file : files) {
            RemoveFile(directory, file);
        }
    }

private:
    void Take(const ShaderRecord& share, const fs::path& path, const std::string& sources)
    {
        if (share.sources != sources) {
            Diagnostic diagnostic;
            diagnostic.file = (directory / path).string();
            diagnostic.text =
                "this share was built from other node files, or for another manifest: build it "
                "again";
            throw DiagnosticError(diagnostic);
        }
        const fs::path shareDirectory = path.parent_path();
        files.push_back(path);
        for (const auto& [file, text] : share.texts) {
            files.push_back(shareDirectory / file);
            texts[(shareDirectory / file).string()] = text;
        }
        for (const auto& [target, shareVariants] : share.variants) {
            for (const auto& [name, variant] : shareVariants) {
                variants[target][name] = {InShare(shareDirectory, variant.vertex),
                                          InShare(shareDirectory, variant.fragment)};
            }
        }
    }

    static std::string InShare(const fs::path& shareDirectory, const std::string& file)
    {
        return file.empty() ? file : (shareDirectory / file).string();
    }

    void Place(const std::string& target, const std::string& variant,
               std::map<std::string, std::string>& firstByText)
    {
        const auto found = variants[target].find(variant);
        if (found == variants[target].end()) {
            throw std::runtime_error("the shares of shader '" + shader.name + "' in " +
                                     directory.string() + " lack " + target + "/" + variant +
                                     ": build all " + std::to_string(count) + " of them first");
        }
        record.variants[target][variant] = {Unique(found->second.vertex, firstByText),
                                            Unique(found->second.fragment, firstByText)};
    }

    /// The file of the first variant that has the same text in the same stage. The first variant of
    /// a share with a text gives it its name there, so the first one of all has its name already.
    std::string Unique(const std::string& file, std::map<std::string, std::string>& firstByText)
    {
        if (file.empty()) {
            return file;
        }
        std::string& first = firstByFile[file];
        if (first.empty()) {
            const std::string code = ReadFile((directory / file).string());
            const fs::path path = file;
            const std::string own = path.lexically_relative(*path.begin()).string();
            first = firstByText.emplace(path.extension().string() + code, own).first->second;
            if (first == own) {
                record.texts[own] = texts[file];
                codes[own] = code;
            }
        }
        return first;
    }

    fs::path directory;
    const ManifestShader& shader;
    std::size_t count;
    std::vector<fs::path> files;  ///< of the shares, below `directory`, like those that follow
    std::map<std::string, TextRecord> texts;
    std::map<std::string, std::map<std::string, VariantRecord>> variants;
    std::map<std::string, std::string> firstByFile;  ///< by file of a share, the file of the result
    std::map<std::string, std::string> codes;        ///< by file of the result
    ShaderRecord record;                             ///< of the result
};

void JoinShares(const BuildOptions& options)
{
    const Manifest manifest(options.manifest);
    const std::string nodeSources = NodeSources();
    std::vector<Join> joins;
    std::map<std::string, ShaderRecord> records;
    for (const ManifestShader& shader : manifest.shaders) {
        joins.emplace_back(options.output, shader, options.joinCount, nodeSources);
        records[shader.name] = joins.back().Record();
    }
    for (const Join& join : joins) {
        join.Write();
    }
    WriteIndex(options.output, records);
    for (const Join& join : joins) {
        join.RemoveShares();
    }
}

void WriteIndexOnly(const BuildOptions& options)
{
    const Manifest manifest(options.manifest);
    std::map<std::string, ShaderRecord> records;
    for (const ManifestShader& shader : manifest.shaders) {
        records[shader.name] = ShaderRecord::Read(RecordPath(options.output, shader.name));
    }
    WriteIndex(options.output, records);
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
