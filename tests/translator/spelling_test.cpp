// SPDX-License-Identifier: MIT
// What each target makes of calls and bindings. (The tables of docs/language.md hold every type,
// plain call and semantic.)
#include "support/graph.h"
#include "support/log_capture.h"

#include <gtest/gtest.h>
#include <array>

namespace {

using namespace ns_ruke;
using morl_test::CompileSource;
using morl_test::LogCapture;

/// The columns. A further target has its golden files and its column in docs/language.md.
const std::array<std::string, 4> kTargets = {"hlsl", "hlsl10", "glsl", "glsles"};

struct Row {
    const char* source;
    std::array<const char*, 4> texts;
};

/// The text between two marks of what a source becomes in a target.
std::string Between(const std::string& source, const std::string& target, const std::string& from,
                    const std::string& to)
{
    const std::string code = CompileSource(source, target, 0);
    const std::size_t start = code.find(from) + from.size();
    return code.substr(start, code.find(to, start) - start);
}

TEST(Spelling, OfTypesThatFollowFromTheSemantic)
{
    const std::array<const char*, 4> concluded = {"float4", "uint4", "vec4", "vec4"};
    for (std::size_t i = 0; i < kTargets.size(); ++i) {
        EXPECT_EQ(Between("uniform auto name : BLENDINDICES;", kTargets[i], "uniform ", " name"),
                  concluded[i]);
        EXPECT_EQ(Between("uniform auto name : NORMAL;", kTargets[i], "uniform ", " name"), "");
    }
}

TEST(Spelling, OfCalls)
{
    const char* const transposed =
        "float4x4(float4(a.x,b.x,c.x,d.x),float4(a.y,b.y,c.y,d.y),float4(a.z,b.z,c.z,d.z),"
        "float4(a.w,b.w,c.w,d.w))";
    const char* const transposed3 =
        "float3x3(float3(a.x,b.x,c.x),float3(a.y,b.y,c.y),float3(a.z,b.z,c.z))";
    const char* const transposedEs =
        "mat4(vec4(a.x,b.x,c.x,d.x),vec4(a.y,b.y,c.y,d.y),vec4(a.z,b.z,c.z,d.z),"
        "vec4(a.w,b.w,c.w,d.w))";
    const Row rows[] = {
        {"float(a)", {"float(a)", "float(a)", "float(a)", "float(a)"}},
        {"float2(a,b)", {"float2(a,b)", "float2(a,b)", "vec2(a,b)", "vec2(a,b)"}},
        {"float3(a,b)", {"float3(a,b)", "float3(a,b)", "vec3(a,b)", "vec3(a,b)"}},
        {"float4(a,b)", {"float4(a,b)", "float4(a,b)", "vec4(a,b)", "vec4(a,b)"}},
        {"int3(a)", {"int3(a)", "int3(a)", "int3(a)", "int3(a)"}},
        {"float2x4(a)", {"float2x4(a)", "float2x4(a)", "mat2x4(a)", "(a)"}},
        {"float3x3(a)", {"float3x3(a)", "float3x3(a)", "mat3(a)", "mat3(a)"}},
        {"float3x4(a)", {"float3x4(a)", "float3x4(a)", "mat3x4(a)", "(a)"}},
        {"float4x3(a)", {"float4x3(a)", "float4x3(a)", "mat4x3(a)", "(a)"}},
        {"float4x4(a)", {"float4x4(a)", "float4x4(a)", "mat4(a)", "mat4(a)"}},
        {"float3x3construct(a,b,c,d)",
         {transposed3, transposed3, "float3x3(a,b,c)", "mat3(a,b,c)"}},
        {"float4x4construct(a,b,c,d)",
         {transposed, transposed, "float4x4(a,b,c,d)", "mat4(a,b,c,d)"}},
        {"float4x4tranpose(a,b,c,d)",
         {"float4x4(a,b,c,d);", "float4x4(a,b,c,d);", transposed, transposedEs}},
        {"tex1D(s,u)", {"tex1D(s,u)", "s.Sample(sampler_s,u)", "texture(s,u)", "texture1D(s,u)"}},
        {"tex2D(s,u)", {"tex2D(s,u)", "s.Sample(sampler_s,u)", "texture(s,u)", "texture2D(s,u)"}},
        {"tex2DArray(s,u)",
         {"tex2DArray(s,u)", "s.Sample(sampler_s,u)", "tex2DArray(s,u)", "tex2DArray(s,u)"}},
        {"tex3D(s,u)", {"tex3D(s,u)", "s.Sample(sampler_s,u)", "texture(s,u)", "texture3D(s,u)"}},
        {"tex2Dproj(s,u,v)",
         {"tex2Dproj(s,u,v)", "s.Sample(sampler_s,u)", "texture2DProj(s,u,v)",
          "texture2DProj(s,u,v)"}},
        {"texCUBE(s,u)",
         {"texCUBE(s,u)", "s.Sample(sampler_s,u)", "texture(s,u)", "textureCube(s,u)"}},
        {"tex2D(shadowMap1,u,v)",
         {"tex2D(shadowMap1,u,v)", "shadowMap1.SampleCmpLevelZero(sampler_shadowMap1,u,v)",
          "texture(shadowMap1,u,v)", "texture2D(shadowMap1,u,v)"}},
        {"max(a,min(b,c))",
         {"max(a,min(b,c))", "max(a,min(b,c))", "max(a,min(b,c))", "max(a,min(b,c))"}},
        {"saturate(a+b)",
         {"saturate(a+b)", "saturate(a+b)", "clamp(a+b,0.0,1.0)", "clamp(a+b,0.0,1.0)"}},
        {"mul(a+b,m)", {"mul(a+b,m)", "mul(a+b,m)", "a+b*m", "a+b*m"}},
        {"lerp(a,b,t)", {"lerp(a,b,t)", "lerp(a,b,t)", "mix(a,b,t)", "mix(a,b,t)"}},
        {"clamp(a,b,c)", {"clamp(a,b,c)", "clamp(a,b,c)", "clamp(a,b,c)", "clamp(a,b,c)"}},
        {"length(a)", {"length(a)", "length(a)", "length(a)", "length(a)"}},
        {"normalize(a)", {"normalize(a)", "normalize(a)", "normalize(a)", "normalize(a)"}},
        {"reflect(a,b)", {"reflect(a,b)", "reflect(a,b)", "reflect(a,b)", "reflect(a,b)"}},
        {"dot(a,cross(b,c))",
         {"dot(a,cross(b,c))", "dot(a,cross(b,c))", "dot(a,cross(b,c))", "dot(a,cross(b,c))"}},
        {"pow(sin(a),cos(b))",
         {"pow(sin(a),cos(b))", "pow(sin(a),cos(b))", "pow(sin(a),cos(b))", "pow(sin(a),cos(b))"}},
        {"tan(cot(abs(a)))",
         {"tan(cot(abs(a)))", "tan(cot(abs(a)))", "tan(cot(abs(a)))", "tan(cot(abs(a)))"}},
    };
    for (const Row& row : rows) {
        for (std::size_t i = 0; i < kTargets.size(); ++i) {
            const LogCapture log;
            EXPECT_EQ(Between("void main() { y = " + std::string(row.source) + "; }", kTargets[i],
                              "\ty = ", ";\n"),
                      row.texts[i])
                << row.source << " in " << kTargets[i];
            EXPECT_EQ(log.errors, std::vector<std::string>{}) << row.source;
        }
    }
}

TEST(Spelling, ReportsMissingArguments)
{
    const Row rows[] = {
        {"mul(a)", {"mul(a)", "mul(a)", "a*", "a*"}},
        {"saturate()", {"saturate()", "saturate()", "clamp(,0.0,1.0)", "clamp(,0.0,1.0)"}},
        {"float4x4tranpose(a,b)",
         {"float4x4(a,b,,);", "float4x4(a,b,,);",
          "float4x4(float4(a.x,b.x,.x,.x),float4(a.y,b.y,.y,.y),float4(a.z,b.z,.z,.z),"
          "float4(a.w,b.w,.w,.w))",
          "mat4(vec4(a.x,b.x,.x,.x),vec4(a.y,b.y,.y,.y),vec4(a.z,b.z,.z,.z),"
          "vec4(a.w,b.w,.w,.w))"}},
        {"tex2D(s)", {"tex2D(s)", "s.Sample(sampler_s,)", "texture(s)", "texture2D(s)"}},
        {"tex2D(shadowMap,u)",
         {"tex2D(shadowMap,u)", "shadowMap.SampleCmpLevelZero(sampler_shadowMap,u,)",
          "texture(shadowMap,u)", "texture2D(shadowMap,u)"}},
        {"tex2D()", {"tex2D()", ".Sample(sampler_,)", "texture()", "texture2D()"}},
    };
    for (const Row& row : rows) {
        const std::string source(row.source);
        const std::string message =
            "Morl Compiler: not enough arguments: " + source.substr(0, source.find('('));
        for (std::size_t i = 0; i < kTargets.size(); ++i) {
            const LogCapture log;
            EXPECT_EQ(Between("void main() { y = " + source + "; }", kTargets[i], "\ty = ", ";\n"),
                      row.texts[i]);
            const bool plain = std::string(row.texts[i]) == source ||
                               std::string(row.texts[i]).substr(0, 7) == "texture";
            EXPECT_EQ(log.errors,
                      plain ? std::vector<std::string>{} : std::vector<std::string>{message})
                << source << " in " << kTargets[i];
        }
    }
}

TEST(Spelling, BoundsRepeatedArguments)
{
    std::string expression = "a";
    for (int i = 0; i < 60; ++i) {
        expression = "float3x3construct(" + expression + ",b,c)";
    }
    const LogCapture log;
    const std::string code = CompileSource("void main() { y = " + expression + "; }", "hlsl", 0);
    EXPECT_LT(code.size(), 16U * 1024 * 1024);
    EXPECT_EQ(log.errors,
              std::vector<std::string>{"Morl Compiler: expression too long: float3x3construct"});
}

TEST(Spelling, BoundsNestedRepetitionOnly)
{
    // Long arguments that are written once, and many calls, are no reason to give anything up.
    std::string statements;
    for (int i = 0; i < 2000; ++i) {
        statements += "y = tex2D(s, tex2D(t, " + std::string(3000, 'u') + "));";
    }
    const LogCapture log;
    const std::string code = CompileSource("void main() {" + statements + "}", "hlsl10", 0);
    EXPECT_GT(code.size(), 2000U * 3000U);
    EXPECT_EQ(log.errors, std::vector<std::string>{});
}

// The GLSL back ends write no bindings; their operation serves other tools.
TEST(Spelling, OfSemanticsForToolsThatAskGlsl)
{
    MorlTranslatorGLSL glsl;
    MorlTranslatorGLSLES es;
    MorlDeclare declare;
    MorlRegister binding;
    const auto text = [&](ENUM_TOKEN token) {
        binding.registerToken = token;
        binding.name = "(name)";
        EXPECT_EQ(glsl.WriteRegister(&declare, &binding), es.WriteRegister(&declare, &binding));
        return glsl.WriteRegister(&declare, &binding);
    };
    EXPECT_EQ(text(TOKEN_SV_POSITION), " : POSITION");
    EXPECT_EQ(text(TOKEN_COLOR2), " : COLOR2");
    EXPECT_EQ(text(TOKEN_BINORMAL), " : ");
    EXPECT_EQ(text(TOKEN_TEXAUTO), " : ");
    EXPECT_EQ(text(TOKEN_SAUTO), " : register(s0)");
    EXPECT_EQ(text(TOKEN_IDENTIFIER), " : (name)");
    EXPECT_EQ(glsl.WriteRegister(&declare, nullptr), "");
}

}  // namespace
