// SPDX-License-Identifier: MIT
#include "build/build.h"

#include "build/dependencies.h"
#include "build/variants.h"
#include "json_file.h"
#include "nodes/node_files.h"
#include "output_file.h"
#include "parallel.h"
#include "path.h"
#include "progress.h"
#include "text.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <deque>
#include <filesystem>
#include <iomanip>
#include <optional>
#include <sstream>
#include <utility>

namespace morlc {
namespace {

using Clock = std::chrono::steady_clock;
using Compilers = std::vector<std::unique_ptr<ns_ruke::MorlCompiler>>;
namespace fs = std::filesystem;

/// The numbers in the summary.
struct Totals {
    std::size_t shaders = 0;
    std::size_t variants = 0;
    std::size_t passes = 0;
    std::size_t texts = 0;    ///< different ones
    std::size_t written = 0;  ///< those that were new or had changed
};

std::string Counted(std::size_t count, const char* what)
{
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

std::string Summary(const Totals& totals, const Diagnostics& diagnostics, Clock::time_point start)
{
    std::ostringstream summary;
    summary << Counted(totals.shaders, "shader") << ", " << Counted(totals.variants, "variant")
            << ", " << totals.texts << " distinct of " << Counted(totals.passes, "text") << " ("
            << totals.written << " written), " << Counted(diagnostics.ErrorCount(), "error")
            << ", ";
    if (diagnostics.WarningCount() > 0) {
        summary << Counted(diagnostics.WarningCount(), "warning") << ", ";
    }
    summary << std::fixed << std::setprecision(2)
            << std::chrono::duration<double>(Clock::now() - start).count() << " s";
    return summary.str();
}

/// The list never contains null. It is empty if the nodes are not valid.
Compilers CompilersOf(LoadedNodes& nodes, std::size_t count)
{
    Compilers compilers;
    if (!nodes.compiler) {
        return compilers;
    }
    compilers.push_back(std::move(nodes.compiler));
    while (compilers.size() < count) {
        compilers.push_back(CopyNodes(*compilers.front()));
    }
    return compilers;
}

/// Removes a file, and any directories below `root` that this leaves empty.
void RemoveFile(const fs::path& root, const fs::path& file)
{
    fs::path link;
    if (HasLinkedFolder(root, root / file, link)) {
        return;
    }
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

/// The texts that an earlier build of a shader has written.
std::vector<std::string> OldTexts(const fs::path& directory, const std::string& shader)
{
    try {
        return ShaderRecord::ReadTextNames(RecordPath(directory, shader));
    } catch (const DiagnosticError&) {
        return {};  // There was no earlier build.
    }
}

/// Writes the record of a shader after its texts, and removes texts of an earlier build that the
/// shader no longer needs.
void WriteRecord(const fs::path& directory, const ManifestShader& shader,
                 const ShaderRecord& record, const std::vector<std::string>& oldTexts)
{
    WriteIfChanged(PathText(RecordPath(directory, shader.name)),
                   FormatLongJsonFile(record.ToJson(shader)), directory);
    for (const std::string& file : oldTexts) {
        const bool isOurs = file.compare(0, shader.name.size() + 1, shader.name + "/") == 0;
        if (isOurs && record.texts.count(file) == 0) {
            RemoveFile(directory, file);
        }
    }
}

/// Records by shader name.
using Records = std::map<std::string, const ShaderRecord*>;

void WriteIndex(const fs::path& directory, const Records& records)
{
    WriteIfChanged(PathText(IndexPath(directory)), FormatLongJsonFile(MakeIndex(records)),
                   directory);
}

/// One run of "morlc build" that compiles.
class BuildRun {
public:
    BuildRun(const BuildOptions& newOptions, const std::string& newPrefix,
             Diagnostics& newDiagnostics)
        : options(newOptions),
          prefix(newPrefix),
          diagnostics(newDiagnostics),
          manifest(newOptions.manifest, newPrefix),
          directory(ToPath(newOptions.output))
    {
        manifest.CheckNames(options.shaders);
    }

    BuildResult Run()
    {
        const Clock::time_point start = Clock::now();
        const std::vector<Variant> variants = ListVariants(manifest, options.shaders);
        LoadedNodes nodes = LoadNodes(prefix, diagnostics);
        const Compilers compilers = CompilersOf(nodes, ThreadCount(options.jobs, variants.size()));
        if (compilers.empty()) {
            return {};
        }
        totals.variants = variants.size();
        ReadOldTexts(variants);
        const std::vector<BuiltShader> shaders = Compile(variants, compilers);
        for (std::size_t i = 0; i < shaders.size(); ++i) {
            Write(manifest.shaders[i], shaders[i]);
        }
        if (WritesIndex()) {
            WriteCompleteIndex(shaders);
        }
        if (!options.depfile.empty() && diagnostics.ErrorCount() == 0) {
            WriteDependencies(shaders, nodes.inputs);
        }
        result.summary = Summary(totals, diagnostics, start);
        return std::move(result);
    }

private:
    /// Done first, because parsing a record takes more memory than anything that follows.
    void ReadOldTexts(const std::vector<Variant>& variants)
    {
        for (const Variant& variant : variants) {
            const std::string& shader = manifest.shaders[variant.shader].name;
            if (oldTexts.count(shader) == 0) {
                oldTexts[shader] = OldTexts(directory, shader);
            }
        }
    }

    std::vector<BuiltShader> Compile(const std::vector<Variant>& variants,
                                     const Compilers& compilers)
    {
        Progress progress(variants.size(), "variants", options.quiet);
        return CompileVariants({manifest, variants, compilers, diagnostics,
                                [&](std::size_t count) { progress.Advance(count); }});
    }

    void Write(const ManifestShader& shader, const BuiltShader& built)
    {
        if (built.passes == 0) {
            return;  // It was not requested.
        }
        ++totals.shaders;
        totals.passes += built.passes;
        totals.texts += built.codes.size();
        if (built.failed) {
            return;
        }
        for (const auto& [file, code] : built.codes) {
            const std::string path = PathText(directory / file);
            if (WriteIfChanged(path, {code}, directory)) {
                ++totals.written;
                result.outputs.push_back(AsGiven(prefix, ToPath(path)));
            }
        }
        WriteRecord(directory, shader, built.record, oldTexts[shader.name]);
    }

    bool WritesIndex() const { return !options.noIndex; }

    /// The index points to what exists. For a shader that has errors, or that was not requested,
    /// this is the result of an earlier build.
    void WriteCompleteIndex(const std::vector<BuiltShader>& shaders) const
    {
        Records records;
        std::deque<ShaderRecord> oldRecords;
        for (std::size_t i = 0; i < shaders.size(); ++i) {
            const std::string& name = manifest.shaders[i].name;
            if (shaders[i].passes > 0 && !shaders[i].failed) {
                records[name] = &shaders[i].record;
            } else if (auto old = ReadOldRecord(RecordPath(directory, name))) {
                records[name] = &oldRecords.emplace_back(std::move(*old));
            }
        }
        WriteIndex(directory, records);
    }

    void WriteDependencies(const std::vector<BuiltShader>& shaders,
                           const std::vector<std::string>& nodeInputs) const
    {
        std::vector<std::string> outputs;
        if (WritesIndex()) {
            outputs.push_back(AsGiven(prefix, IndexPath(directory)));
        }
        for (std::size_t i = 0; i < shaders.size(); ++i) {
            if (shaders[i].passes > 0) {
                outputs.push_back(AsGiven(prefix, RecordPath(directory, manifest.shaders[i].name)));
            }
        }
        std::vector<std::string> inputs = {AsGiven(prefix, ToPath(options.manifest))};
        for (const std::string& path : nodeInputs) {
            inputs.push_back(AsGiven(prefix, ToPath(path)));
        }
        WriteIfChanged(options.depfile, {FormatDepfile(outputs, inputs)});
    }

    const BuildOptions& options;
    std::string prefix;
    Diagnostics& diagnostics;
    Manifest manifest;
    fs::path directory;                                        ///< the output directory
    std::map<std::string, std::vector<std::string>> oldTexts;  ///< of earlier builds, by shader
    Totals totals;
    BuildResult result;
};

void WriteIndexOnly(const BuildOptions& options, const std::string& prefix)
{
    const Manifest manifest(options.manifest, prefix);
    Records records;
    std::deque<ShaderRecord> read;
    for (const ManifestShader& shader : manifest.shaders) {
        read.push_back(ShaderRecord::Read(RecordPath(ToPath(options.output), shader.name)));
        records[shader.name] = &read.back();
    }
    WriteIndex(ToPath(options.output), records);
}

}  // namespace

BuildResult BuildShaders(const BuildOptions& options, const std::string& prefix,
                         Diagnostics& diagnostics)
{
    return BuildRun(options, prefix, diagnostics).Run();
}

void Build(const Options& options, Diagnostics& diagnostics)
{
    const BuildOptions& build = options.build;
    const std::string prefix = EnterDirectory(options.common.directory);
    if (!build.ninjaFile.empty()) {
        WriteNinjaFile(options.program, build, Manifest(build.manifest, prefix));
    } else if (build.indexOnly) {
        WriteIndexOnly(build, prefix);
    } else {
        const BuildResult result = BuildShaders(build, prefix, diagnostics);
        if (!build.quiet && !result.summary.empty()) {
            WriteWhole("-", result.summary + "\n");
        }
    }
}

}  // namespace morlc
