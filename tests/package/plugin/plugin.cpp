// SPDX-License-Identifier: MIT
// A plug-in of an engine, with a library of its own inside of it.
#include <morl/c/morl.h>
#include <morl/morl.h>

namespace {

int heard = 0;

int CompileAsCpp()
{
    ns_ruke::MorlCompiler compiler(std::vector<ns_ruke::NodeText>{});
    compiler.SetNode("n", "out float4 c : COLOR0\nvoid main() { c = 1; }");
    ns_ruke::PassProperty pass;
    pass.nodeNames = {"n"};
    pass.target = "glsl";
    pass.stage = ns_ruke::kFragmentStage;
    ns_ruke::ShaderOutput output;
    compiler.Compile(pass, output);
    return output.code.empty() ? 1 : 0;
}

void Hear(void* /*host*/, const morl_log_line* line)
{
    heard += line->level == MORL_ERROR ? 1 : 0;
}

}  // namespace

#define EXPORTED extern "C" __attribute__((visibility("default")))

EXPORTED void start_plugin()
{
    morl_set_log(Hear, nullptr, nullptr, nullptr);
}

/// How many faults this plug-in's own log has heard of: one, unless another one's log took it.
EXPORTED int run_plugin()
{
    heard = 0;
    return CompileAsCpp() == 0 ? heard : -1;
}

EXPORTED void end_plugin()
{
    morl_set_log(nullptr, nullptr, nullptr, nullptr);
}
