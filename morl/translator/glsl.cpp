// SPDX-License-Identifier: MIT
#include "morl/translator/glsl.h"

#include "morl/translator/internal/bindings.h"
#include "morl/translator/internal/glsl_layout.h"
#include "morl/translator/internal/target_spellings.h"

#include <algorithm>

namespace ns_ruke {
namespace {

/// The integer vectors keep their Morl names, and only 2D and cube samplers have a name. Do not fix
/// either: shaders are compared byte for byte.
constexpr SpellingTable kTypes({
    {TOKEN_VOID, "void"},
    {TOKEN_FLOAT, "float"},
    {TOKEN_FLOAT2, "vec2"},
    {TOKEN_FLOAT3, "vec3"},
    {TOKEN_FLOAT4, "vec4"},
    {TOKEN_INT, "int"},
    {TOKEN_INT2, "int2"},
    {TOKEN_INT3, "int3"},
    {TOKEN_INT4, "int4"},
    {TOKEN_FLOAT2X4, "mat2x4"},
    {TOKEN_FLOAT3X3, "mat3"},
    {TOKEN_FLOAT3X4, "mat3x4"},
    {TOKEN_FLOAT4X3, "mat4x3"},
    {TOKEN_FLOAT4X4, "mat4"},
    {TOKEN_SAMPLER2D, "sampler2D"},
    {TOKEN_SAMPLERCUBE, "samplerCube"},
});

/// TOKEN_SAMPLE is written without a name, as its arguments alone. The rows of calls that have a
/// form in kCalls are not used to write them.
constexpr SpellingTable kFunctions({
    {TOKEN_FLOAT2, "vec2"},
    {TOKEN_FLOAT3, "vec3"},
    {TOKEN_FLOAT4, "vec4"},
    {TOKEN_FLOAT2X4, "mat2x4"},
    {TOKEN_FLOAT3X3, "mat3"},
    {TOKEN_FLOAT3X4, "mat3x4"},
    {TOKEN_FLOAT4X3, "mat4x3"},
    {TOKEN_FLOAT4X4, "mat4"},
    {TOKEN_FLOAT3X3_CONSTRUCT, "mat3"},
    {TOKEN_FLOAT4X4_CONSTRUCT, "mat4"},
    {TOKEN_FLOAT4X4_TRANPOSE, "mat4"},
    {TOKEN_TEX1D, "texture"},
    {TOKEN_TEX2D, "texture"},
    {TOKEN_TEX3D, "texture"},
    {TOKEN_TEX2DPROJ, "texture2DProj"},
    {TOKEN_TEXCUBE, "texture"},
    {TOKEN_SAMPLE, ""},
    {TOKEN_MAX, "max"},
    {TOKEN_MIN, "min"},
    {TOKEN_SATURATE, "saturate"},
    {TOKEN_CLAMP, "clamp"},
    {TOKEN_LENGTH, "length"},
    {TOKEN_NORMALIZE, "normalize"},
    {TOKEN_DOT, "dot"},
    {TOKEN_CROSS, "cross"},
    {TOKEN_MUL, "mul"},
    {TOKEN_POW, "pow"},
    {TOKEN_LERP, "mix"},
});

/// Constructors take columns, so a transposing one writes components. The type names are those of
/// HLSL; this, too, is kept because shaders are compared byte for byte.
constexpr CallForm kCalls[] = {
    Matrix(TOKEN_FLOAT3X3_CONSTRUCT, 3, "float3x3"),
    Matrix(TOKEN_FLOAT4X4_CONSTRUCT, 4, "float4x4"),
    Transposed(TOKEN_FLOAT4X4_TRANPOSE, 4, "float4x4", "float4"),
    Saturate(TOKEN_SATURATE),
    Product(TOKEN_MUL),
};

/// A stage that is neither vertex nor fragment has uniforms only.
constexpr BufferSpellings kBuffers = {{
    {TOKEN_UNIFORM, "uniform"},
    {TOKEN_IN, "in", "in", "uniform"},
    {TOKEN_OUT, "out", "out", "uniform"},
}};

constexpr TargetSpellings kSpellings = {"#version 150\n", kTypes,   kGlslAutoTypes,   kFunctions,
                                        kGlslSemantics,   kBuffers, CallForms(kCalls)};

}  // namespace

MorlTranslatorGLSL::MorlTranslatorGLSL() : MorlTargetTranslator(kSpellings) {}
MorlTranslatorGLSL::~MorlTranslatorGLSL() = default;

std::string MorlTranslatorGLSL::WriteUniformList(std::vector<MorlDeclare*> uniforms)
{
    std::string text = ListText(uniforms);
    for (MorlDeclare* uniform : uniforms) {
        AppendGlobal(text, uniform);
        text += ";\n";
    }
    return text;
}

std::string MorlTranslatorGLSL::WriteInputList(std::vector<MorlDeclare*> inputs)
{
    std::string text = ListText(inputs);
    for (MorlDeclare* input : inputs) {
        text += GlslStageGlobal(*this, input);
        variableNames[input->name] = GlslInputLocal(input->name);
    }
    return text;
}

std::string MorlTranslatorGLSL::WriteOutputList(std::vector<MorlDeclare*> outputs)
{
    std::string text = ListText(outputs);
    for (MorlDeclare* output : outputs) {
        text += WriteOutputDeclare(output);
    }
    return text;
}

// The projected position is the built-in gl_Position.
std::string MorlTranslatorGLSL::WriteOutputDeclare(MorlDeclare* declare)
{
    variableNames[declare->name] = GlslOutputLocal(declare->name);
    return BindingToken(declare) == TOKEN_SV_POSITION ? "" : GlslStageGlobal(*this, declare);
}

std::string MorlTranslatorGLSL::WriteMainFunction(MorlProgram* linked)
{
    std::string text;
    text.reserve(kUsualMain);
    text += kGlslMainStart;
    text += WriteInputConvert(linked->inputs);
    text += WriteOutputConvert(linked->outputs);
    AppendMainBody(text, linked);
    text += WriteFinalOutput(linked->outputs);
    text += kGlslMainEnd;
    return text;
}

std::string MorlTranslatorGLSL::WriteInputConvert(std::vector<MorlDeclare*> inputs)
{
    return GlslInputCopies(*this, inputs);
}

std::string MorlTranslatorGLSL::WriteOutputConvert(std::vector<MorlDeclare*> outputs)
{
    return GlslOutputLocals(*this, outputs, "0.0");
}

// The first projected position is written first; any others are not written.
std::string MorlTranslatorGLSL::WriteFinalOutput(std::vector<MorlDeclare*> outputs)
{
    const auto isPosition = [](const MorlDeclare* output) {
        return BindingToken(output) == TOKEN_SV_POSITION;
    };
    std::string text = ListText(outputs);
    const auto position = std::find_if(outputs.begin(), outputs.end(), isPosition);
    if (position != outputs.end()) {
        text += GlslCopyOut("gl_Position", *position);
    }
    for (const MorlDeclare* output : outputs) {
        text += isPosition(output) ? "" : GlslCopyOut(output->name, output);
    }
    return text;
}

std::string MorlTranslatorGLSL::WriteRegister(MorlDeclare* declare, MorlRegister* binding)
{
    return GlslBinding(samplerRegisters, declare, binding);
}

}  // namespace ns_ruke
