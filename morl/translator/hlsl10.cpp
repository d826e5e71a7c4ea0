// SPDX-License-Identifier: MIT
#include "morl/translator/hlsl10.h"

#include "morl/translator/internal/bindings.h"
#include "morl/translator/internal/hlsl_layout.h"
#include "morl/translator/internal/register_order.h"
#include "morl/translator/internal/target_spellings.h"
#include "morl/translator/internal/walk.h"

namespace ns_ruke {
namespace {

/// Samplers become texture objects.
constexpr SpellingTable kTypes({
    {TOKEN_VOID, "void"},
    {TOKEN_FLOAT, "float"},
    {TOKEN_FLOAT2, "float2"},
    {TOKEN_FLOAT3, "float3"},
    {TOKEN_FLOAT4, "float4"},
    {TOKEN_INT, "int"},
    {TOKEN_INT2, "int2"},
    {TOKEN_INT3, "int3"},
    {TOKEN_INT4, "int4"},
    {TOKEN_FLOAT2X4, "float2x4"},
    {TOKEN_FLOAT3X3, "float3x3"},
    {TOKEN_FLOAT3X4, "float3x4"},
    {TOKEN_FLOAT4X3, "float4x3"},
    {TOKEN_FLOAT4X4, "float4x4"},
    {TOKEN_SAMPLER1D, "Texture1D"},
    {TOKEN_SAMPLER1DARRAY, "Texture1DArray"},
    {TOKEN_SAMPLER2D, "Texture2D"},
    {TOKEN_SAMPLER2DARRAY, "Texture2DArray"},
    {TOKEN_SAMPLER3D, "Texture3D"},
    {TOKEN_SAMPLER3DARRAY, "Texture3DArray"},
    {TOKEN_SAMPLERCUBE, "TextureCube"},
});

constexpr SpellingTable kAutoTypes({
    {TOKEN_BLENDINDICES, "uint4"},
});

/// The numbered colours are render targets; COLOR without a number is not.
constexpr SpellingTable kSemantics({
    {TOKEN_POSITION, "POSITION"},         {TOKEN_NORMAL, "NORMAL"},
    {TOKEN_TANGENT, "TANGENT"},           {TOKEN_BINORMAL, "BINORMAL"},
    {TOKEN_BLENDINDICES, "BLENDINDICES"}, {TOKEN_BLENDWEIGHT, "BLENDWEIGHT"},
    {TOKEN_TEXCOORD0, "TEXCOORD0"},       {TOKEN_TEXCOORD1, "TEXCOORD1"},
    {TOKEN_TEXCOORD2, "TEXCOORD2"},       {TOKEN_TEXCOORD3, "TEXCOORD3"},
    {TOKEN_TEXCOORD4, "TEXCOORD4"},       {TOKEN_TEXCOORD5, "TEXCOORD5"},
    {TOKEN_TEXCOORD6, "TEXCOORD6"},       {TOKEN_TEXCOORD7, "TEXCOORD7"},
    {TOKEN_SV_POSITION, "SV_Position"},   {TOKEN_COLOR, "COLOR"},
    {TOKEN_COLOR0, "SV_Target0"},         {TOKEN_COLOR1, "SV_Target1"},
    {TOKEN_COLOR2, "SV_Target2"},         {TOKEN_COLOR3, "SV_Target3"},
});

/// Sampling is a method of the texture object. All intrinsics take this one form, projected and
/// array sampling included.
constexpr CallForm kCalls[] = {
    kHlslMatrix3,
    kHlslMatrix4,
    kHlslMatrix4Rows,
    Sampling(TOKEN_TEX1D),
    Sampling(TOKEN_TEX2D),
    Sampling(TOKEN_TEX2DARRAY),
    Sampling(TOKEN_TEX3D),
    Sampling(TOKEN_TEX2DPROJ),
    Sampling(TOKEN_TEXCUBE),
};

/// The first member of every input struct of a fragment stage: the projected position, which comes
/// first in the vertex output struct.
constexpr char kDummyPosition[] = "float4 oDummyProj : SV_Position; \n";

/// A sampler bound to SAUTO has a second line: its sampler state.
template <class Answers>
void Uniforms(Walk<Answers>& walk, const Declares& uniforms)
{
    for (MorlDeclare* uniform : uniforms) {
        HlslUniform(walk, uniform);
        if (BindingToken(uniform) != TOKEN_SAUTO) {
            continue;
        }
        const bool compares = IsShadowMap(uniform->name);
        walk.answers.Mark(walk.text, uniform);
        walk.text.Append(walk.answers.Buffer(uniform->bufferType));
        walk.text.Append(compares ? " SamplerComparisonState " : " SamplerState ");
        walk.text.Append(kSamplerState, uniform->name, ':');
        AppendRegister(walk.text, 's', walk.answers.SamplerNumber(uniform->name));
        walk.text.Append(";\n");
    }
}

template <class Answers>
void InputList(Walk<Answers>& walk, const Declares& inputs)
{
    walk.text.Append("struct ", HlslStructsOf(walk.answers.Stage()).input, "{\n");
    if (walk.answers.Stage() == kFragmentStage) {
        walk.text.Append(kDummyPosition);
        HlslInputMembers(walk, InRegisterOrder(walk.answers, inputs));
    } else {
        HlslInputMembers(walk, inputs);
    }
    walk.text.Append("};\n");
}

template <class Answers>
void OutputList(Walk<Answers>& walk, const Declares& outputs)
{
    if (walk.answers.Stage() == kVertexStage) {
        HlslOutputs(walk, InRegisterOrder(walk.answers, outputs));
    } else {
        HlslOutputs(walk, outputs);
    }
}

template <class Answers>
constexpr TargetSections<Answers> kSections = {Uniforms<Answers>,        InputList<Answers>,
                                               OutputList<Answers>,      HlslMain<Answers>,
                                               HlslInputCopies<Answers>, HlslOutputLocal<Answers>};

constexpr TargetSpellings kSpellings = {"",
                                        kTypes,
                                        kAutoTypes,
                                        kHlslFunctions,
                                        kSemantics,
                                        kHlslBuffers,
                                        't',
                                        true,
                                        CallForms(kCalls),
                                        kSections<HookAnswers>,
                                        kSections<RecordAnswers>};

}  // namespace

MorlTranslatorHLSL10::MorlTranslatorHLSL10() : MorlTargetTranslator(kSpellings) {}
MorlTranslatorHLSL10::~MorlTranslatorHLSL10() = default;

const TargetSpellings& MorlTranslatorHLSL10::Spellings()
{
    return kSpellings;
}

std::string MorlTranslatorHLSL10::WriteOutputDeclare(MorlDeclare* declare)
{
    return Collect(*this, [&](auto& walk) { HlslOutputMember(walk, declare); });
}

std::int32_t MorlTranslatorHLSL10::GetRegisterIndex(MorlDeclare* declare)
{
    HookAnswers answers(*this);
    return RegisterIndex(answers, declare);
}

bool MorlTranslatorHLSL10::SortByRegister(MorlDeclare* a, MorlDeclare* b)
{
    return GetRegisterIndex(a) < GetRegisterIndex(b);
}

void MorlTranslatorHLSL10::Sort(Declares& declares)
{
    HookAnswers answers(*this);
    declares = InRegisterOrder(answers, declares);
}

}  // namespace ns_ruke
