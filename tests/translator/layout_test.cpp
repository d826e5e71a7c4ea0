// SPDX-License-Identifier: MIT
// The layout of whole shaders, byte for byte.
#include "support/graph.h"
#include "support/log_capture.h"

#include <gtest/gtest.h>

namespace {

using namespace ns_ruke;
using morl_test::CompileSource;
using morl_test::LogCapture;

constexpr char kVertex[] =
    "uniform float4x4 WVP; in float4 Pos : POSITION; in float2 UV : TEXCOORD0;"
    "out float4 oProjPos : SV_Position; out float2 OutUV : TEXAUTO;"
    "void main() { oProjPos = mul(Pos, WVP); OutUV = UV; }";

TEST(Layout, WritesVertexShaders)
{
    const std::string hlslHead =
        "uniform float4x4 WVP;\n"
        "struct VS_INPUT{\n"
        "\tfloat4 Pos : POSITION;\n"
        "\tfloat2 UV : TEXCOORD0;\n"
        "};\n"
        "struct VS_OUTPUT{\n";
    const std::string hlslBody =
        "\tfloat2 OutUV : TEXCOORD0;\n"
        "};\n"
        "VS_OUTPUT main(VS_INPUT input){ \n"
        "\tfloat4 iPos = input.Pos;\n"
        "\tfloat2 iUV = input.UV;\n"
        "\tVS_OUTPUT output;\n"
        "\toutput.oProjPos = mul(iPos,WVP);\n"
        "\toutput.OutUV = iUV;\n"
        "\treturn output;\n"
        "}\n";
    EXPECT_EQ(CompileSource(kVertex, "hlsl", 0),
              hlslHead + "\tfloat4 oProjPos : POSITION;\n" + hlslBody);
    EXPECT_EQ(CompileSource(kVertex, "hlsl10", 0),
              hlslHead + "\tfloat4 oProjPos : SV_Position;\n" + hlslBody);
    EXPECT_EQ(CompileSource(kVertex, "glsl", 0),
              "#version 150\n"
              "uniform mat4 WVP;\n"
              "in vec4 Pos;\n"
              "in vec2 UV;\n"
              "out vec2 OutUV;\n"
              "void main(){ \n"
              "\tvec4 iPos = Pos;\n"
              "\tvec2 iUV = UV;\n"
              "\tvec4 retoProjPos = vec4(0.0);\n"
              "\tvec2 retOutUV = vec2(0.0);\n"
              "\tretoProjPos = iPos*WVP;\n"
              "\tretOutUV = iUV;\n"
              "\tgl_Position = retoProjPos; \n"
              "\tOutUV = retOutUV; \n"
              "}\n");
    EXPECT_EQ(CompileSource(kVertex, "glsles", 0),
              "#version 100\n"
              "precision highp int; \n"
              "precision highp float; \n"
              "uniform mat4 WVP;\n"
              "attribute vec4 Pos;\n"
              "attribute vec2 UV;\n"
              "varying vec2 OutUV;\n"
              "void main(){ \n"
              "\tvec4 iPos = Pos;\n"
              "\tvec2 iUV = UV;\n"
              "\tvec4 retoProjPos = vec4(1.0);\n"
              "\tvec2 retOutUV = vec2(1.0);\n"
              "\tretoProjPos = iPos*WVP;\n"
              "\tretOutUV = iUV;\n"
              "\tgl_Position = retoProjPos; \n"
              "\tOutUV = retOutUV; \n"
              "}\n");
}

TEST(Layout, WritesFragmentShaders)
{
    const std::string source =
        "uniform sampler2D DiffuseMap : SAUTO; uniform sampler2D shadowMapSun : SAUTO;"
        "in float2 late : TEXAUTO; in float2 early : TEXAUTO; in float4 oProjPos : SV_Position;"
        "in float3 n : NORMAL; out float4 Color : COLOR0; out float4 More : COLOR1;"
        "void main() { Color = tex2D(DiffuseMap, early); More = tex2D(shadowMapSun, late, n.z); }";
    const auto compiler = morl_test::MakeCompiler({{"node", source, {}}});
    const auto code = [&compiler](const std::string& target) {
        PassProperty pass = morl_test::MakePass(target, 1, {"node"});
        pass.semantics = {{"late", "TEXCOORD10"}, {"early", "TEXCOORD9"}};
        pass.samplerRegisters = {{"shadowMapSun", 1}};
        ShaderOutput output;
        compiler->Compile(pass, output);
        EXPECT_TRUE(output.semantics.empty());
        return output.code;
    };
    EXPECT_EQ(code("hlsl"),
              "uniform sampler2D DiffuseMap : register(s0);\n"
              "uniform sampler2D shadowMapSun : register(s1);\n"
              "struct FS_INPUT{\n"
              "\tfloat2 late : TEXCOORD10;\n"
              "\tfloat2 early : TEXCOORD9;\n"
              "\tfloat4 oProjPos : POSITION;\n"
              "\tfloat3 n : NORMAL;\n"
              "};\n"
              "struct FS_OUTPUT{\n"
              "\tfloat4 Color : COLOR0;\n"
              "\tfloat4 More : COLOR1;\n"
              "};\n"
              "FS_OUTPUT main(FS_INPUT input){ \n"
              "\tfloat2 ilate = input.late;\n"
              "\tfloat2 iearly = input.early;\n"
              "\tfloat4 ioProjPos = input.oProjPos;\n"
              "\tfloat3 in = input.n;\n"
              "\tFS_OUTPUT output;\n"
              "\toutput.Color = tex2D(DiffuseMap,iearly);\n"
              "\toutput.More = tex2D(shadowMapSun,ilate,in.z);\n"
              "\treturn output;\n"
              "}\n");
    EXPECT_EQ(code("hlsl10"),
              "uniform Texture2D DiffuseMap : register(t0);\n"
              "uniform SamplerState sampler_DiffuseMap:register(s0);\n"
              "uniform Texture2D shadowMapSun : register(t1);\n"
              "uniform SamplerComparisonState sampler_shadowMapSun:register(s1);\n"
              "struct FS_INPUT{\n"
              "float4 oDummyProj : SV_Position; \n"
              "\tfloat4 oProjPos : SV_Position;\n"
              "\tfloat3 n : NORMAL;\n"
              "\tfloat2 early : TEXCOORD9;\n"
              "\tfloat2 late : TEXCOORD10;\n"
              "};\n"
              "struct FS_OUTPUT{\n"
              "\tfloat4 Color : SV_Target0;\n"
              "\tfloat4 More : SV_Target1;\n"
              "};\n"
              "FS_OUTPUT main(FS_INPUT input){ \n"
              "\tfloat2 ilate = input.late;\n"
              "\tfloat2 iearly = input.early;\n"
              "\tfloat4 ioProjPos = input.oProjPos;\n"
              "\tfloat3 in = input.n;\n"
              "\tFS_OUTPUT output;\n"
              "\toutput.Color = DiffuseMap.Sample(sampler_DiffuseMap,iearly);\n"
              "\toutput.More = shadowMapSun.SampleCmpLevelZero(sampler_shadowMapSun,ilate,in.z);\n"
              "\treturn output;\n"
              "}\n");
    EXPECT_EQ(code("glsl"),
              "#version 150\n"
              "uniform sampler2D DiffuseMap;\n"
              "uniform sampler2D shadowMapSun;\n"
              "in vec2 late;\n"
              "in vec2 early;\n"
              "in vec4 oProjPos;\n"
              "in vec3 n;\n"
              "out vec4 Color;\n"
              "out vec4 More;\n"
              "void main(){ \n"
              "\tvec2 ilate = late;\n"
              "\tvec2 iearly = early;\n"
              "\tvec4 ioProjPos = oProjPos;\n"
              "\tvec3 in = n;\n"
              "\tvec4 retColor = vec4(0.0);\n"
              "\tvec4 retMore = vec4(0.0);\n"
              "\tretColor = texture(DiffuseMap,iearly);\n"
              "\tretMore = texture(shadowMapSun,ilate,in.z);\n"
              "\tColor = retColor; \n"
              "\tMore = retMore; \n"
              "}\n");
    EXPECT_EQ(code("glsles"),
              "#version 100\n"
              "precision highp int; \n"
              "precision highp float; \n"
              "uniform sampler2D DiffuseMap;\n"
              "uniform sampler2D shadowMapSun;\n"
              "varying vec3 n;\n"
              "varying vec2 early;\n"
              "varying vec2 late;\n"
              "void main(){ \n"
              "\tvec2 ilate = late;\n"
              "\tvec2 iearly = early;\n"
              "\tvec4 ioProjPos = oProjPos;\n"
              "\tvec3 in = n;\n"
              "\tvec4 retColor = vec4(1.0);\n"
              "\tvec4 retMore = vec4(1.0);\n"
              "\tretColor = texture2D(DiffuseMap,iearly);\n"
              "\tretMore = texture2D(shadowMapSun,ilate,in.z);\n"
              "\tgl_FragColor = retColor; \n"
              "\tMore = retMore; \n"
              "}\n");
}

TEST(Layout, WritesOtherStages)
{
    const std::string source =
        "in float a : NORMAL; out float2 b : TEXAUTO; out float c : TANGENT;";
    EXPECT_EQ(CompileSource(source, "hlsl10", 2),
              "struct {\n\tfloat a : NORMAL;\n};\n"
              "struct {\n\tfloat2 b : TEXCOORD0;\n\tfloat c : TANGENT;\n};\n"
              " main( input){ \n\tfloat ia = input.a;\n\treturn output;\n}\n");
    EXPECT_EQ(CompileSource(source, "glsl", 2),
              "#version 150\nuniform float a;\nuniform vec2 b;\nuniform float c;\n"
              "void main(){ \n\tfloat ia = a;\n\tvec2 retb = vec2(0.0);\n"
              "\tfloat retc = float(0.0);\n\tb = retb; \n\tc = retc; \n}\n");
    EXPECT_EQ(CompileSource("", "hlsl", 0),
              "struct VS_INPUT{\n};\nstruct VS_OUTPUT{\n};\n"
              "VS_OUTPUT main(VS_INPUT input){ \n\tVS_OUTPUT output;\n\treturn output;\n}\n");
    EXPECT_EQ(CompileSource("", "hlsl10", 1),
              "struct FS_INPUT{\nfloat4 oDummyProj : SV_Position; \n};\nstruct FS_OUTPUT{\n};\n"
              "FS_OUTPUT main(FS_INPUT input){ \n\tFS_OUTPUT output;\n\treturn output;\n}\n");
}

TEST(Layout, NumbersAndSortsVertexOutputs)
{
    const std::string source =
        "uniform float u : TEXAUTO; out float2 a : TEXAUTO; out float x : TEXCOORD7;"
        "out float3 b : BINORMAL; out float2 c : TEXAUTO; out float4 p : SV_Position; out float y;"
        "out float4 q : SV_Position;";
    const auto compiler = morl_test::MakeCompiler({{"node", source, {}}});
    const auto compile = [&compiler](const std::string& target) {
        PassProperty pass = morl_test::MakePass(target, 0, {"node"});
        ShaderOutput output;
        compiler->Compile(pass, output);
        return output;
    };
    const ShaderOutput hlsl = compile("hlsl");
    EXPECT_EQ(hlsl.code.substr(0, hlsl.code.find("VS_OUTPUT main")),
              "uniform float u : TEXCOORD0;\nstruct VS_INPUT{\n};\nstruct VS_OUTPUT{\n"
              "\tfloat2 a : TEXCOORD1;\n\tfloat x : TEXCOORD7;\n\tfloat3 b : BINORMAL;\n"
              "\tfloat2 c : TEXCOORD2;\n\tfloat4 p : POSITION;\n\tfloat y;\n"
              "\tfloat4 q : POSITION;\n};\n");
    EXPECT_EQ(hlsl.semantics, (std::unordered_map<std::string, std::string>{
                                  {"u", "TEXCOORD0"}, {"a", "TEXCOORD1"}, {"c", "TEXCOORD2"}}));
    const ShaderOutput hlsl10 = compile("hlsl10");
    EXPECT_EQ(hlsl10.code.substr(0, hlsl10.code.find("VS_OUTPUT main")),
              "uniform float u : TEXCOORD0;\nstruct VS_INPUT{\n};\nstruct VS_OUTPUT{\n"
              "\tfloat4 p : SV_Position;\n\tfloat4 q : SV_Position;\n\tfloat3 b : BINORMAL;\n"
              "\tfloat2 a : TEXCOORD1;\n\tfloat2 c : TEXCOORD2;\n\tfloat x : TEXCOORD7;\n"
              "\tfloat y;\n};\n");
    const std::string es = compile("glsles").code;
    EXPECT_EQ(es.substr(es.find("uniform"), es.find("void") - es.find("uniform")),
              "uniform float u;\nvarying vec4 p;\nvarying vec4 q;\nvarying vec3 b;\n"
              "varying vec2 a;\nvarying vec2 c;\nvarying float x;\nvarying float y;\n");
    const std::string glsl = compile("glsl").code;
    EXPECT_EQ(glsl.substr(glsl.find("\tgl_Position")),
              "\tgl_Position = retp; \n\ta = reta; \n\tx = retx; \n\tb = retb; \n\tc = retc; \n"
              "\ty = rety; \n}\n");
    EXPECT_EQ(glsl.find("out vec4 q"), std::string::npos);
}

TEST(Layout, SortsAutomaticInputsByTheirNumber)
{
    const std::string source =
        "in float a : TEXAUTO; in float b : TEXAUTO; in float c : TEXAUTO; in float d : TEXAUTO;"
        "in float e; in float f : NORMAL; in float g : TEXCOORD0; in float h : TEXAUTO;";
    const auto compiler = morl_test::MakeCompiler({{"node", source, {}}});
    PassProperty pass = morl_test::MakePass("glsles", 1, {"node"});
    pass.semantics = {{"a", "TEXCOORD12000"},
                      {"b", "TEXCOORD999999999999"},
                      {"c", "TEXCOORDx"},
                      {"h", "TEXCOORD3"}};
    ShaderOutput output;
    compiler->Compile(pass, output);
    std::string order;
    for (std::size_t at = output.code.find("varying float "); at != std::string::npos;
         at = output.code.find("varying float ", at + 1)) {
        order += output.code[at + 14];
    }
    EXPECT_EQ(order, "fcdhegab");
    EXPECT_EQ(pass.semantics.size(),
              4U);  // names that are missing are not entered into the request
}

TEST(Layout, WritesStatements)
{
    const std::pair<const char*, const char*> rows[] = {
        {":;", "\t; \n"},
        {"discard;", "\tdiscard; \n"},
        {"// a\n/* b\nc */", "\t// a\n\t/* b\nc */\n"},
        {"float a; int b[4 + n];", "\tfloat a;\n\tint b[4+n];\n"},
        {"float a = b - c; a += 1.50; a.x *= 2.;",
         "\tfloat a = b-c;\n\ta += 1.50;\n\ta.x *= 2.;\n"},
        {"i++; i--;", "\t++i  ;\n\t--i  ;\n"},
        {"if (a > b) x = 1;", "\tif(a>b ) {\n\t\tx = 1;\n\t} \n"},
        {"if (a) { } else { if (b) { discard; } }",
         "\tif(a ) {\n\t} \n\telse { \n\t\tif(b ) {\n\t\t\tdiscard; \n\t\t} \n\t} \n"},
        {"if (a) { }\n//\nelse if (b) { }", "\tif(a ) {\n\t} \n\t//\n\telse if(b ) {\n\t} \n"},
        {"for (int i = 0; i < 4; i += 1) { x = i; }",
         "\tfor(int i = 0;i<4;i += 1 ) {\n\t\tx = i;\n\t} \n"},
        {"for (:; i < 4; i++) { }", "\tfor(; i<4;++i   ) {\n\t} \n"},
        {"for (i = 0; i < 4; +) { }", ""},
        {"x = (a + b) * -c % d;", "\tx = (a+b)*-cd;\n"},
        {"x = a <= b == c != d && e || f;", "\tx = a<=b==c!=d&&e||f;\n"},
        {"x = a >= b; a -= c; a /= d;", "\tx = a>=b;\n\ta -= c;\n\ta /= d;\n"},
        {"x[i + 1] = a[i][j].xy;", "\tx[i+1] = a[i][j].xy;\n"},
    };
    for (const auto& [statements, text] : rows) {
        const LogCapture log;
        EXPECT_EQ(CompileSource("void main() {" + std::string(statements) + "}", "glsl", 0),
                  "#version 150\nvoid main(){ \n" + std::string(text) + "}\n")
            << statements;
    }
}

}  // namespace
