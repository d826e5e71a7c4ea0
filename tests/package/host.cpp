// SPDX-License-Identifier: MIT
#include <morl/morl.h>
#include <iostream>

int main()
{
    ns_ruke::TamberLogSystem::SetSink(
        [](ns_ruke::LogLevel, const std::string&, const std::string&) {});
    ns_ruke::MorlCompiler compiler;
    ns_ruke::PassProperty pass;
    pass.target = "glsl";
    pass.stage = 1;
    ns_ruke::ShaderOutput output;
    compiler.Compile(pass, output);
    std::cout << output.code;
}
