// SPDX-License-Identifier: MIT
#include "morl/translator/glsl.h"

#include "morl/translator/internal/bindings.h"
#include "morl/translator/internal/glsl_layout.h"
#include "morl/translator/internal/target_spellings.h"
#include "morl/translator/internal/walk.h"

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

/// The global of one output. The projected position is the built-in gl_Position.
template <class Answers>
void Output(Walk<Answers>& walk, MorlDeclare* output)
{
    walk.answers.Rename(output->name, kGlslOutputLocal);
    if (BindingToken(output) != TOKEN_SV_POSITION) {
        GlslStageGlobal(walk, output);
    }
}

template <class Answers>
void Inputs(Walk<Answers>& walk, const Declares& inputs)
{
    for (MorlDeclare* input : inputs) {
        GlslStageGlobal(walk, input);
        walk.answers.Rename(input->name, kGlslInputLocal);
    }
}

template <class Answers>
void Outputs(Walk<Answers>& walk, const Declares& outputs)
{
    for (MorlDeclare* output : outputs) {
        Output(walk, output);
    }
}

template <class Answers>
void OutputLocals(Walk<Answers>& walk, const Declares& outputs)
{
    GlslOutputLocals(walk, outputs, "0.0");
}

// The first projected position is written first; any others are not written.
template <class Answers>
void FinalOutput(Walk<Answers>& walk, const Declares& outputs)
{
    const auto isPosition = [](const MorlDeclare* output) {
        return BindingToken(output) == TOKEN_SV_POSITION;
    };
    const auto position = std::find_if(outputs.begin(), outputs.end(), isPosition);
    if (position != outputs.end()) {
        GlslCopyOut(walk, "gl_Position", *position);
    }
    for (const MorlDeclare* output : outputs) {
        if (!isPosition(output)) {
            GlslCopyOut(walk, output->name, output);
        }
    }
}

template <class Answers>
void Main(Walk<Answers>& walk, MorlProgram& linked)
{
    GlslMain(walk, linked, OutputLocals<Answers>, FinalOutput<Answers>);
}

template <class Answers>
constexpr TargetSections<Answers> kSections = {GlslUniforms<Answers>,    Inputs<Answers>,
                                               Outputs<Answers>,         Main<Answers>,
                                               GlslInputCopies<Answers>, OutputLocals<Answers>};

constexpr TargetSpellings kSpellings = {"#version 150\n",
                                        kTypes,
                                        kGlslAutoTypes,
                                        kFunctions,
                                        kGlslSemantics,
                                        kBuffers,
                                        's',
                                        false,
                                        CallForms(kCalls),
                                        kSections<HookAnswers>,
                                        kSections<RecordAnswers>};

}  // namespace

MorlTranslatorGLSL::MorlTranslatorGLSL() : MorlTargetTranslator(kSpellings) {}
MorlTranslatorGLSL::~MorlTranslatorGLSL() = default;

const TargetSpellings& MorlTranslatorGLSL::Spellings()
{
    return kSpellings;
}

std::string MorlTranslatorGLSL::WriteOutputDeclare(MorlDeclare* declare)
{
    return Collect(*this, [&](auto& walk) { Output(walk, declare); });
}

std::string MorlTranslatorGLSL::WriteFinalOutput(Declares outputs)
{
    return Collect(*this, [&](auto& walk) { FinalOutput(walk, outputs); });
}

}  // namespace ns_ruke
