// SPDX-License-Identifier: MIT
#include "morl/translator/glsl.h"

#include "morl/translator/internal/glsl_layout.h"

#include <algorithm>

namespace ns_ruke {
namespace {

/// Constructors take columns, so a transposing one writes components. The type names are those of
/// HLSL, which is kept because shaders are compared byte for byte.
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
void Output(Walk& walk, MorlDeclare* output)
{
    if (BindingToken(output) != TOKEN_SV_POSITION) {
        GlslStageGlobal(walk, output);
    }
    walk.answers.Rename(output->name, kOutputLocal);
}

void Inputs(Walk& walk, const Declares& inputs)
{
    for (MorlDeclare* input : inputs) {
        GlslStageGlobal(walk, input);
        walk.answers.Rename(input->name, kInputLocal);
    }
}

void Outputs(Walk& walk, const Declares& outputs)
{
    for (MorlDeclare* output : outputs) {
        Output(walk, output);
    }
}

void OutputLocals(Walk& walk, const Declares& outputs)
{
    GlslOutputLocals(walk, outputs, "0.0");
}

// The first projected position is written first; any others are not written.
void FinalOutput(Walk& walk, const Declares& outputs)
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

constexpr TargetRecord kRecord = {
    {"glsl", kGlsl | kDesktopGlsl | kPlainSamplers, 150},
    "#version 150\n",
    kGlslTypes,
    kGlslAutoTypes,
    kGlslFunctions,
    kGlslSemantics,
    kBuffers,
    's',
    false,
    CallForms(kCalls),
    kGlslWords,
    kGlslWordsOf150,
    {"OpenGL 3.2", 16, 16, 15, 256, 256, true},
    {GlslUniforms, Inputs, Outputs, GlslEntry, GlslInputCopies, OutputLocals, FinalOutput}};

}  // namespace

MorlTranslatorGLSL::MorlTranslatorGLSL() : MorlTargetTranslator(kRecord) {}
MorlTranslatorGLSL::~MorlTranslatorGLSL() = default;

const TargetRecord& MorlTranslatorGLSL::Record()
{
    return kRecord;
}

std::string MorlTranslatorGLSL::WriteOutputDeclare(MorlDeclare* declare)
{
    return Collect([&](Walk& walk) { Output(walk, declare); });
}

std::string MorlTranslatorGLSL::WriteFinalOutput(Declares outputs)
{
    return Collect([&](Walk& walk) { FinalOutput(walk, outputs); });
}

}  // namespace ns_ruke
