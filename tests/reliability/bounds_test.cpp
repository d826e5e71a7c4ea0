// SPDX-License-Identifier: MIT
// Sources that would take endless time or memory without the bounds.
#include "support/graph.h"
#include "support/log_capture.h"

#include <gtest/gtest.h>
#include <climits>

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
