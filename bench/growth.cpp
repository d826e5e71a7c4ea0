// SPDX-License-Identifier: MIT
// How the cost grows with the size of the input. Every row but one must fit n log n or better.
#include "support/graph.h"

#include <benchmark/benchmark.h>
#include <morl/morl.h>

namespace {

using namespace ns_ruke;
using Macros = std::unordered_map<std::string, int>;

std::string Numbered(const std::string& before, std::int64_t count, const std::string& after)
{
    std::string text;
    for (std::int64_t i = 0; i < count; ++i) {
        text += before + std::to_string(i) + after;
    }
    return text;
}

/// One whole request for nodes with these sources; loading is not timed.
void Request(benchmark::State& state, const std::vector<morl_test::NodeSource>& nodes,
             const std::string& target, int stage, const Macros& macros = {})
{
    PassProperty pass = morl_test::MakePass(target, stage, {});
    for (const morl_test::NodeSource& node : nodes) {
        pass.nodeNames.push_back(node.name);
    }
    pass.macros = macros;
    for (auto _ : state) {
        state.PauseTiming();
        auto compiler = morl_test::MakeCompiler(nodes);
        ShaderOutput output;
        state.ResumeTiming();
        compiler->Compile(pass, output);
        state.PauseTiming();
        compiler.reset();
        state.ResumeTiming();
    }
    state.SetComplexityN(state.range(0));
}

/// Each node refers to the one after it, so that the list is in the worst order.
void Nodes(benchmark::State& state)
{
    std::vector<morl_test::NodeSource> nodes;
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        nodes.push_back({"n" + std::to_string(i), "", {"n" + std::to_string(i + 1)}});
    }
    Request(state, nodes, "glsl", 0);
}

void Declarations(benchmark::State& state)
{
    Request(state, {{"n", Numbered("uniform float u", state.range(0), ";"), {}}}, "glsl", 0);
}

void Statements(benchmark::State& state)
{
    Request(state, {{"n", "void main() {" + Numbered("x", state.range(0), " = 1;") + "}", {}}},
            "glsl", 0);
}

void Iterations(benchmark::State& state)
{
    Request(state, {{"n", "void main() { #for N : 0 x_N = 1; #endfor }", {}}}, "glsl", 0,
            {{"N", static_cast<int>(state.range(0))}});
}

/// Chains of 200 operators, because the length of one chain is bounded.
void Operators(benchmark::State& state)
{
    std::string chain = "a";
    for (int i = 0; i < 50; ++i) {
        chain += "+b*c-d.x";
    }
    std::string source = "void main() {";
    for (std::int64_t i = 0; i < state.range(0) / 200 + 1; ++i) {
        source += "x = " + chain + ";";
    }
    Request(state, {{"n", source + "}", {}}}, "glsl", 0);
}

void Sorted(benchmark::State& state)
{
    Request(state, {{"n", Numbered("in float u", state.range(0), " : TEXAUTO;"), {}}}, "glsles", 1);
}

/// Quadratic, up to the bound of a link's work.
void MacroAssignments(benchmark::State& state)
{
    Request(state,
            {{"n",
              "void main() {" + Numbered("$v", state.range(0), " = 1;") +
                  Numbered("x_$v", state.range(0), " = 1;") + "}",
              {}}},
            "glsl", 0);
}

void NodesInFiles(benchmark::State& state)
{
    std::string text = "[";
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        text += (i > 0 ? "," : "") + std::string("{\"name\":\"n") + std::to_string(i) +
                "\",\"content\":\"in float a;\",\"ref\":[\"b\"]}";
    }
    const morl_test::TemporaryDirectory directory;
    morl_test::WriteNodeFiles(directory.path, text + "]");
    const morl_test::InDirectory inDirectory(directory.path);
    for (auto _ : state) {
        const MorlCompiler compiler;
        benchmark::DoNotOptimize(&compiler);
    }
    state.SetComplexityN(state.range(0));
}

void RequestsOnOneCompiler(benchmark::State& state)
{
    const auto compiler = morl_test::MakeCompiler({{"n", "void main() { x = 1; }", {}}});
    PassProperty pass = morl_test::MakePass("glsl", 0, {"n"});
    for (auto _ : state) {
        for (std::int64_t i = 0; i < state.range(0); ++i) {
            ShaderOutput output;
            compiler->Compile(pass, output);
        }
    }
    state.SetComplexityN(state.range(0));
}

void Sizes(benchmark::internal::Benchmark* benchmark)
{
    benchmark->RangeMultiplier(10)
        ->Range(100, 100'000)
        ->Unit(benchmark::kMicrosecond)
        ->MinTime(0.05)
        ->Complexity(benchmark::oNLogN);
}

BENCHMARK(Nodes)->Apply(Sizes);
BENCHMARK(Declarations)->Apply(Sizes);
BENCHMARK(Statements)->Apply(Sizes);
BENCHMARK(Iterations)->Apply(Sizes);
BENCHMARK(Operators)->Apply(Sizes);
BENCHMARK(Sorted)->Apply(Sizes);
BENCHMARK(MacroAssignments)->Apply(Sizes);
BENCHMARK(NodesInFiles)->Apply(Sizes);
BENCHMARK(RequestsOnOneCompiler)->Apply(Sizes);

}  // namespace
