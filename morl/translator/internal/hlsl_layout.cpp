// SPDX-License-Identifier: MIT
#include "morl/translator/internal/hlsl_layout.h"

#include "morl/ast/stage.h"

#include <string>

namespace ns_ruke {
namespace {

constexpr std::string_view kWords[] = {
    "AppendStructuredBuffer",
    "BlendState",
    "Buffer",
    "ByteAddressBuffer",
    "CompileShader",
    "ComputeShader",
    "ConsumeStructuredBuffer",
    "D3DX",
    "DepthStencilState",
    "DepthStencilView",
    "DomainShader",
    "GeometryShader",
    "InputPatch",
    "LineStream",
    "NULL",
    "OutputPatch",
    "PASS",
    "Pass",
    "PixelShader",
    "PointStream",
    "RWBuffer",
    "RWByteAddressBuffer",
    "RWStructuredBuffer",
    "RWTexture1D",
    "RWTexture1DArray",
    "RWTexture2D",
    "RWTexture2DArray",
    "RWTexture3D",
    "RasterizerState",
    "RenderTargetView",
    "SamplerComparisonState",
    "SamplerState",
    "StructuredBuffer",
    "TECHNIQUE",
    "Technique",
    "Texture1D",
    "Texture1DArray",
    "Texture2D",
    "Texture2DArray",
    "Texture2DMS",
    "Texture2DMSArray",
    "Texture3D",
    "TextureCube",
    "TextureCubeArray",
    "TriangleStream",
    "VertexShader",
    "asm",
    "asm_fragment",
    "bool",
    "break",
    "case",
    "catch",
    "cbuffer",
    "centroid",
    "class",
    "column_major",
    "compile",
    "compile_fragment",
    "const",
    "const_cast",
    "continue",
    "decl",
    "default",
    "delete",
    "do",
    "double",
    "dword",
    "dynamic_cast",
    "enum",
    "explicit",
    "export",
    "extern",
    "false",
    "friend",
    "fxgroup",
    "goto",
    "groupshared",
    "half",
    "half2",
    "half3",
    "half4",
    "inline",
    "inout",
    "input",
    "interface",
    "line",
    "lineadj",
    "linear",
    "matrix",
    "mutable",
    "namespace",
    "new",
    "nointerpolation",
    "noperspective",
    "operator",
    "output",
    "packoffset",
    "pass",
    "pixelfragment",
    "pixelshader",
    "point",
    "precise",
    "private",
    "protected",
    "public",
    "register",
    "reinterpret_cast",
    "return",
    "row_major",
    "sample",
    "sampler",
    "sampler_state",
    "shared",
    "signed",
    "sizeof",
    "snorm",
    "stateblock",
    "stateblock_state",
    "static",
    "static_cast",
    "string",
    "struct",
    "switch",
    "tbuffer",
    "technique",
    "technique10",
    "technique11",
    "template",
    "texture",
    "texture1D",
    "texture2D",
    "texture3D",
    "textureCUBE",
    "throw",
    "triangle",
    "triangleadj",
    "true",
    "try",
    "typedef",
    "typename",
    "uint",
    "union",
    "unorm",
    "unsigned",
    "using",
    "vector",
    "vertexfragment",
    "vertexshader",
    "virtual",
    "void",
    "volatile",
};

constexpr std::string_view kOutputMember = "output.";

/// The names of a stage's structs.
struct Structs {
    std::string_view input;
    std::string_view output;
};

Structs StructsOf(int stage)
{
    switch (stage) {
    case kVertexStage:
        return {"VS_INPUT", "VS_OUTPUT"};
    case kFragmentStage:
        return {"FS_INPUT", "FS_OUTPUT"};
    default:
        return {"", ""};
    }
}

/// The start of a struct's member: its type and its name.
void BeginMember(Walk& walk, MorlDeclare* declare)
{
    walk.Mark(declare);
    walk.text.Append('\t');
    walk.answers.AppendType(walk.text, declare);
    walk.text.Append(' ', declare->name);
}

void EndMember(Walk& walk, MorlDeclare* declare)
{
    walk.Binding(declare);
    walk.text.Append(";\n");
}

}  // namespace

constexpr WordList kHlslWords(kWords);

void HlslUniform(Walk& walk, MorlDeclare* uniform)
{
    walk.Global(uniform);
    walk.DefinitionArray(uniform->arraySize);
    EndMember(walk, uniform);
}

void HlslInputs(Walk& walk, std::string_view firstMember, const Declares& inputs)
{
    walk.text.Append("struct ", StructsOf(walk.answers.Stage()).input, "{\n", firstMember);
    for (MorlDeclare* input : inputs) {
        walk.answers.Rename(input->name, kInputLocal);
        BeginMember(walk, input);
        EndMember(walk, input);
    }
    walk.text.Append("};\n");
}

void HlslOutputMember(Walk& walk, MorlDeclare* output)
{
    BeginMember(walk, output);
    walk.answers.Rename(output->name, kOutputMember);
    EndMember(walk, output);
}

void HlslOutputs(Walk& walk, const Declares& outputs)
{
    walk.text.Append("struct ", StructsOf(walk.answers.Stage()).output, "{\n");
    for (MorlDeclare* output : outputs) {
        HlslOutputMember(walk, output);
    }
    walk.text.Append("};\n");
}

void HlslInputCopies(Walk& walk, const Declares& inputs)
{
    for (MorlDeclare* input : inputs) {
        const std::string& name = input->name;
        walk.Mark(input);
        walk.text.Append('\t');
        walk.answers.AppendType(walk.text, input);
        walk.text.Append(' ', kInputLocal, name, " = input.", name, ";\n");
    }
}

void HlslOutputLocal(Walk& walk, const Declares& /*outputs*/)
{
    const std::string_view name = StructsOf(walk.answers.Stage()).output;
    if (!name.empty()) {
        walk.text.Append('\t', name, " output;\n");
    }
}

void HlslEntry(Walk& walk)
{
    const Structs structs = StructsOf(walk.answers.Stage());
    walk.text.Append(structs.output, " main(", structs.input, " input){ \n");
}

void HlslReturn(Walk& walk, const Declares& /*outputs*/)
{
    walk.text.Append("\treturn output;\n");
}

}  // namespace ns_ruke
