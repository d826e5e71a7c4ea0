// SPDX-License-Identifier: MIT
#include "compile.h"

#include "nodes/node_files.h"
#include "output_file.h"
#include "passes.h"
#include "path.h"
#include "semantics_file.h"

#include <morl/morl.h>
#include <filesystem>

namespace morlc {
namespace {

using ns_ruke::MorlCompiler;
using ns_ruke::PassProperty;
using ns_ruke::ShaderOutput;

/// Runs requests, and reports their faults.
class Requests {
public:
    Requests(MorlCompiler& newCompiler, Diagnostics& newDiagnostics)
        : compiler(newCompiler),
          diagnostics(newDiagnostics),
          log(newCompiler, LogCollection::Mode::Show)
    {
    }

    /// Returns false if the request was refused; then nothing is written.
    bool Run(PassProperty& pass, ShaderOutput& output)
    {
        ns_ruke::PassReport report;
        const bool isWritten =
            compiler.CompileReported(pass, output, report, ns_ruke::ReportParts::Faults);
        for (const ns_ruke::ReportFault& fault : report.faults) {
            if (fault.line > 0) {
                diagnostics.Report(log.Describe(fault));
            }
        }
        return isWritten;
    }

private:
    MorlCompiler& compiler;
    Diagnostics& diagnostics;
    LogCollection log;
};

void CompileOne(const PassOptions& options, const std::string& file, Requests& requests)
{
    PassProperty pass = MakePass(options, options.target, options.stage, options.nodes);
    if (!options.semanticsIn.empty()) {
        pass.semantics = ReadSemantics(options.semanticsIn);
    }
    ShaderOutput output;
    if (!requests.Run(pass, output)) {
        return;
    }
    WriteWhole(file, output.code);
    if (!options.semanticsOut.empty()) {
        WriteWhole(options.semanticsOut, FormatSemantics(output.semantics));
    }
}

void CompileBoth(const PassOptions& options, const std::filesystem::path& directory,
                 Requests& requests)
{
    MakeDirectories(PathText(directory));
    for (const std::string& target : ns_ruke::MorlTargets()) {
        if (options.target != "all" && options.target != target) {
            continue;
        }
        PassProperty vertex = MakePass(options, target, Stage::Vertex, options.vertexNodes);
        ShaderOutput vertexOutput;
        const bool hasVertex = requests.Run(vertex, vertexOutput);
        PassProperty fragment = MakePass(options, target, Stage::Fragment, options.fragmentNodes);
        fragment.semantics = vertexOutput.semantics;
        ShaderOutput fragmentOutput;
        if (!requests.Run(fragment, fragmentOutput) || !hasVertex) {
            return;
        }
        WriteWhole(PathText(directory / (target + ".vert")), vertexOutput.code);
        WriteWhole(PathText(directory / (target + ".frag")), fragmentOutput.code);
    }
}

}  // namespace

void Compile(const Options& options, Diagnostics& diagnostics)
{
    const std::string prefix = EnterDirectory(options.common.directory);
    const auto compiler = LoadNodes(prefix, diagnostics).compiler;
    if (!compiler) {
        return;
    }
    Requests requests(*compiler, diagnostics);
    if (options.pass.BothPasses()) {
        CompileBoth(options.pass, ToPath(options.output), requests);
    } else {
        CompileOne(options.pass, options.output, requests);
    }
}

}  // namespace morlc
