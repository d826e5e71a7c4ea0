// SPDX-License-Identifier: MIT
#include "morl/translator/glsles.h"

#include "morl/translator/internal/bindings.h"
#include "morl/translator/internal/glsl_layout.h"
#include "morl/translator/internal/register_order.h"
#include "morl/translator/internal/target_spellings.h"
#include "morl/translator/internal/walk.h"

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

template <class Answers>
void Inputs(Walk<Answers>& walk, const Declares& inputs)
{
    for (MorlDeclare* input : inputs) {
        walk.answers.Rename(input->name, kGlslInputLocal);
        if (!IsUndeclared(input)) {
            GlslStageGlobal(walk, input);
        }
    }
}

template <class Answers>
void InputList(Walk<Answers>& walk, const Declares& inputs)
{
    if (walk.answers.Stage() == kFragmentStage) {
        Inputs(walk, InRegisterOrder(walk.answers, inputs));
    } else {
        Inputs(walk, inputs);
    }
}

/// The global of one output. A fragment stage writes to its target only through gl_FragColor.
template <class Answers>
void Output(Walk<Answers>& walk, MorlDeclare* output)
{
    walk.answers.Rename(output->name, kGlslOutputLocal);
    if (!IsUndeclared(output) && walk.answers.Stage() != kFragmentStage) {
        GlslStageGlobal(walk, output);
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
void OutputList(Walk<Answers>& walk, const Declares& outputs)
{
    if (walk.answers.Stage() == kVertexStage) {
        Outputs(walk, InRegisterOrder(walk.answers, outputs));
    } else {
        Outputs(walk, outputs);
    }
}

/// Outputs start at one, unlike in GLSL: an output that is never written is opaque white.
template <class Answers>
void OutputLocals(Walk<Answers>& walk, const Declares& outputs)
{
    GlslOutputLocals(walk, outputs, "1.0");
}

template <class Answers>
void FinalOutput(Walk<Answers>& walk, const Declares& outputs)
{
    for (const MorlDeclare* output : outputs) {
        GlslCopyOut(walk, CopyOutTarget(output), output);
    }
}

template <class Answers>
void Main(Walk<Answers>& walk, MorlProgram& linked)
{
    GlslMain(walk, linked, OutputLocals<Answers>, FinalOutput<Answers>);
}

template <class Answers>
constexpr TargetSections<Answers> kSections = {GlslUniforms<Answers>,    InputList<Answers>,
                                               OutputList<Answers>,      Main<Answers>,
                                               GlslInputCopies<Answers>, OutputLocals<Answers>};

constexpr TargetSpellings kSpellings = {
    "#version 100\nprecision highp int; \nprecision highp float; \n",
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

MorlTranslatorGLSLES::MorlTranslatorGLSLES() : MorlTargetTranslator(kSpellings) {}
MorlTranslatorGLSLES::~MorlTranslatorGLSLES() = default;

const TargetSpellings& MorlTranslatorGLSLES::Spellings()
{
    return kSpellings;
}

std::string MorlTranslatorGLSLES::WriteOutputDeclare(MorlDeclare* declare)
{
    return Collect(*this, [&](auto& walk) { Output(walk, declare); });
}

std::string MorlTranslatorGLSLES::WriteFinalOutput(Declares outputs)
{
    return Collect(*this, [&](auto& walk) { FinalOutput(walk, outputs); });
}

std::int32_t MorlTranslatorGLSLES::GetRegisterIndex(MorlDeclare* declare)
{
    HookAnswers answers(*this);
    return RegisterIndex(answers, declare);
}

bool MorlTranslatorGLSLES::SortByRegister(MorlDeclare* a, MorlDeclare* b)
{
    return GetRegisterIndex(a) < GetRegisterIndex(b);
}

void MorlTranslatorGLSLES::Sort(Declares& declares)
{
    HookAnswers answers(*this);
    declares = InRegisterOrder(answers, declares);
}

}  // namespace ns_ruke
