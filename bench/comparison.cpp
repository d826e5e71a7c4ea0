// SPDX-License-Identifier: MIT
// Compares costs with what a user would otherwise run, in one process, measuring both in turns.
#include "bench_support.h"
#include "shader_path.h"
#include "support/graph.h"
#include "support/samples.h"

#include <glslang/Public/ShaderLang.h>
#include <json/json.h>
#include <malloc.h>
#include <morl/morl.h>
#include <algorithm>
#include <array>
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

}  // namespace

void* operator new(std::size_t size)
{
    allocationCalls.fetch_add(1, std::memory_order_relaxed);
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

/// Whether work is measured again and again, or each time for the first time: with nothing of it in
/// the processor's caches.
enum class Caches { Hot, Empty };

/// Reads more memory than the caches hold.
void EmptyCaches()
{
    static std::vector<unsigned char> other(std::size_t{48} << 20U, 1);
    for (std::size_t i = 0; i < other.size(); i += 64) {
        ++other[i];
    }
}

/// The median time of each piece of work. They run in turns, so that a slowdown of the machine
/// affects all of them.
std::vector<double> MedianSeconds(const std::vector<std::function<void()>>& works, Caches caches)
{
    const int rounds = caches == Caches::Hot ? 31 : 7;
    std::vector<std::vector<double>> seconds(works.size());
    for (int round = 0; round < rounds; ++round) {
        for (std::size_t i = 0; i < works.size(); ++i) {
            if (caches == Caches::Empty) {
                EmptyCaches();
            } else {
                works[i]();  // the others have displaced it
            }
            seconds[i].push_back(Seconds(works[i]));
        }
    }
    std::vector<double> medians;
    for (std::vector<double>& values : seconds) {
        medians.push_back(Median(std::move(values)));
    }
    return medians;
}

/// Copies of the nodes of a pass, not parsed yet.
struct Graph {
    Graph(const MorlCompiler& compiler, const PassProperty& pass) : target(pass.target)
    {
        for (const std::string& name : pass.nodeNames) {
            nodes.push_back(std::make_unique<MorlNode>());
            nodes.back()->SetName(name);
            nodes.back()->SetContent(compiler.FindNode(name)->GetContent());
        }
    }

    void Parse()
    {
        for (const auto& node : nodes) {
            node->Compile(&parser, target);
        }
    }

    std::string target;
    std::vector<std::unique_ptr<MorlNode>> nodes;
    MorlParser parser;
};

/// Both passes of a sample shader in a target, with the macros that the sample has there.
std::array<ShaderOutput, 2> CompileSampleFor(const std::string& target, MorlCompiler& compiler,
                                             const std::string& shader)
{
    const std::vector<morl_test::SampleRequest> samples = morl_test::RichestSamples();
    morl_test::SampleRequest request = *std::find_if(
        samples.begin(), samples.end(),
        [&](const auto& sample) { return sample.target == target && sample.shader == shader; });
    std::array<ShaderOutput, 2> outputs;
    compiler.Compile(request.vertex, outputs[0]);
    request.fragment.semantics = outputs[0].semantics;
    compiler.Compile(request.fragment, outputs[1]);
    return outputs;
}

/// The times of one pass. A request for nodes that are not parsed yet is parsing them and then a
/// request for parsed ones.
struct PassTimes {
    double request;
    double parsing;
    double glslang;  ///< its parse of the same shader
    double path;     ///< from HLSL to SPIR-V to the target
};

/// @param hlsl the shader in Direct3D 10
PassTimes MeasurePass(MorlCompiler& compiler, PassProperty pass, const ShaderOutput& hlsl,
                      Caches caches)
{
    ShaderOutput output;
    compiler.Compile(pass, output);
    Graph graph(compiler, pass);
    // Shader model 3 is not a language that glslang reads, so its parse is that of Direct3D 10.
    const bool parsesHlsl = pass.target == "hlsl" || pass.target == "hlsl10";
    const std::string& parsed = parsesHlsl ? hlsl.code : output.code;
    const std::string language = parsesHlsl ? "hlsl10" : pass.target;
    const std::vector<double> seconds = MedianSeconds(
        {[&] {
             ShaderOutput again;
             compiler.Compile(pass, again);
         },
         [&] { graph.Parse(); }, [&] { ParseWithGlslang(language, parsed, pass.stage); },
         [&] { TranslateWithSpirvCross(pass.target, hlsl.code, pass.stage); }},
        caches);
    return {seconds[0], seconds[1], seconds[2], seconds[3]};
}

/// The geometric mean of ratios.
struct Mean {
    void Add(double ratio)
    {
        sum += std::log(ratio);
        ++count;
    }
    double Percent() const { return 100.0 * std::exp(sum / count); }

    double sum = 0.0;
    int count = 0;
};

/// SPIRV-Cross has no unsigned integers in the older languages.
bool CanTranslate(const std::string& target, const std::string& text, int stage)
{
    try {
        TranslateWithSpirvCross(target, text, stage);
    } catch (const std::runtime_error&) {
        return false;
    }
    return true;
}

/// How the times of requests relate to those of other tools, over all sample shaders.
void CompareRequests(const std::string& target, Caches caches)
{
    const auto compiler = morl_test::MakeSampleCompiler();
    std::array<Mean, 4> means;
    int refused = 0;
    for (const morl_test::SampleRequest& request : morl_test::RichestSamples()) {
        if (request.target != target) {
            continue;
        }
        const std::array<ShaderOutput, 2> hlsl =
            CompileSampleFor("hlsl10", *compiler, request.shader);
        const std::array<ShaderOutput, 2> texts =
            CompileSampleFor(target, *compiler, request.shader);
        PassProperty fragment = request.fragment;
        fragment.semantics = texts[0].semantics;
        for (const PassProperty& pass : {request.vertex, fragment}) {
            const ShaderOutput& source = hlsl[pass.stage == kVertexStage ? 0 : 1];
            if (!CanTranslate(target, source.code, pass.stage)) {
                ++refused;
                continue;
            }
            const PassTimes times = MeasurePass(*compiler, pass, source, caches);
            means[0].Add(times.request / times.path);
            means[1].Add((times.request + times.parsing) / times.path);
            means[2].Add(times.request / times.glslang);
            means[3].Add((times.request + times.parsing) / times.glslang);
        }
    }
    std::printf("  %-6s  %-6s  %5.2f%%  %5.2f%%    %5.2f%%  %5.2f%%    %d, %d\n", target.c_str(),
                caches == Caches::Hot ? "hot" : "first", means[0].Percent(), means[1].Percent(),
                means[2].Percent(), means[3].Percent(), means[0].count, refused);
}

/// Reads texts with the settings that the compiler uses.
void ReadWithJsonAlone(const std::vector<NodeText>& texts)
{
    static const Json::CharReaderBuilder builder = [] {
        Json::CharReaderBuilder settings;
        settings["allowComments"] = false;
        settings["collectComments"] = false;
        settings["stackLimit"] = kMaxJsonNesting;
        return settings;
    }();
    for (const NodeText& text : texts) {
        const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
        Json::Value root;
        reader->parse(text.text.data(), text.text.data() + text.text.size(), &root, nullptr);
    }
}

void CompareLoading()
{
    std::vector<NodeText> texts;
    for (const std::string& path : NodeFiles()) {
        texts.push_back(
            {path, morl_test::ReadText(std::string(MORL_SOURCE_DIR) + "/examples/" + path)});
    }
    for (const Caches caches : {Caches::Hot, Caches::Empty}) {
        const std::vector<double> seconds = MedianSeconds(
            {[&] { const MorlCompiler compiler(texts); }, [&] { ReadWithJsonAlone(texts); }},
            caches);
        std::printf("loading from memory, %s: %.2f times reading the same texts with JsonCpp\n",
                    caches == Caches::Hot ? "hot" : "first", seconds[0] / seconds[1]);
    }
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

void CountAllocations(const std::string& target)
{
    const auto compiler = morl_test::MakeSampleCompiler();
    std::size_t calls = 0;
    std::size_t requests = 0;
    for (const morl_test::SampleRequest& request : morl_test::RichestSamples()) {
        if (request.target != target) {
            continue;
        }
        for (PassProperty pass : {request.vertex, request.fragment}) {
            ShaderOutput warm;
            compiler->Compile(pass, warm);
            ShaderOutput output;
            const std::size_t before = allocationCalls;
            compiler->Compile(pass, output);
            calls += allocationCalls - before;
            ++requests;
        }
    }
    std::printf("  %-6s  %.1f\n", target.c_str(),
                static_cast<double>(calls) / static_cast<double>(requests));
}

}  // namespace

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
    glslang::InitializeProcess();
    std::puts(
        "\nrequests for parsed and unparsed nodes, relative to HLSL -> SPIR-V -> SPIRV-Cross and to"
        "\nglslang's parse (geometric means; the number of sample passes, and of those that"
        "\nSPIRV-Cross refuses)");
    for (const Caches caches : {Caches::Hot, Caches::Empty}) {
        for (const std::string& target : MorlTargets()) {
            CompareRequests(target, caches);
        }
    }
    glslang::FinalizeProcess();
    CompareLoading();
    std::puts("heap allocations of a request for parsed nodes");
    for (const std::string& target : MorlTargets()) {
        CountAllocations(target);
    }
    MeasureMemory();
}

}  // namespace morl_bench
