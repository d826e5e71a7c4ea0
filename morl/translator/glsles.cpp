// SPDX-License-Identifier: MIT
#include "morl/translator/glsles.h"

#include "morl/translator/internal/glsl_layout.h"
#include "morl/translator/internal/register_order.h"

namespace ns_ruke {
namespace {

/// The target has no non-square matrices.
constexpr SpellingTable kTypes(kGlslTypes, {
                                               {TOKEN_FLOAT2X4, ""},
                                               {TOKEN_FLOAT3X4, ""},
                                               {TOKEN_FLOAT4X3, ""},
                                           });

/// Functions that the target lacks are written without a name, as their arguments alone.
constexpr SpellingTable kFunctions(kGlslFunctions, {
                                                       {TOKEN_FLOAT2X4, ""},
                                                       {TOKEN_FLOAT3X4, ""},
                                                       {TOKEN_FLOAT4X3, ""},
                                                       {TOKEN_TEX1D, "texture1D"},
                                                       {TOKEN_TEX2D, "texture2D"},
                                                       {TOKEN_TEX3D, "texture3D"},
                                                       {TOKEN_TEXCUBE, "textureCube"},
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

void InputList(Walk& walk, const Declares& inputs)
{
    Declares sorted;
    for (MorlDeclare* input : OrderedIn(kFragmentStage, walk.answers, inputs, sorted)) {
        walk.answers.Rename(input->name, kInputLocal);
        if (!IsUndeclared(input)) {
            GlslStageGlobal(walk, input);
        }
    }
}

/// The global of one output. A fragment stage writes to its target only through gl_FragColor.
void Output(Walk& walk, MorlDeclare* output)
{
    if (walk.answers.Stage() != kFragmentStage && !IsUndeclared(output)) {
        GlslStageGlobal(walk, output);
    }
    walk.answers.Rename(output->name, kOutputLocal);
}

void OutputList(Walk& walk, const Declares& outputs)
{
    Declares sorted;
    for (MorlDeclare* output : OrderedIn(kVertexStage, walk.answers, outputs, sorted)) {
        Output(walk, output);
    }
}

/// Outputs start at one, unlike in GLSL: an output that is never written is opaque white.
void OutputLocals(Walk& walk, const Declares& outputs)
{
    GlslOutputLocals(walk, outputs, "1.0");
}

void FinalOutput(Walk& walk, const Declares& outputs)
{
    for (const MorlDeclare* output : outputs) {
        GlslCopyOut(walk, CopyOutTarget(output), output);
    }
}

constexpr TargetRecord kRecord = {
    {"glsles", kGlsl | kGlslEs | kPlainSamplers, 100},
    "#version 100\nprecision highp int; \nprecision highp float; \n",
    kTypes,
    kGlslAutoTypes,
    kFunctions,
    kGlslSemantics,
    kBuffers,
    's',
    false,
    CallForms(kCalls),
    kGlslWords,
    kNoMoreWords,
    {"OpenGL ES 2.0", 8, 8, 8, 128, 16, true},
    {GlslUniforms, InputList, OutputList, GlslEntry, GlslInputCopies, OutputLocals, FinalOutput}};

}  // namespace

MorlTranslatorGLSLES::MorlTranslatorGLSLES() : MorlTargetTranslator(kRecord) {}
MorlTranslatorGLSLES::~MorlTranslatorGLSLES() = default;

const TargetRecord& MorlTranslatorGLSLES::Record()
{
    return kRecord;
}

std::string MorlTranslatorGLSLES::WriteOutputDeclare(MorlDeclare* declare)
{
    return Collect([&](Walk& walk) { Output(walk, declare); });
}

std::string MorlTranslatorGLSLES::WriteFinalOutput(Declares outputs)
{
    return Collect([&](Walk& walk) { FinalOutput(walk, outputs); });
}

std::int32_t MorlTranslatorGLSLES::GetRegisterIndex(MorlDeclare* declare)
{
    return RegisterIndex(Answers(*this, &kRecord), declare);
}

bool MorlTranslatorGLSLES::SortByRegister(MorlDeclare* a, MorlDeclare* b)
{
    return GetRegisterIndex(a) < GetRegisterIndex(b);
}

void MorlTranslatorGLSLES::Sort(Declares& declares)
{
    declares = InRegisterOrder(Answers(*this, &kRecord), declares);
}

}  // namespace ns_ruke
