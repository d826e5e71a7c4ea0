// SPDX-License-Identifier: MIT
#include "support/log_capture.h"
#include "support/tree_text.h"

#include <gtest/gtest.h>

namespace {

using namespace ns_ruke;
using morl_test::LogCapture;

std::string Parse(const std::string& source)
{
    MorlParser parser;
    MorlProgram program;
    parser.Parse(source, program);
    return morl_test::TreeText(program);
}

/// The value of the one assignment in a `main`.
std::string ParseValue(const std::string& expression)
{
    MorlParser parser;
    MorlProgram program;
    parser.Parse("void main() { x = " + expression + "; }", program);
    const std::vector<MorlSentence*>& sentences = program.mainFunction->sentences;
    if (sentences.size() != 1 || sentences[0] == nullptr) {
        return "failed";
    }
    return morl_test::TreeText(static_cast<const MorlAssignSentence*>(sentences[0])->value);
}

std::string ParseMain(const std::string& body)
{
    MorlParser parser;
    MorlProgram program;
    parser.Parse("void main() {" + body + "}", program);
    std::string text;
    for (const MorlSentence* sentence : program.mainFunction->sentences) {
        text += (text.empty() ? "" : " ") + morl_test::TreeText(sentence);
    }
    return text;
}

TEST(Tree, ClimbsPrecedenceOneLevel)
{
    const std::pair<const char*, const char*> rows[] = {
        {"a * b + c", "((a * b) + c)"},
        {"a + b * c", "(a + (b * c))"},
        {"a - b - c", "((a - b) - c)"},
        {"a + b * c + d", "(a + ((b * c) + d))"},
        {"a - b * c - d", "(a - ((b * c) - d))"},
        {"z * a[i] + b", "(z * ((a [] i) + b))"},
        {"a < b && c < d", "((a < b) && (c < d))"},
        {"a && b || c", "((a && b) || c)"},
        {"a.b.c", "((a . b) . c)"},
        {"v.xyz * 2", "((v . xyz) * 2)"},
        {"a[1][2]", "((a [] 1) [] 2)"},
        {"-a * b", "(- - (a * b))"},
        {"-a + c", "((- - a) + c)"},
        {"a - -b", "(a - (- - b))"},
        {"- - a", "(- - (- - a))"},
        {"i++", "(i++)"},
        {"a * i--", "(a * (i--))"},
        {"(a + b) * c", "(<(a + b)> * c)"},
        {"a < b + c * d == e", "(a < (b + ((c * d) == e)))"},
        {"max(a, b)", "max:119{a b}"},
        {"float4(0, 0., 007, 1.50)", "float4:4{0 0. 007 1.50}"},
        {"tex2D( s , uv ).x", "(tex2D:113{s uv} . x)"},
        {"float3x3construct( )", "float3x3construct:14{}"},
        {"a % b != c", "((a % b) != c)"},
    };
    for (const auto& [source, tree] : rows) {
        EXPECT_EQ(ParseValue(source), tree) << source;
    }
}

TEST(Tree, ReadsDeclarations)
{
    const std::pair<const char*, const char*> rows[] = {
        {"in float3 position : POSITION;", "in{26 3 position : 28 POSITION}"},
        {"uniform float4 lights[4];", "uniform{25 4 lights[4]}"},
        {"uniform float4 lights[ N + 1 ] ;", "uniform{25 4 lights[(N + 1)]}"},
        {"out float4 p : SV_Position;", "out{27 4 p : 43 SV_Position}"},
        {"in auto i : BLENDINDICES;", "in{26 24 i : 32 BLENDINDICES}"},
        {"uniform samplerCUBE s : SAUTO;", "uniform{25 23 s : 49 SAUTO}"},
        {"// a\n/* b\nc */", "comments{//[ a] /*[ b\nc ]}"},
        {"// a", "comments{//[ a]}"},
        {"/* a", "comments{/*[ a]}"},
        {"/*", "comments{/*[]}"},
        {"float f(float a, int b) { }", "functions{1 f{- 1 a - 5 b}{}}"},
        {"void main() { }", "main0 main{}{}"},
        {"void main() { x = 1; } void main() { x = 2; }", "main0 main{}{assign(- x = 2);}"},
    };
    for (const auto& [source, tree] : rows) {
        EXPECT_EQ(Parse(source), tree) << source;
    }
}

TEST(Tree, ReadsStatements)
{
    const std::pair<const char*, const char*> rows[] = {
        {"float4 c;", "define(4 c -)"},
        {"float4 c[2 * n];", "define(4 c (2 * n))"},
        {"float4 c = 0;", "assign(4 c = 0);"},
        {"o.color = tex2D(s, uv);", "assign(- (o . color) = tex2D:113{s uv});"},
        {"a[i] *= 2;", "assign(- (a [] i) *= 2);"},
        {"a += 1; a -= 1; a /= 1;", "assign(- a += 1); assign(- a -= 1); assign(- a /= 1);"},
        {"$n = $n + 1;", "macro(- $n = ($n + 1));"},
        {"$i++;", "macro(- ($i++) - -);"},
        {"float $f = 1;", "assign(1 $f = 1);"},
        {"i++;", "assign(- (i++) - -);"},
        {"discard;", "special(137)"},
        {":;", "empty"},
        {"// note\n", "//[ note]"},
        {"/* a*b **/ x = 1;", "/*[ a*b *] assign(- x = 1);"},
        {"if (a) b = 1; else b = 2;", "if(a){assign(- b = 1);}{assign(- b = 2);}"},
        {"if (a) { b = 1; } else if (c) { } else { d = 1; }",
         "if(a){assign(- b = 1);}{if(c){}{assign(- d = 1);}}"},
        {"if (a) { }\n// then\nelse if (c) { b = 1; }",
         "if(a){}{} //[ then] elseif(c){assign(- b = 1);}{}"},
        {"for (int i = 0; i < 4; i++) { x = i; }",
         "for(assign(5 i = 0); (i < 4) assign(- (i++) - -)){assign(- x = i);}"},
        {"for (:; i < 4; i += 1) x = i;", "for(empty (i < 4) assign(- i += 1)){assign(- x = i);}"},
        {"#if A > 1 x = 1; #else x = 2; #endif",
         "#if((A > 1)){assign(- x = 1);}{assign(- x = 2);}"},
        {"#for N : 2 x_N = 1; #endfor", "#for(N:2){assign(- x_N = 1);}"},
        {"#for N : 0 #if A x = 1; #endif #endfor", "#for(N:0){#if(A){assign(- x = 1);}{}}"},
        {"x + 1; y = 1;", "- - assign(- y = 1);"},
        {";", "-"},
        {"while x = 1;", "- assign(- x = 1);"},
    };
    for (const auto& [source, tree] : rows) {
        EXPECT_EQ(ParseMain(source), tree) << source;
    }
}

TEST(Tree, GroupsMacroBlocksOfAProgram)
{
    const std::pair<const char*, const char*> rows[] = {
        {"#if A\nin float3 n : NORMAL;\n#else\nin float3 n : TANGENT;\n#endif",
         "in{#if26(A){26 3 n : 29 NORMAL}{26 3 n : 30 TANGENT}}"},
        {"#if A\nuniform float4 c;\n#endif", "uniform{#if26(A){25 4 c}{}}"},
        {"#if A uniform float4 c; float f() { } #else out float4 o; #endif",
         "out{#if26(A){}{27 4 o}} uniform{#if26(A){25 4 c}{}} functions{#if(A){1 f{}{}}{}}"},
        {"#for i : 0\nuniform float4 lights;\n#endfor", "uniform{#for(i:0){25 4 lights}}"},
        {"#for N : 1 #if A in float x; #endif float f() { } #endfor",
         "in{#for(N:1){#if26(A){26 1 x}{}}} functions{#for(N:1){1 f{}{}}}"},
        {"#if A // c\nvoid main() { } #endif in float x;", "in{26 1 x}"},
        {"#if A #else #else in float x; #endif", "in{#if26(A){}{26 1 x}}"},
        {"#if A #if B float f() { } #endif #endif", "functions{#if(A){#if(B){1 f{}{}}{}}{}}"},
    };
    for (const auto& [source, tree] : rows) {
        LogCapture log;
        EXPECT_EQ(Parse(source), tree) << source;
        EXPECT_EQ(log.errors, std::vector<std::string>{}) << source;
    }
}

TEST(Tree, SharesOneConditionBetweenTheGroupsOfABlock)
{
    MorlParser parser;
    MorlProgram program;
    parser.Parse("#if A in float a; out float b; uniform float c; float f() { } #endif", program);
    const auto* inputs = static_cast<MorlMarcoIfDeclare*>(program.inputs.at(0));
    const auto* outputs = static_cast<MorlMarcoIfDeclare*>(program.outputs.at(0));
    const auto* uniforms = static_cast<MorlMarcoIfDeclare*>(program.uniforms.at(0));
    const auto* functions = static_cast<MorlMarcoIfFunction*>(program.functions.at(0));
    EXPECT_NE(inputs->condition, nullptr);
    EXPECT_EQ(inputs->condition, outputs->condition);
    EXPECT_EQ(inputs->condition, uniforms->condition);
    EXPECT_EQ(inputs->condition, functions->condition);
}

/// An expression that says when it is destroyed.
struct Probe : MorlExpression {
    explicit Probe(int& destroyed) : count(destroyed) {}
    ~Probe() override { ++count; }
    int& count;
};

TEST(Tree, OwnsConditionsButForThoseOfFunctionGroups)
{
    int destroyed = 0;
    auto* declares = new MorlMarcoIfDeclare;
    declares->condition = new Probe(destroyed);
    delete declares;
    EXPECT_EQ(destroyed, 1);

    Probe condition(destroyed);
    auto* functions = new MorlMarcoIfFunction;
    functions->condition = &condition;
    delete functions;
    EXPECT_EQ(destroyed, 1);
}

TEST(Tree, CopiesNodesShallowly)
{
    MorlProgram program;
    program.stage = 1;
    program.mainFunction = new MorlFunction;
    program.inputs.push_back(new MorlDeclare);
    // The copy shares its children with the original, so only one of them may be destroyed.
    auto* copy = new MorlProgram(program);
    EXPECT_EQ(copy->inputs, program.inputs);
    EXPECT_EQ(copy->mainFunction, program.mainFunction);
    EXPECT_EQ(copy->stage, 1);
    copy->inputs.clear();
    copy->mainFunction = nullptr;
    delete copy;
}

}  // namespace
