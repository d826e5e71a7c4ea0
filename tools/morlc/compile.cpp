// SPDX-License-Identifier: MIT
#include "compile.h"

#include "node_files.h"
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

/// A request that is refused leaves the code empty; then nothing is written.
bool IsRefused(const ShaderOutput& output)
{
    return output.code.empty();
}

void CompileOne(const PassOptions& options, const std::string& file, MorlCompiler& compiler)
{
    PassProperty pass = MakePass(options, options.target, options.stage, options.nodes);
    if (!options.semanticsIn.empty()) {
        pass.semantics = ReadSemantics(options.semanticsIn);
    }
    ShaderOutput output;
    compiler.Compile(pass, output);
    if (IsRefused(output)) {
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
        PassProperty vertex = MakePass(options, target, ns_ruke::kVertexStage, options.vertexNodes);
        ShaderOutput vertexOutput;
        compiler.Compile(vertex, vertexOutput);
        PassProperty fragment =
            MakePass(options, target, ns_ruke::kFragmentStage, options.fragmentNodes);
        fragment.semantics = vertexOutput.semantics;
        ShaderOutput fragmentOutput;
        compiler.Compile(fragment, fragmentOutput);
        if (IsRefused(vertexOutput) || IsRefused(fragmentOutput)) {
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
