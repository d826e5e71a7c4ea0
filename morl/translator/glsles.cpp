// SPDX-License-Identifier: MIT
#include "morl/translator/glsles.h"

#include "morl/translator/internal/bindings.h"
#include "morl/translator/internal/glsl_layout.h"
#include "morl/translator/internal/register_order.h"
#include "morl/translator/internal/target_spellings.h"

#include <string_view>

namespace ns_ruke {
namespace {

/// The target has no non-square matrices. The integer vectors keep their Morl names, as in GLSL.
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
    {TOKEN_FLOAT3X3, "mat3"},
    {TOKEN_FLOAT4X4, "mat4"},
    {TOKEN_SAMPLER2D, "sampler2D"},
    {TOKEN_SAMPLERCUBE, "samplerCube"},
});

/// Functions that the target lacks are written without a name, as their arguments alone. The rows
/// of calls that have a form in kCalls are not used to write them.
constexpr SpellingTable kFunctions({
    {TOKEN_FLOAT2, "vec2"},
    {TOKEN_FLOAT3, "vec3"},
    {TOKEN_FLOAT4, "vec4"},
    {TOKEN_FLOAT2X4, ""},
    {TOKEN_FLOAT3X3, "mat3"},
    {TOKEN_FLOAT3X4, ""},
    {TOKEN_FLOAT4X3, ""},
    {TOKEN_FLOAT4X4, "mat4"},
    {TOKEN_FLOAT3X3_CONSTRUCT, "mat3"},
    {TOKEN_FLOAT4X4_CONSTRUCT, "mat4"},
    {TOKEN_FLOAT4X4_TRANPOSE, "mat4"},
    {TOKEN_TEX1D, "texture1D"},
    {TOKEN_TEX2D, "texture2D"},
    {TOKEN_TEX3D, "texture3D"},
    {TOKEN_TEX2DPROJ, "texture2DProj"},
    {TOKEN_TEXCUBE, "textureCube"},
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

/// Constructors take columns, so a transposing one writes components.
constexpr CallForm kCalls[] = {
    Matrix(TOKEN_FLOAT3X3_CONSTRUCT, 3, "mat3"),
    Matrix(TOKEN_FLOAT4X4_CONSTRUCT, 4, "mat4"),
    Transposed(TOKEN_FLOAT4X4_TRANPOSE, 4, "mat4", "vec4"),
    Saturate(TOKEN_SATURATE),
    Product(TOKEN_MUL),
};

/// A fragment stage declares no outputs; a stage that is neither vertex nor fragment has only
/// uniforms.
constexpr BufferSpellings kBuffers = {{
    {TOKEN_UNIFORM, "uniform"},
    {TOKEN_IN, "attribute", "varying", "uniform"},
    {TOKEN_OUT, "varying", "", "uniform"},
}};

constexpr TargetSpellings kSpellings = {
    "#version 100\nprecision highp int; \nprecision highp float; \n",
    kTypes,
    kGlslAutoTypes,
    kFunctions,
    kGlslSemantics,
    kBuffers,
    CallForms(kCalls)};

/// A declaration of this name is never an attribute or varying, whatever it is bound to. (What an
/// output is copied to depends on its semantic instead: see CopyOutTarget.)
bool IsUndeclared(const MorlDeclare* declare)
{
    return declare->name == "oProjPos";
}

std::string_view CopyOutTarget(const MorlDeclare* output)
{
    switch (BindingToken(output)) {
    case TOKEN_COLOR:
    case TOKEN_COLOR0:
        return "gl_FragColor";
    case TOKEN_SV_POSITION:
        return "gl_Position";
    default:
        return output->name;
    }
}

}  // namespace

MorlTranslatorGLSLES::MorlTranslatorGLSLES() : MorlTargetTranslator(kSpellings) {}
MorlTranslatorGLSLES::~MorlTranslatorGLSLES() = default;

std::string MorlTranslatorGLSLES::WriteUniformList(std::vector<MorlDeclare*> uniforms)
{
    std::string text = ListText(uniforms);
    for (MorlDeclare* uniform : uniforms) {
        AppendGlobal(text, uniform);
        text += ";\n";
    }
    return text;
}

std::string MorlTranslatorGLSLES::WriteInputList(std::vector<MorlDeclare*> inputs)
{
    if (StageOf(program) == kFragmentStage) {
        Sort(inputs);
    }
    std::string text = ListText(inputs);
    for (MorlDeclare* input : inputs) {
        variableNames[input->name] = GlslInputLocal(input->name);
        text += IsUndeclared(input) ? "" : GlslStageGlobal(*this, input);
    }
    return text;
}

std::string MorlTranslatorGLSLES::WriteOutputList(std::vector<MorlDeclare*> outputs)
{
    if (StageOf(program) == kVertexStage) {
        Sort(outputs);
    }
    std::string text = ListText(outputs);
    for (MorlDeclare* output : outputs) {
        text += WriteOutputDeclare(output);
    }
    return text;
}

// A fragment stage writes to its target only through gl_FragColor.
std::string MorlTranslatorGLSLES::WriteOutputDeclare(MorlDeclare* declare)
{
    variableNames[declare->name] = GlslOutputLocal(declare->name);
    const bool isDeclared = !IsUndeclared(declare) && StageOf(program) != kFragmentStage;
    return isDeclared ? GlslStageGlobal(*this, declare) : "";
}

std::string MorlTranslatorGLSLES::WriteMainFunction(MorlProgram* linked)
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

std::string MorlTranslatorGLSLES::WriteInputConvert(std::vector<MorlDeclare*> inputs)
{
    return GlslInputCopies(*this, inputs);
}

// Outputs start at one, unlike in GLSL: an output that is never written is opaque white.
std::string MorlTranslatorGLSLES::WriteOutputConvert(std::vector<MorlDeclare*> outputs)
{
    return GlslOutputLocals(*this, outputs, "1.0");
}

std::string MorlTranslatorGLSLES::WriteFinalOutput(std::vector<MorlDeclare*> outputs)
{
    std::string text = ListText(outputs);
    for (const MorlDeclare* output : outputs) {
        text += GlslCopyOut(CopyOutTarget(output), output);
    }
    return text;
}

std::string MorlTranslatorGLSLES::WriteRegister(MorlDeclare* declare, MorlRegister* binding)
{
    return GlslBinding(samplerRegisters, declare, binding);
}

std::int32_t MorlTranslatorGLSLES::GetRegisterIndex(MorlDeclare* declare)
{
    return RegisterIndex(declare, program, inputSemantics);
}

bool MorlTranslatorGLSLES::SortByRegister(MorlDeclare* a, MorlDeclare* b)
{
    return GetRegisterIndex(a) < GetRegisterIndex(b);
}

void MorlTranslatorGLSLES::Sort(std::vector<MorlDeclare*>& declares)
{
    SortByRegisterIndex(declares, program, inputSemantics);
}

}  // namespace ns_ruke
