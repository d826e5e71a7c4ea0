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

/// Runs a request. Returns false if it was refused; then nothing is written.
bool Run(MorlCompiler& compiler, PassProperty& pass, ShaderOutput& output)
{
    ns_ruke::PassReport report;
    return compiler.CompileReported(pass, output, report, ns_ruke::ReportParts::Faults);
}

void CompileOne(const PassOptions& options, const std::string& file, MorlCompiler& compiler)
{
    PassProperty pass = MakePass(options, options.target, options.stage, options.nodes);
    if (!options.semanticsIn.empty()) {
        pass.semantics = ReadSemantics(options.semanticsIn);
    }
    ShaderOutput output;
    if (!Run(compiler, pass, output)) {
        return;
    }
    WriteWhole(file, output.code);
    if (!options.semanticsOut.empty()) {
        WriteWhole(options.semanticsOut, FormatSemantics(output.semantics));
    }
}

void CompileBoth(const PassOptions& options, const std::filesystem::path& directory,
                 MorlCompiler& compiler)
{
    MakeDirectories(PathText(directory));
    for (const std::string& target : ns_ruke::MorlTargets()) {
        if (options.target != "all" && options.target != target) {
            continue;
        }
        PassProperty vertex = MakePass(options, target, Stage::Vertex, options.vertexNodes);
        ShaderOutput vertexOutput;
        const bool hasVertex = Run(compiler, vertex, vertexOutput);
        PassProperty fragment = MakePass(options, target, Stage::Fragment, options.fragmentNodes);
        fragment.semantics = vertexOutput.semantics;
        ShaderOutput fragmentOutput;
        if (!Run(compiler, fragment, fragmentOutput) || !hasVertex) {
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
    const LogCollection log(*compiler, LogCollection::Mode::Show);
    if (options.pass.BothPasses()) {
        CompileBoth(options.pass, ToPath(options.output), *compiler);
    } else {
        CompileOne(options.pass, options.output, *compiler);
    }
}

}  // namespace morlc
