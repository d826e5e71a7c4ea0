// SPDX-License-Identifier: MIT
// workload WORK TIMES: repeats one kind of work TIMES times and prints how many bytes one
// repetition handles. Under valgrind's callgrind, the difference between two runs with different
// TIMES is the work itself, without the start of the process.
#include "support/graph.h"
#include "support/samples.h"

#include <morl/morl.h>
#include <cstdlib>
#include <iostream>
#include <string>

namespace {

using namespace ns_ruke;

/// Parses every sample node. Returns the bytes of source.
std::size_t Parse(int times)
{
    const auto compiler = morl_test::MakeSampleCompiler();
    std::vector<std::string> sources;
    std::size_t bytes = 0;
    for (const std::string& name : compiler->GetNodeNames()) {
        sources.push_back(compiler->FindNode(name)->GetContent());
        bytes += sources.back().size();
    }
    MorlParser parser;
    for (int i = 0; i < times; ++i) {
        for (const std::string& source : sources) {
            MorlProgram program;
            parser.Parse(source, program);
        }
    }
    return bytes;
}

/// Requests after all nodes are parsed: every sample shader, both passes. Returns the bytes of
/// output.
std::size_t Warm(const std::string& target, int times)
{
    const auto compiler = morl_test::MakeSampleCompiler();
    std::vector<PassProperty> passes;
    for (morl_test::SampleRequest& request : morl_test::RichestSamples()) {
        if (request.target == target) {
            passes.push_back(request.vertex);
            passes.push_back(request.fragment);
        }
    }
    std::size_t bytes = 0;
    for (int i = 0; i <= times; ++i) {
        bytes = 0;
        for (PassProperty& pass : passes) {
            ShaderOutput output;
            compiler->Compile(pass, output);
            bytes += output.code.size();
        }
    }
    return bytes;
}

/// Requests without nodes. Returns 1, so that costs are per request.
std::size_t Empty(int times)
{
    const auto compiler = morl_test::MakeSampleCompiler();
    PassProperty pass = morl_test::MakePass("glsl", 0, {});
    for (int i = 0; i < times; ++i) {
        ShaderOutput output;
        compiler->Compile(pass, output);
    }
    return 1;
}

}  // namespace

int main(int argc, char** argv)
{
    const std::string work = argc == 3 ? argv[1] : "";
    const int times = argc == 3 ? std::atoi(argv[2]) : 0;
    TamberLogSystem::SetSink([](LogLevel, const std::string&, const std::string&) {});
    if (work == "parse") {
        std::cout << Parse(times) << "\n";
        return 0;
    }
    if (work == "empty") {
        std::cout << Empty(times) << "\n";
        return 0;
    }
    for (const std::string& target : MorlTargets()) {
        if (work == target) {
            std::cout << Warm(target, times) << "\n";
            return 0;
        }
    }
    std::cerr << "usage: workload parse|empty|TARGET TIMES\n";
    return 2;
}
