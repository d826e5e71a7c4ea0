// SPDX-License-Identifier: MIT
// Compares costs with what a user would otherwise run, in one process, measuring both in turns.
#include "bench_support.h"
#include "support/graph.h"
#include "support/samples.h"

#include <glslang/Include/ResourceLimits.h>
#include <glslang/Public/ShaderLang.h>
#include <json/json.h>
#include <malloc.h>
#include <morl/morl.h>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <new>
#include <stdexcept>

namespace {

std::atomic<std::size_t> allocationCalls{0};
std::atomic<std::size_t> allocationBytes{0};

}  // namespace

void* operator new(std::size_t size)
{
    allocationCalls.fetch_add(1, std::memory_order_relaxed);
    allocationBytes.fetch_add(size, std::memory_order_relaxed);
    if (void* object = std::malloc(size)) {
        return object;
    }
    throw std::bad_alloc();
}

void operator delete(void* object) noexcept
{
    std::free(object);
}

void operator delete(void* object, std::size_t /*size*/) noexcept
{
    std::free(object);
}

namespace morl_bench {
namespace {

using namespace ns_ruke;

double Seconds(const std::function<void()>& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double Median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

/// What the allocator has handed out, with its own overhead.
std::size_t BytesInUse()
{
    const struct mallinfo2 info = ::mallinfo2();
    return info.uordblks + info.hblkhd;
}

/// The median time of each piece of work. They run in turns, so that a slowdown of the machine
/// affects all of them.
std::vector<double> MedianSeconds(const std::vector<std::function<void()>>& works, int rounds)
{
    std::vector<std::vector<double>> seconds(works.size());
    for (int round = 0; round < rounds; ++round) {
        for (std::size_t i = 0; i < works.size(); ++i) {
            seconds[i].push_back(Seconds(works[i]));
        }
    }
    std::vector<double> medians;
    for (std::vector<double>& values : seconds) {
        medians.push_back(Median(std::move(values)));
    }
    return medians;
}

void ParseWithGlslang(const std::string& text, EShLanguage stage)
{
    static TBuiltInResource resources = [] {
        TBuiltInResource limits{};
        limits.maxDrawBuffers = 8;
        limits.maxVertexAttribs = 64;
        limits.maxTextureUnits = 32;
        limits.maxTextureImageUnits = 32;
        limits.maxCombinedTextureImageUnits = 80;
        limits.maxFragmentUniformComponents = 4096;
        limits.maxVertexUniformComponents = 4096;
        limits.maxVaryingFloats = 64;
        limits.limits.nonInductiveForLoops = true;
        limits.limits.whileLoops = true;
        limits.limits.doWhileLoops = true;
        limits.limits.generalUniformIndexing = true;
        limits.limits.generalAttributeMatrixVectorIndexing = true;
        limits.limits.generalVaryingIndexing = true;
        limits.limits.generalSamplerIndexing = true;
        limits.limits.generalVariableIndexing = true;
        limits.limits.generalConstantMatrixVectorIndexing = true;
        return limits;
    }();
    glslang::TShader shader(stage);
    const char* const strings[] = {text.c_str()};
    shader.setStrings(strings, 1);
    if (!shader.parse(&resources, 150, false, EShMsgDefault)) {
        throw std::runtime_error(std::string("the front end refused a sample: ") +
                                 shader.getInfoLog());
    }
}

/// Copies of some nodes of a compiler, not parsed yet.
struct Graph {
    explicit Graph(const MorlCompiler& compiler, const std::vector<std::string>& names)
    {
        for (const std::string& name : names) {
            nodes.push_back(std::make_unique<MorlNode>());
            nodes.back()->SetName(name);
            nodes.back()->SetContent(compiler.FindNode(name)->GetContent());
        }
    }
    std::vector<std::unique_ptr<MorlNode>> nodes;
};

struct Ratios {
    double cold = 0.0;
    double warm = 0.0;
};

/// For one pass of a sample shader: the time of a cold and of a warm request, divided by that of
/// the front end. A cold request is a warm one plus the parsing of its nodes.
Ratios CompareOne(MorlCompiler& compiler, PassProperty pass)
{
    ShaderOutput first;
    compiler.Compile(pass, first);
    const Graph graph(compiler, pass.nodeNames);
    const auto stage = pass.stage == 0 ? EShLangVertex : EShLangFragment;
    MorlParser parser;
    const std::vector<double> seconds = MedianSeconds({[&] { ParseWithGlslang(first.code, stage); },
                                                       [&] {
                                                           ShaderOutput output;
                                                           compiler.Compile(pass, output);
                                                       },
                                                       [&] {
                                                           for (const auto& node : graph.nodes) {
                                                               node->Compile(&parser, "glsl");
                                                           }
                                                       }},
                                                      201);
    return {(seconds[1] + seconds[2]) / seconds[0], seconds[1] / seconds[0]};
}

void CompareWithFrontEnd()
{
    glslang::InitializeProcess();
    const auto compiler = morl_test::MakeSampleCompiler();
    double cold = 0.0;
    double warm = 0.0;
    int count = 0;
    for (const morl_test::SampleRequest& request : morl_test::RichestSamples()) {
        if (request.target != "glsl") {
            continue;
        }
        for (const PassProperty& pass : {request.vertex, request.fragment}) {
            const Ratios ratios = CompareOne(*compiler, pass);
            std::printf("  %-16s %s  cold %5.2f%%  warm %5.2f%%\n", request.shader.c_str(),
                        pass.stage == 0 ? "vert" : "frag", 100.0 * ratios.cold,
                        100.0 * ratios.warm);
            cold += std::log(ratios.cold);
            warm += std::log(ratios.warm);
            ++count;
        }
    }
    glslang::FinalizeProcess();
    std::printf("geometric mean of %d passes: cold %.2f%%, warm %.2f%% of the front end's parse\n",
                count, 100.0 * std::exp(cold / count), 100.0 * std::exp(warm / count));
}

void ReadWithJsonAlone()
{
    for (const std::string& path : NodeFiles()) {
        const std::string text = morl_test::ReadText(path);
        const std::unique_ptr<Json::CharReader> reader(Json::CharReaderBuilder().newCharReader());
        Json::Value root;
        reader->parse(text.data(), text.data() + text.size(), &root, nullptr);
    }
}

void CompareLoading()
{
    const morl_test::InDirectory inDirectory(std::string(MORL_SOURCE_DIR) + "/examples");
    const std::vector<double> seconds =
        MedianSeconds({[] { const MorlCompiler compiler; }, ReadWithJsonAlone}, 401);
    std::printf("loading: %.2f times reading the same files with the JSON reader alone\n",
                seconds[0] / seconds[1]);
}

/// The memory that many parsed nodes take, relative to the size of their sources.
void MeasureMemory()
{
    const auto samples = morl_test::MakeSampleCompiler();
    const std::vector<std::string> names = samples->GetNodeNames();
    const std::size_t before = BytesInUse();
    std::size_t source = 0;
    std::vector<std::unique_ptr<MorlNode>> nodes;
    MorlParser parser;
    for (int i = 0; i < 10'000; ++i) {
        const std::string& name = names[static_cast<std::size_t>(i) % names.size()];
        nodes.push_back(std::make_unique<MorlNode>());
        nodes.back()->SetName(name + std::to_string(i));
        nodes.back()->SetContent(samples->FindNode(name)->GetContent());
        nodes.back()->Compile(&parser, "glsl");
        source += nodes.back()->GetContent().size();
    }
    std::printf("10000 nodes, parsed: %.1f times the bytes of their sources\n",
                static_cast<double>(BytesInUse() - before) / static_cast<double>(source));
}

/// Compares the allocations of warm requests with the number of nodes in the linked trees, all of
/// which the linker copies.
void CountAllocations()
{
    const auto compiler = morl_test::MakeSampleCompiler();
    std::size_t calls = 0;
    std::size_t nodes = 0;
    for (const morl_test::SampleRequest& request : morl_test::RichestSamples()) {
        if (request.target != "glsl") {
            continue;
        }
        for (PassProperty pass : {request.vertex, request.fragment}) {
            ShaderOutput warm;
            compiler->Compile(pass, warm);
            ShaderOutput output;
            const Allocations before = Allocations::Now();
            compiler->Compile(pass, output);
            calls += (Allocations::Now() - before).calls;
            // Without the nodes that are kept, every node of the linked tree is one more
            // allocation.
            MorlUnit::ReleaseMemory();
            ShaderOutput again;
            const Allocations released = Allocations::Now();
            compiler->Compile(pass, again);
            nodes += (Allocations::Now() - released).calls;
        }
    }
    nodes -= calls;
    std::printf(
        "warm requests: %zu heap allocations for %zu nodes of linked trees: %.2f per node\n", calls,
        nodes, static_cast<double>(calls) / static_cast<double>(nodes));
}

}  // namespace

Allocations Allocations::Now()
{
    return {allocationCalls.load(), allocationBytes.load()};
}

std::vector<std::string> NodeFiles()
{
    return {std::begin(ns_ruke::kNodeFiles), std::end(ns_ruke::kNodeFiles)};
}

std::size_t FileBytes()
{
    std::size_t bytes = 0;
    for (const std::string& path : NodeFiles()) {
        bytes += morl_test::ReadText(std::string(MORL_SOURCE_DIR) + "/examples/" + path).size();
    }
    return bytes;
}

std::size_t SourceBytes()
{
    const auto compiler = morl_test::MakeSampleCompiler();
    std::size_t bytes = 0;
    for (const std::string& name : compiler->GetNodeNames()) {
        bytes += compiler->FindNode(name)->GetContent().size();
    }
    return bytes;
}

void PrintComparison()
{
    std::puts("\nglsl requests, compared with a compiler front end that parses their output:");
    CompareWithFrontEnd();
    CompareLoading();
    CountAllocations();
    MeasureMemory();
}

}  // namespace morl_bench
