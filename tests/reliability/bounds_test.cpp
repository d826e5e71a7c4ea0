// SPDX-License-Identifier: MIT
// Sources that would take endless time or memory without the bounds.
#include "support/allocation.h"
#include "support/graph.h"
#include "support/log_capture.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <climits>
#include <ctime>

namespace {

using morl_test::CompileSource;
using morl_test::LogCapture;
using Strings = std::vector<std::string>;

std::string Repeat(const std::string& text, int count)
{
    std::string repeated;
    for (int i = 0; i < count; ++i) {
        repeated += text;
    }
    return repeated;
}

TEST(Bounds, OfIterations)
{
    const LogCapture log;
    const std::string code = CompileSource(
        "void main() { #for N : 0 :; #endfor #for N : 0 x = 1; #endfor $k = 2; y_$k = 1; }", "glsl",
        0, {{"N", INT_MAX}});
    EXPECT_EQ(log.errors, Strings{"MorlLinker: too many iterations: N"});
    const std::string head = "#version 150\nvoid main(){ \n";
    const std::string tail = "\ty_2 = 1;\n}\n";
    EXPECT_EQ(code.size(), head.size() + 1'000'000 * 4 + tail.size());
    EXPECT_EQ(code.substr(code.size() - tail.size()), tail);
}

// Loops below the bound on iterations, but with bodies that would exhaust memory or take minutes.
TEST(Bounds, OfTheWorkOfAnExpansion)
{
    std::string declares;
    for (int i = 0; i < 1000; ++i) {
        declares += "uniform float a" + std::to_string(i) + "_N;";
    }
    const std::string sources[] = {
        "void main() { #for N : 0 if (a) {" + Repeat(";", 5000) + "} #endfor }",
        "void main() { #for N : 0 " + Repeat("$x = 1;", 5000) + " #endfor }",
        "void main() { #for N : 0 " + Repeat("#if A #endif ", 5000) + " #endfor }",
        "void main() { #for N : 0 x = " + std::string(100'000, 'N') + "; #endfor }",
        "void main() { #for N : 0 #for M : 0 :; #endfor " + Repeat("$x = 1;", 5000) + " #endfor }",
        "#for N : 0 " + declares + " #endfor",
    };
    for (const std::string& source : sources) {
        const LogCapture log;
        CompileSource(source, "glsl", 0, {{"N", 900'000}, {"M", 1}});
        EXPECT_EQ(log.errors, Strings{"MorlLinker: too much expansion: N"}) << source.substr(0, 40);
    }
}

/// Sources of about this size that expand as much as they can.
std::vector<std::string> WorstSources(int size)
{
    struct Family {
        const char* start;
        const char* repeated;
        const char* middle;
        const char* closing;
        const char* end;
    };
    const Family families[] = {
        {"void main() { #for N : 0 /*", "\n", "", "", "*/ #endfor }"},
        {"void main() { #for N : 0 /*", "x", "", "", "*/ #endfor }"},
        {"void main() { #for N : 0 ", "//\n", "", "", "#endfor }"},
        {"void main() { #for N : 0 ", "if(a){", "b=1;", "}", " #endfor }"},
        {"void main() { #for N : 0 ", "if(a){b=1;}else{", "b=1;", "}", " #endfor }"},
        {"void main() { #for N : 0 if(a){b=1;}", "else if(a){b=1;}", "", "", "#endfor }"},
        {"void main() { #for N : 0 ", "for(i=0;i<1;i++){", "b=1;", "}", " #endfor }"},
        {"void main() { #for N : 0 ", "for(i=0;i<1;i++){b=1;}", "", "", "#endfor }"},
        {"void main() { #for N : 0 ", "if(a){b=1;}", "", "", "#endfor }"},
        {"void main() { #for N : 0 ", "int a;", "", "", " #endfor }"},
        {"void main() { #for N : 0 ", "float a[4];", "", "", " #endfor }"},
        {"void main() { #for N : 0 ", "a=b;", "", "", " #endfor }"},
        {"void main() { #for N : 0 ", "a=max(b,c);", "", "", " #endfor }"},
        {"void main() { #for N : 0 a=", "max(b,", "c", ")", "; #endfor }"},
        {"void main() { #for N : 0 ", "a=tex2D(s,u);", "", "", " #endfor }"},
        {"void main() { #for N : 0 a=", "tex2D(s,", "u", ")", "; #endfor }"},
        {"void main() { #for N : 0 ", "a=tex2Dproj(shadowMap,u);", "", "", " #endfor }"},
        {"void main() { #for N : 0 ", "a=mul(b,c);", "", "", " #endfor }"},
        {"void main() { #for N : 0 a=", "mul(b,", "c", ")", "; #endfor }"},
        {"void main() { #for N : 0 a=", "saturate(", "c", ")", "; #endfor }"},
        {"void main() { #for N : 0 a=b", "+c", "", "", "; #endfor }"},
        {"void main() { #for N : 0 a=", "(", "b", ")", "; #endfor }"},
        {"void main() { #for N : 0 a=b", "[c", "", "]", "; #endfor }"},
        {"void main() { #for N : 0 a=b", ".x", "", "", "; #endfor }"},
        {"void main() { #for N : 0 a=", "-", "b", "", "; #endfor }"},
        {"void main() { #for N : 0 a=", "float4x4construct(", "b", ",b,c,d)", "; #endfor }"},
        {"void main() { #for N : 0 a=", "float4x4tranpose(", "b", ",b,c,d)", "; #endfor }"},
        {"void main() { #for N : 0 ", "a=float3x3construct(b,c,d);", "", "", " #endfor }"},
        {"void main() { a=", "float4x4construct(", "b", ",b,c,d)", "; }"},
        {"#for N : 0 ", "uniform float a_N;", "", "", " #endfor"},
        {"#for N : 0 ", "uniform sampler2D a_N : SAUTO;", "", "", " #endfor"},
        {"#for N : 0 ", "uniform float a_N[N];", "", "", " #endfor"},
        {"#for N : 0 ", "in float a_N : TEXAUTO;", "", "", " #endfor"},
        {"#for N : 0 ", "out float a_N : TEXAUTO;", "", "", " #endfor"},
        {"#for N : 0 ", "in float a_N : NORMAL;", "", "", " #endfor"},
        {"#for N : 0 ", "uniform float a;", "", "", " #endfor"},
        {"void main() { #for N : 0 ", "NNNNNNNNNNNNNNNNNNNNNNNNNNNN=1;", "", "", " #endfor }"},
        {"void main() { #for N : 0 ", "N", "", "", "=1; #endfor }"},
        {"void main() { #for N : 0 ", "a_N=b_N;", "", "", " #endfor }"},
        {"void main() { #for N : 0 ", "colour_N=color_N;", "", "", " #endfor }"},
        {"void main() { #for N : 0 ", "discard;", "", "", " #endfor }"},
        {"void main() { #for N : 0 ", ":;", "", "", " #endfor }"},
        {"void main() { ", "#for N : 0 a=1; #endfor ", "", "", " }"},
        {"void main() { #for N : 0 #for M : 0 #for N : 0 ", ":;", "", "",
         " #endfor #endfor #endfor }"},
        {"void main() { ", "#for N : 0 ", "a=1;", "#endfor ", "}"},
        {"void main() { #for N : 0 ", "$x = 1;", "", "", " #endfor }"},
        {"void main() { #for N : 0 ", "#if A #endif ", "", "", " #endfor }"},
        {"void main() { #for N : 0 ", "#if N ", "a=1;", " #endif ", " #endfor }"},
        {"void main() { #for N : 0 #if A", "+A", "", "", " a=1; #endif #endfor }"},
        {"#for N : 0 ", "void f() { a=1; }", "", "", " #endfor"},
        {"void main() { #for N : 0 if(a) {", "b=c;", "", "", "} #endfor }"},
        {"void main() { #for N : 0 ", "a=1.2345678;", "", "", " #endfor }"},
        {"void main() { #for N : 0 ", "a.xyz+=b.xyz*c;", "", "", " #endfor }"},
        {"void main() { ", "a=b;", "", "", "}"},
        {"", "uniform float a;", "", "", ""},
    };
    constexpr int kDeepest = 150;
    std::vector<std::string> sources;
    for (const Family& family : families) {
        const std::string closing = family.closing;
        const int unit = static_cast<int>(std::string(family.repeated).size() + closing.size());
        const int count = std::min(size / unit, closing.empty() ? size : kDeepest);
        sources.push_back(family.start + Repeat(family.repeated, count) + family.middle +
                          Repeat(closing, count) + family.end);
    }
    return sources;
}

// What is written counts as well as what is copied: lines, indentation, and the report's share.
// Sanitizers change both figures, so their builds only try a few iterations.
TEST(Bounds, OfMemoryAndTime)
{
#ifdef MORL_SANITIZED
    constexpr int kIterations = 2000;
#else
    constexpr int kIterations = 1'000'000;
#endif
    constexpr std::size_t kMostBytes = std::size_t{400} << 20U;
    constexpr double kMostSeconds = 6;  // of processor time; three to four times what it takes
    for (const std::string& source : WorstSources(2000)) {
        const LogCapture log;
        const auto compiler = morl_test::MakeCompiler({{"node", source, {}}});
        ns_ruke::PassProperty pass = morl_test::MakePass("hlsl10", 0, {"node"});
        pass.macros = {{"N", kIterations}, {"M", kIterations}, {"A", 1}};
        ns_ruke::ShaderOutput output;
        ns_ruke::PassReport report;
        std::vector<ns_ruke::ReportWarning> warnings;
        morl_test::ResetAllocations();
        const std::clock_t start = std::clock();
        compiler->CompileReported(pass, output, report, warnings);
        const double seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
        EXPECT_LT(morl_test::Allocations().peak, kMostBytes) << source.substr(0, 60);
        EXPECT_LT(seconds, kMostSeconds) << source.substr(0, 60);
    }
}

// With an editor's limit the worst ends within a moment.
TEST(Bounds, OfAHostThatEdits)
{
    for (const std::string& source : WorstSources(2000)) {
        const LogCapture log;
        const auto compiler = morl_test::MakeCompiler({{"node", source, {}}});
        ns_ruke::PassProperty pass = morl_test::MakePass("hlsl10", 0, {"node"});
        pass.macros = {{"N", 1'000'000}, {"M", 1'000'000}, {"A", 1}};
        pass.limits.loopWork = 200'000;
        ns_ruke::ShaderOutput output;
        ns_ruke::PassReport report;
        std::vector<ns_ruke::ReportWarning> warnings;
        morl_test::ResetAllocations();
        compiler->CompileReported(pass, output, report, warnings);
        EXPECT_LT(morl_test::Allocations().peak, std::size_t{50} << 20U) << source.substr(0, 60);
    }
}

TEST(Bounds, OfRepeatedArguments)
{
    std::string expression = "a";
    for (int i = 0; i < 60; ++i) {
        expression = "float3x3construct(" + expression + ",b,c)";
    }
    const LogCapture log;
    const std::string code = CompileSource("void main() { y = " + expression + "; }", "hlsl", 0);
    EXPECT_LT(code.size(), 16U * 1024 * 1024);
    EXPECT_EQ(log.errors, Strings{"Morl Compiler: expression too long: float3x3construct"});
}

TEST(Bounds, DoNotCountWhatIsWrittenOnce)
{
    // Long arguments that are written once, and many calls, must not hit the bound.
    const std::string call = "y = saturate(saturate(mul(tex2D(s, tex2D(";
    const std::string source =
        "void main() {" + Repeat(call + std::string(3000, 't') + ", u)), m)));", 2000) + "}";
    for (const std::string& target : ns_ruke::MorlTargets()) {
        const LogCapture log;
        EXPECT_GT(CompileSource(source, target, 0).size(), 2000U * 3000U) << target;
        EXPECT_EQ(log.errors, Strings{}) << target;
    }
}

}  // namespace
