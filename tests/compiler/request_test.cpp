// SPDX-License-Identifier: MIT
#include "support/graph.h"
#include "support/log_capture.h"

#include <gtest/gtest.h>

namespace {

using namespace ns_ruke;
using morl_test::LogCapture;
using morl_test::MakeCompiler;
using morl_test::MakePass;
using Strings = std::vector<std::string>;

constexpr char kEmptyGlsl[] = "#version 150\nvoid main(){ \n}\n";

TEST(Request, WritesAnEmptyMainWithoutNodes)
{
    const auto compiler = MakeCompiler({});
    const LogCapture log;
    PassProperty pass = MakePass("glsl", 0, {});
    ShaderOutput output;
    compiler->Compile(pass, output);
    EXPECT_EQ(output.code, kEmptyGlsl);
    EXPECT_EQ(log.categories.size(), 0U);
}

TEST(Request, ParsesANodeOncePerChangeOfTarget)
{
    const auto compiler = MakeCompiler({{"a", "in float a;", {}}, {"b", "in float b;", {}}});
    const auto parses = [&compiler](const std::string& target, const Strings& nodes) {
        const LogCapture log;
        PassProperty pass = MakePass(target, 0, nodes);
        ShaderOutput output;
        compiler->Compile(pass, output);
        return log.infos.size() / 2;
    };
    EXPECT_EQ(parses("hlsl", {"a", "a"}), 1U);
    EXPECT_EQ(parses("hlsl", {"a", "b"}), 1U);
    EXPECT_EQ(parses("hlsl", {"b", "a"}), 0U);
    EXPECT_EQ(parses("glsl", {"a", "b"}), 2U);
    EXPECT_EQ(parses("hlsl", {"a"}), 1U);
    EXPECT_EQ(parses("hlsl", {"b"}), 1U);
}

TEST(Request, RefusesUnknownNamesBeforeAnythingElse)
{
    const auto compiler = MakeCompiler({{"a", "in float a;", {}}});
    const std::pair<PassProperty, Strings> rows[] = {
        {MakePass("GLSL", 0, {"a"}), {"Morl Compiler: unknown target: GLSL"}},
        {MakePass("glsl ", 0, {}), {"Morl Compiler: unknown target: glsl "}},
        {MakePass("glsl", 0, {"y", "a", "x%s", "y"}),
         {"Morl Compiler: unknown node: y", "Morl Compiler: unknown node: x%s"}},
        {MakePass("", 0, {"x"}),
         {"Morl Compiler: unknown target: ", "Morl Compiler: unknown node: x"}},
    };
    for (auto [pass, errors] : rows) {
        const LogCapture log;
        ShaderOutput output;
        output.code = "before";
        compiler->Compile(pass, output);
        EXPECT_EQ(log.errors, errors);
        EXPECT_EQ(log.infos, Strings{});
        EXPECT_EQ(output.code, "before");
        EXPECT_EQ(compiler->GetNodeNames(), Strings{"a"});
    }
}

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

TEST(Request, LeavesNoTraceInTheNext)
{
    const std::string source =
        "uniform sampler2D s : SAUTO; in float2 uv : TEXCOORD0; out float2 o : TEXAUTO;"
        "float f() { } #if A float g() { } #endif void main() { $K = 1; o = uv; x_$K = tex2D(s, "
        "uv); }";
    const auto alone = [&source](const std::string& target) {
        return morl_test::CompileSource(source, target, 0);
    };
    const auto compiler = MakeCompiler({{"node", source, {}}});
    for (int round = 0; round < 2; ++round) {
        for (const std::string& target : MorlTargets()) {
            PassProperty pass = MakePass(target, 0, {"node"});
            ShaderOutput output;
            compiler->Compile(pass, output);
            EXPECT_EQ(output.code, alone(target)) << target;
        }
    }
}

TEST(Request, ListsNodesInTheOrderOfFirstAppearance)
{
    const auto compiler = MakeCompiler({{"a", "uniform float a;", {}},
                                        {"b", "uniform float b;", {"a"}},
                                        {"c", "uniform float c;", {}}});
    PassProperty pass = MakePass("glsl", 0, {"c", "b", "c", "a"});
    ShaderOutput output;
    compiler->Compile(pass, output);
    EXPECT_EQ(output.uniformNames, (Strings{"c", "a", "b"}));
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

}  // namespace
