// SPDX-License-Identifier: MIT
// workload WORK TIMES: repeats one kind of work TIMES times and prints how many bytes one
// repetition handles. Under valgrind's callgrind, the difference between two runs with different
// TIMES is the work itself, without the start of the process.
#include "support/graph.h"
#include "support/samples.h"

#include <json/json.h>
#include <morl/morl.h>
#include <cstdlib>
#include <iostream>
#include <map>
#include <memory>
#include <numeric>
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

/// Both passes of every sample shader.
std::vector<PassProperty> Passes(const std::string& target)
{
    std::vector<PassProperty> passes;
    for (morl_test::SampleRequest& request : morl_test::RichestSamples()) {
        if (request.target == target) {
            passes.push_back(request.vertex);
            passes.push_back(request.fragment);
        }
    }
    return passes;
}

/// Requests after all nodes are parsed. Returns the bytes of output.
std::size_t Warm(const std::string& target, int times)
{
    const auto compiler = morl_test::MakeSampleCompiler();
    std::vector<PassProperty> passes = Passes(target);
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

/// The same for "glsl", with reports, or with warnings as well.
std::size_t Reported(int times, bool withWarnings)
{
    const auto compiler = morl_test::MakeSampleCompiler();
    std::vector<PassProperty> passes = Passes("glsl");
    std::size_t bytes = 0;
    for (int i = 0; i <= times; ++i) {
        bytes = 0;
        for (PassProperty& pass : passes) {
            ShaderOutput output;
            PassReport report;
            std::vector<ReportWarning> warnings;
            withWarnings ? compiler->CompileReported(pass, output, report, warnings)
                         : compiler->CompileReported(pass, output, report);
            bytes += output.code.size();
        }
    }
    return bytes;
}

std::size_t Report(int times)
{
    return Reported(times, false);
}

std::size_t Check(int times)
{
    return Reported(times, true);
}

std::vector<NodeText> SampleTexts()
{
    std::vector<NodeText> texts;
    for (const char* path : kNodeFiles) {
        texts.push_back(
            {path, morl_test::ReadText(std::string(MORL_SOURCE_DIR) + "/examples/" + path)});
    }
    return texts;
}

/// Loads the sample nodes from memory. Returns the bytes of the texts.
std::size_t Load(int times)
{
    const std::vector<NodeText> texts = SampleTexts();
    for (int i = 0; i < times; ++i) {
        const MorlCompiler compiler(texts);
    }
    return std::accumulate(
        texts.begin(), texts.end(), std::size_t{0},
        [](std::size_t sum, const NodeText& text) { return sum + text.text.size(); });
}

/// Reads the same texts with the JSON library alone, with the settings that the compiler uses.
/// Returns the bytes.
std::size_t LoadJson(int times)
{
    const std::vector<NodeText> texts = SampleTexts();
    Json::CharReaderBuilder builder;
    builder["allowComments"] = false;
    builder["collectComments"] = false;
    builder["stackLimit"] = kMaxJsonNesting;
    std::size_t bytes = 0;
    for (int i = 0; i < times; ++i) {
        bytes = 0;
        for (const NodeText& text : texts) {
            const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
            Json::Value root;
            reader->parse(text.text.data(), text.text.data() + text.text.size(), &root, nullptr);
            bytes += text.text.size();
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
    const std::map<std::string, std::size_t (*)(int)> works = {
        {"parse", Parse}, {"empty", Empty}, {"report", Report},
        {"check", Check}, {"load", Load},   {"json", LoadJson}};
    if (const auto found = works.find(work); found != works.end()) {
        std::cout << found->second(times) << "\n";
        return 0;
    }
    for (const std::string& target : MorlTargets()) {
        if (work == target) {
            std::cout << Warm(target, times) << "\n";
            return 0;
        }
    }
    std::cerr << "usage: workload parse|empty|report|check|load|json|TARGET TIMES\n";
    return 2;
}
