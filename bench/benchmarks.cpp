// SPDX-License-Identifier: MIT
// The cost of requests on the sample library, compared with what else a host would do with the same
// bytes.
#include "bench_support.h"
#include "support/graph.h"
#include "support/samples.h"

#include <benchmark/benchmark.h>
#include <morl/morl.h>

namespace {

using namespace ns_ruke;
using morl_bench::SourceBytes;

std::vector<morl_test::SampleRequest> Samples(const std::string& target)
{
    std::vector<morl_test::SampleRequest> samples;
    for (morl_test::SampleRequest& request : morl_test::RichestSamples()) {
        if (request.target == target) {
            samples.push_back(std::move(request));
        }
    }
    return samples;
}

/// Both passes of every sample shader. Returns the bytes of output.
std::size_t CompileAll(MorlCompiler& compiler, const std::vector<morl_test::SampleRequest>& samples)
{
    std::size_t bytes = 0;
    for (const morl_test::SampleRequest& sample : samples) {
        const morl_test::SampleTexts texts = morl_test::CompileSample(compiler, sample);
        bytes += texts.vertex.size() + texts.fragment.size();
    }
    return bytes;
}

void Construction(benchmark::State& state)
{
    const morl_test::InDirectory inDirectory(std::string(MORL_SOURCE_DIR) + "/examples");
    for (auto _ : state) {
        const MorlCompiler compiler;
        benchmark::DoNotOptimize(&compiler);
    }
    state.SetBytesProcessed(
        static_cast<std::int64_t>(state.iterations() * morl_bench::FileBytes()));
}
BENCHMARK(Construction);

/// Requests before any node is parsed: each uses a new compiler, whose loading is not timed.
void Cold(benchmark::State& state, const std::string& target)
{
    const auto samples = Samples(target);
    std::size_t bytes = 0;
    for (auto _ : state) {
        state.PauseTiming();
        auto compiler = morl_test::MakeSampleCompiler();
        state.ResumeTiming();
        bytes = CompileAll(*compiler, samples);
        state.PauseTiming();
        compiler.reset();
        state.ResumeTiming();
    }
    state.counters["source_per_second"] = benchmark::Counter(
        static_cast<double>(SourceBytes()), benchmark::Counter::kIsIterationInvariantRate);
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytes));
}

/// Requests after all nodes are parsed.
void Warm(benchmark::State& state, const std::string& target)
{
    const auto samples = Samples(target);
    const auto compiler = morl_test::MakeSampleCompiler();
    std::size_t bytes = CompileAll(*compiler, samples);
    for (auto _ : state) {
        bytes = CompileAll(*compiler, samples);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytes));
}

/// Requests that switch the target every time, so that the nodes must be parsed again.
void Switch(benchmark::State& state, const std::string& target)
{
    const auto samples = Samples(target);
    const auto others = Samples(target == "hlsl" ? "glsl" : "hlsl");
    const auto compiler = morl_test::MakeSampleCompiler();
    std::size_t bytes = 0;
    for (auto _ : state) {
        for (std::size_t i = 0; i < samples.size(); ++i) {
            bytes += morl_test::CompileSample(*compiler, samples[i]).fragment.size();
            bytes += morl_test::CompileSample(*compiler, others[i]).fragment.size();
        }
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(bytes));
}

/// One row for each target.
const bool kRegistered = [] {
    for (const std::string& target : MorlTargets()) {
        benchmark::RegisterBenchmark(("Cold/" + target).c_str(), Cold, target);
        benchmark::RegisterBenchmark(("Warm/" + target).c_str(), Warm, target);
        benchmark::RegisterBenchmark(("Switch/" + target).c_str(), Switch, target);
    }
    return true;
}();

void EmptyRequest(benchmark::State& state)
{
    const auto compiler = morl_test::MakeSampleCompiler();
    PassProperty pass = morl_test::MakePass("glsl", 0, {});
    for (auto _ : state) {
        ShaderOutput output;
        compiler->Compile(pass, output);
        benchmark::DoNotOptimize(output.code.data());
    }
}
BENCHMARK(EmptyRequest);

}  // namespace

int main(int argc, char** argv)
{
    TamberLogSystem::SetSink([](LogLevel, const std::string&, const std::string&) {});
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    morl_bench::PrintComparison();
    benchmark::Shutdown();
    return 0;
}
