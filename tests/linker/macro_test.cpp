// SPDX-License-Identifier: MIT
#include "support/graph.h"
#include "support/log_capture.h"

#include <gtest/gtest.h>
#include <climits>

namespace {

using Strings = std::vector<std::string>;
using Macros = std::unordered_map<std::string, int>;

/// The body that a `main` of these statements has in GLSL, without indentation and line breaks.
std::string Expand(const std::string& statements, const Macros& macros = {})
{
    const std::string code =
        morl_test::CompileSource("void main() {" + statements + "}", "glsl", 0, macros);
    const std::string head = "#version 150\nvoid main(){ \n";
    EXPECT_EQ(code.substr(0, head.size()), head);
    std::string body;
    for (const char c : code.substr(head.size(), code.size() - head.size() - 2)) {
        body += c == '\n' || c == '\t' ? "" : std::string(1, c);
    }
    return body;
}

TEST(Macro, DecidesConditions)
{
    const morl_test::LogCapture log;
    const Macros macros = {{"ZERO", 0}, {"ONE", 1}, {"TWO", 2}, {"MIN", INT_MIN}};
    const std::pair<const char*, bool> rows[] = {
        {"ONE", true},
        {"ZERO", false},
        {"ABSENT", false},
        {"ONE && TWO", true},
        {"ZERO && ONE", false},
        {"ZERO || TWO", true},
        {"7 % 3 == 1", true},
        {"-7 % 3 == -1", false},  // the minus takes the whole comparison: 0 - (7 % 3 == -1)
        {"(0 - 7) % 3 == 0 - 1", true},
        {"7 % 0", false},
        {"MIN % (0 - 1)", false},
        {"7 / 2 == 3.5", true},
        {"1 / 0 > 1000", true},
        {"0 / 0", true},
        {"0 / 0 == 0 / 0", false},
        {"(0 / 0) != (0 / 0)", true},
        {"0 / 0 < 1", false},
        {"(0 / 0) % 7 != 0", true},
        {"2.5 == 5 / 2", true},
        {"12.34 > 12.3", true},
        {"0.05 == 0.5", true},
        {"1.1 == 2", true},
        {"1.10 == 2", true},
        {"3.0 == 3", true},
        {"2. == 2", true},
        {"ONE++", false},
        {"max(ONE, TWO)", false},
        {"ONE.x", false},
        {"-ONE", true},
        {"-ONE + 1", false},
        {"!ONE\n", false},
        {"TWO >= 2 && ONE <= 1 && TWO != ONE", true},
        {"TWO - 1 - 1", false},
        {"2 - 1 * 1 - 1", true},  // the climb makes it 2 - ((1 * 1) - 1)
    };
    for (const auto& [condition, taken] : rows) {
        const std::string body =
            Expand("#if " + std::string(condition) + " y = 1; #else y = 0; #endif", macros);
        EXPECT_EQ(body, taken ? "y = 1;" : "y = 0;") << condition;
    }
}

TEST(Macro, UnrollsLoopsAndExecutesAssignments)
{
    const Macros macros = {{"N", 3}, {"M", 2}, {"NEG", -1}, {"A", 1}, {"N4", 5}};
    const std::pair<const char*, const char*> rows[] = {
        {"#for N : 1 color_N = 0; #endfor", "color_1 = 0;color_2 = 0;"},
        {"#for N : 0 v.N = 0; #endfor", "v.r = 0;v.g = 0;v.b = 0;"},
        {"#for N : 3 v_N = 0; #endfor", ""},
        {"#for NEG : 0 v = 0; #endfor", ""},
        {"#for ABSENT : 0 v = 0; #endfor", ""},
        {"#for N : 0 #for M : 0 c_N_M = 0; #endfor #endfor",
         "c_0_0 = 0;c_0_1 = 0;c_1_0 = 0;c_1_1 = 0;c_2_0 = 0;c_2_1 = 0;"},
        {"#for M : 0 #for M : 0 a_M = 0; #endfor b_M = 0; #endfor",
         "a_0 = 0;a_1 = 0;b_M = 0;a_0 = 0;a_1 = 0;b_M = 0;"},
        {"#for N : 0 #if N == 1 v_N = 0; #endif #endfor", "v_1 = 0;"},
        {"#for N : 2 tex2D_N = tex2D(N, uv_N); // N\n#endfor", "tex2D_2 = texture(b,uv_2);// N"},
        {"$X = 2.9; #if $X == 2 y = 1; #endif", "y = 1;"},
        {"$X = 1; $X += 5; #if $X == 5 y = 1; #endif", "y = 1;"},
        {"$n = 1; $n = $n + 1; y_$n = 1;", "y_2 = 1;"},
        {"$N = 3; #for $N : 0 y = 1; #endfor", ""},
        {"$X = 1 / 0; y_$X = 1;", "y_-2147483648 = 1;"},
        {"$x.y = 1; $x[0] = 1; $x++; y_$x = 1;", "y_$x = 1;"},
        {"float $f = 1; $f = 2; y = $f;", "float $f = 1;y = b;"},
        {"if (c) { #if A y = 1; #else y = 2; #endif }", "if(c ) {y = 1;} "},
        {"for (:; i < 2; i++) { #if A y = 1; #endif z = 1; }", "for(; i<2;++i   ) {z = 1;} "},
        {"#for N4 : 4 x_N4 = x_N; #endfor", "x_4 = x_N;"},
        {"#for M : 0 float l_M[M]; #endfor", "float l_0[r];float l_1[g];"},
    };
    for (const auto& [statements, body] : rows) {
        EXPECT_EQ(Expand(statements, macros), body) << statements;
    }
}

TEST(Macro, UnrollsDeclarationsOneLevel)
{
    const Macros macros = {{"N", 2}, {"A", 1}};
    const std::pair<const char*, const char*> rows[] = {
        {"#for N : 0 uniform float4 light_N; #endfor",
         "uniform vec4 light_0;\nuniform vec4 light_1;\n"},
        {"#for N : 0 uniform float a; #endfor", "uniform float a;\n"},
        {"#if A uniform float a; #else uniform float b; #endif", "uniform float a;\n"},
        {"#if A #for N : 1 uniform float b_N; #endfor #endif", "uniform float b_1;\n"},
        {"uniform float a[N];", "uniform float a[N];\n"},
        // A group inside a loop is copied as a declaration without type and name.
        {"#for N : 0 #if A uniform float a; #endif #endfor", "in  ;\n"},
    };
    for (const auto& [declares, text] : rows) {
        EXPECT_EQ(morl_test::CompileSource(declares, "glsl", 0, macros),
                  "#version 150\n" + std::string(text) + "void main(){ \n}\n")
            << declares;
    }
}

TEST(Macro, KeepsAssignmentsForLaterNodesOfTheRequestOnly)
{
    const auto compiler =
        morl_test::MakeCompiler({{"set", "void main() { $K = 2; }", {}},
                                 {"use", "void main() { #if $K == 2 y_$K = 1; #endif }", {}}});
    const auto code = [&compiler](const Strings& nodes) {
        ns_ruke::PassProperty pass = morl_test::MakePass("glsl", 0, nodes);
        ns_ruke::ShaderOutput output;
        compiler->Compile(pass, output);
        return output.code;
    };
    EXPECT_NE(code({"set", "use"}).find("\ty_2 = 1;\n"), std::string::npos);
    EXPECT_EQ(code({"use"}), "#version 150\nvoid main(){ \n}\n");
}

TEST(Macro, BoundsIterations)
{
    const morl_test::LogCapture log;
    const std::string body = Expand(
        "#for N : 0 :; #endfor #for N : 0 x = 1; #endfor $k = 2; y_$k = 1;", {{"N", INT_MAX}});
    EXPECT_EQ(log.errors, Strings{"MorlLinker: too many iterations: N"});
    EXPECT_EQ(body.size(), 1'000'000 * 2 + std::string("y_2 = 1;").size());
    EXPECT_EQ(body.substr(body.size() - 8), "y_2 = 1;");
}

// Below the bound of iterations, but with bodies that would fill the memory or take minutes.
TEST(Macro, BoundsTheWorkOfAnExpansion)
{
    const auto repeat = [](const std::string& text, int count) {
        std::string repeated;
        for (int i = 0; i < count; ++i) {
            repeated += text;
        }
        return repeated;
    };
    const std::string bodies[] = {
        "if (a) {" + repeat(";", 5000) + "}",
        repeat("$x = 1;", 5000),
        repeat("#if A #endif ", 5000),
        "x = " + std::string(100'000, 'N') + ";",
    };
    for (const std::string& body : bodies) {
        const morl_test::LogCapture log;
        Expand("#for N : 0 " + body + " #endfor", {{"N", 900'000}});
        EXPECT_EQ(log.errors, Strings{"MorlLinker: too much expansion: N"}) << body.substr(0, 20);
    }
    std::string declares;
    for (int i = 0; i < 1000; ++i) {
        declares += "uniform float a" + std::to_string(i) + "_N;";
    }
    const morl_test::LogCapture log;
    morl_test::CompileSource("#for N : 0 " + declares + " #endfor", "glsl", 0, {{"N", 900'000}});
    EXPECT_EQ(log.errors, Strings{"MorlLinker: too much expansion: N"});
}

}  // namespace
