// SPDX-License-Identifier: MIT
// The sample nodes as an editor sees them while they are typed: cut off at every byte, and with
// each token left out or doubled in turn.
#include "support/allocation.h"
#include "support/graph.h"
#include "support/log_capture.h"

#include <gtest/gtest.h>

namespace {

using namespace ns_ruke;

/// The steps of a request are counted in allocations rather than time, so the bound is the same
/// everywhere.
constexpr std::size_t kStepsPerByte = 60;
constexpr std::size_t kFixedSteps = 4000;

/// Checks that a message lies inside its text or just past its end.
void ExpectWellFormed(const LogLine& log, const std::string& source)
{
    if (log.line == 0) {
        EXPECT_TRUE(log.text.find("Morl Compiler: not enough arguments: ") == 0) << log.text;
        return;
    }
    std::size_t start = 0;
    for (int line = 1; line < log.line; ++line) {
        start = source.find('\n', start);
        ASSERT_NE(start, std::string::npos) << log.text << "\n" << source;
        ++start;
    }
    const std::size_t length = std::min(source.find('\n', start), source.size()) - start;
    EXPECT_GE(log.column, 1) << log.text;
    EXPECT_LE(static_cast<std::size_t>(log.column), length + 1) << log.text << "\n" << source;
    EXPECT_FALSE(log.text.empty());
}

/// The whole path of a request for one node, without its files.
void Request(const std::string& source, const std::string& target)
{
    const morl_test::LogCapture log;
    MorlUnit::ReleaseMemory();  // so that every node counts
    morl_test::ResetAllocations();
    MorlParser parser;
    MorlNode node;
    node.SetContent(source);
    node.Compile(&parser, target);
    MorlProgram program;
    program.mainFunction = new MorlFunction;
    program.stage = 1;
    std::vector<MorlNode*> nodes = {&node};
    std::unordered_map<std::string, int> macros = {{"LIGHTS", 2}, {"SUNS", 1},  {"SPECULAR", 1},
                                                   {"FOG", 1},    {"BONES", 2}, {"TAPS", 3}};
    MorlLinker().Link(target, macros, nodes, program);
    std::unordered_map<std::string, std::string> semantics;
    std::unordered_map<std::string, int> registers;
    ShaderOutput output;
    if (target == "hlsl") {
        MorlTranslatorHLSL().WriteProgram(&program, semantics, registers, output);
    } else {
        MorlTranslatorHLSL10().WriteProgram(&program, semantics, registers, output);
    }
    EXPECT_NE(output.code, "");
    EXPECT_LT(morl_test::Allocations().calls, kStepsPerByte * source.size() + kFixedSteps)
        << source;
    for (const LogLine& line : log.lines) {
        if (line.IsError()) {
            ExpectWellFormed(line, source);
        }
    }
}

/// Where the tokens of a source are: words, numbers, and every other character by itself.
std::vector<std::pair<std::size_t, std::size_t>> Tokens(const std::string& source)
{
    std::vector<std::pair<std::size_t, std::size_t>> tokens;
    const auto isWord = [&source](std::size_t i) {
        return std::isalnum(static_cast<unsigned char>(source[i])) != 0 || source[i] == '_' ||
               source[i] == '$' || source[i] == '#';
    };
    for (std::size_t start = 0; start < source.size();) {
        std::size_t end = start + 1;
        while (isWord(start) && end < source.size() && isWord(end)) {
            ++end;
        }
        if (source[start] != ' ' && source[start] != '\n') {
            tokens.emplace_back(start, end - start);
        }
        start = end;
    }
    return tokens;
}

TEST(HalfTyped, SampleNodesNeverDoHarm)
{
    const auto compiler = morl_test::MakeSampleCompiler();
    std::size_t requests = 0;
    for (const std::string& name : compiler->GetNodeNames()) {
        const std::string source = compiler->FindNode(name)->GetContent();
        for (std::size_t length = 0; length <= source.size(); ++length) {
            Request(source.substr(0, length), "hlsl");
            ++requests;
        }
        for (const auto& [start, length] : Tokens(source)) {
            const std::string token = source.substr(start, length);
            Request(source.substr(0, start) + source.substr(start + length), "hlsl10");
            Request(source.substr(0, start) + token + " " + source.substr(start), "hlsl10");
            requests += 2;
        }
    }
    EXPECT_GT(requests, 10'000U);
}

}  // namespace
