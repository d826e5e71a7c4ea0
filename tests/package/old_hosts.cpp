// SPDX-License-Identifier: MIT
// A host in C++ that is built with the headers and the library of one version, and run with those
// of another.
#include <morl/morl.h>
#include <iostream>

int main()
{
    ns_ruke::PassProperty pass;
    pass.target = "glsl";
    pass.stage = 0;
    ns_ruke::ShaderOutput output;
    ns_ruke::MorlCompiler compiler;
    compiler.Compile(pass, output);
    std::cout << "the host runs\n";
}
