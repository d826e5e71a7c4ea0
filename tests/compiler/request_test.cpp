// SPDX-License-Identifier: MIT
#include "support/graph.h"
#include "support/log_capture.h"

#include <gtest/gtest.h>
#include <atomic>
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

// What a host allows ends a request, which then changes nothing. Work outside of loops is free.
TEST(Request, EndsAtTheLimitsOfItsHost)
{
    const auto compiler =
        MakeCompiler({{"loop", "void main() { #for N : 0 x_N = 1; #endfor }", {}},
                      {"block", "void main() { if(a) { #for N : 0 x = 1; #endfor } }", {}},
                      {"flat", "void main() { x = 1; x = 2; x = 3; x = 4; }", {}}});
    std::atomic<std::int32_t> yes{1};
    std::atomic<std::int32_t> no{0};
    const struct {
        const char* node;
        RequestLimits limits;
        RequestEnd end;
        const char* fault;
    } rows[] = {
        {"loop", {2000, 2000, &no}, RequestEnd::Written, ""},
        {"flat", {1, 0, nullptr}, RequestEnd::Written, ""},
        {"loop",
         {100, 0, nullptr},
         RequestEnd::TooMuchWork,
         "MorlLinker: the host's limit of work is reached: N"},
        {"block",
         {0, 90, nullptr},
         RequestEnd::TooMuchText,
         "Morl Compiler: the host's limit of text is reached: 90"},
        {"flat",
         {0, 40, nullptr},
         RequestEnd::TooMuchText,
         "Morl Compiler: the host's limit of text is reached: 40"},
        {"flat", {0, 0, &yes}, RequestEnd::Cancelled, ""},
    };
    const morl_test::LogCapture log;
    for (const auto& row : rows) {
        for (const ReportParts parts : {ReportParts::Faults, ReportParts::All}) {
            PassProperty pass = MakePass("glsl", 1, {row.node});
            pass.macros = {{"N", 50}};
            pass.limits = row.limits;
            ShaderOutput output;
            PassReport report;
            const bool isWritten = compiler->CompileReported(pass, output, report, parts);
            EXPECT_EQ(report.end, row.end) << row.node;
            EXPECT_EQ(isWritten, row.end == RequestEnd::Written);
            EXPECT_EQ(output.code.empty(), !isWritten) << output.code;
            EXPECT_TRUE(report.lines.empty() || isWritten);
            EXPECT_EQ(report.faults.empty() ? "" : report.faults.back().text, row.fault);
        }
    }
}

// The flag is asked while loops run, not only between the steps.
TEST(Request, IsCancelledInsideOfLoops)
{
    const auto compiler = MakeCompiler(
        {{"endless", "void main() { #for N : 0 #for M : 0 $k = N; #endfor #endfor }", {}}});
    std::atomic<std::int32_t> cancel{0};
    PassProperty pass = MakePass("glsl", 1, {"endless"});
    pass.macros = {{"N", 1000}, {"M", 1000}};
    pass.limits.cancel = &cancel;
    ShaderOutput output;
    PassReport report;
    // The loops run after the only node was parsed.
    const LogSink previous = TamberLogSystem::SetSink(
        [&cancel](LogLevel, const std::string& /*category*/, const std::string& message) {
            cancel = message == messages::kCompilerEnd ? 1 : 0;
        });
    compiler->CompileReported(pass, output, report);
    TamberLogSystem::SetSink(previous);
    EXPECT_EQ(report.end, RequestEnd::Cancelled);
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
        EXPECT_EQ(line.compiler, compiler.get());
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
    EXPECT_EQ(lines[0].compiler, nullptr);
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
