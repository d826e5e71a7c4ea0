// SPDX-License-Identifier: MIT
#include "support/graph.h"

#include <gtest/gtest.h>
#include <tuple>

namespace {

using namespace ns_ruke;
using morl_test::MakeCompiler;
using morl_test::MakePass;
using Strings = std::vector<std::string>;

TEST(Request, AccumulatesInAReusedRecord)
{
    const auto compiler = MakeCompiler(
        {{"a", "uniform float u; uniform float v; out float2 o : TEXAUTO;", {}},
         {"b", "uniform float w; out float2 p : TEXAUTO; out float2 o : TEXAUTO;", {}}});
    ShaderOutput output;
    output.semantics = {{"kept", "X"}, {"o", "Y"}};
    PassProperty first = MakePass("hlsl", 0, {"a"});
    PassProperty second = MakePass("hlsl10", 0, {"b"});
    compiler->Compile(first, output);
    EXPECT_EQ(output.semantics.at("o"), "TEXCOORD0");
    compiler->Compile(second, output);
    EXPECT_EQ(output.uniformNames, (Strings{"u", "v", "w"}));
    EXPECT_EQ(output.semantics, (std::unordered_map<std::string, std::string>{
                                    {"kept", "X"}, {"o", "TEXCOORD1"}, {"p", "TEXCOORD0"}}));
    EXPECT_EQ(output.code.find('u'), output.code.find("uniform float w"));
}

TEST(Request, TellsWhichNodeALogLineBelongsTo)
{
    const auto compiler =
        MakeCompiler({{"first", "in float a\n;\n", {}},
                      {"second", "void main() { x = mul(a); #for N : 0 :; #endfor }", {}}});
    std::vector<LogLine> lines;
    LogSink previous = TamberLogSystem::SetSink(
        [&lines](LogLevel level, const std::string&, const std::string& message) {
            lines.emplace_back(level, message);
        });
    PassProperty pass = MakePass("glsl", 0, {"first", "second"});
    pass.macros["N"] = 1'000'001;
    ShaderOutput output;
    compiler->Compile(pass, output);
    TamberLogSystem::SetSink(std::move(previous));

    std::string text;
    for (const LogLine& line : lines) {
        if (!line.IsParseMark()) {
            text += line.node + "|" + std::to_string(line.line) + "|" +
                    std::to_string(line.column) + "|" + line.text + "\n";
        }
    }
    EXPECT_EQ(text,
              "first|3|1|invalid var declare:\n"
              "second|0|0|MorlLinker: too many iterations: N\n"
              "|0|0|Morl Compiler: not enough arguments: mul\n");
}

// A sink may log as well; that is not about the fault it is told of.
TEST(Request, TellsNoPlaceOfOtherMessages)
{
    std::vector<LogLine> lines;
    LogSink previous = TamberLogSystem::SetSink(
        [&lines](LogLevel level, const std::string&, const std::string& message) {
            if (lines.size() < 4 && level == LogLevel::Error) {
                TamberLogSystem::LogInitialize();
                Singleton<TamberLogSystem>::GetSingletonPtr()->LogInfo("Host", "seen");
            }
            lines.emplace_back(level, message);
        });
    MorlProgram program;
    MorlParser().Parse("in float a\n;\n", program);
    TamberLogSystem::SetSink(std::move(previous));
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_EQ(lines[1].text + std::to_string(lines[1].line), "seen0");
    EXPECT_EQ(lines[2].text + std::to_string(lines[2].line), "invalid var declare:3");
}

TEST(Node, ParsesAgainForAnotherTargetOnly)
{
    MorlParser parser;
    MorlNode node;
    EXPECT_TRUE(node.NeedCompile(""));
    node.SetContent("in float a;");
    node.Compile(&parser, "glsl");
    EXPECT_FALSE(node.NeedCompile("glsl"));
    EXPECT_TRUE(node.NeedCompile("GLSL"));
    node.SetContent("in float b;");
    EXPECT_FALSE(node.NeedCompile("glsl"));
    EXPECT_EQ(node.GetProgram()->inputs[0]->name, "a");
}

}  // namespace
