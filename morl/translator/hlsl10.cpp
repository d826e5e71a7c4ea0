// SPDX-License-Identifier: MIT
#include "morl/translator/hlsl10.h"

#include "morl/translator/internal/bindings.h"
#include "morl/translator/internal/hlsl_layout.h"
#include "morl/translator/internal/register_order.h"
#include "morl/translator/internal/target_spellings.h"

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

constexpr TargetSpellings kSpellings = {"",         kTypes,       kAutoTypes,       kHlslFunctions,
                                        kSemantics, kHlslBuffers, CallForms(kCalls)};

/// The first member of every input struct of a fragment stage: the projected position, which comes
/// first in the vertex output struct.
constexpr char kDummyPosition[] = "float4 oDummyProj : SV_Position; \n";

}  // namespace

MorlTranslatorHLSL10::MorlTranslatorHLSL10() : MorlTargetTranslator(kSpellings) {}
MorlTranslatorHLSL10::~MorlTranslatorHLSL10() = default;

void MorlTranslatorHLSL10::Reset()
{
    MorlTranslator::Reset();
    texcoordCounter = 0;
}

// A sampler bound to SAUTO has a second line: its sampler state.
std::string MorlTranslatorHLSL10::WriteUniformList(std::vector<MorlDeclare*> uniforms)
{
    std::string text = ListText(uniforms);
    for (MorlDeclare* uniform : uniforms) {
        AppendGlobal(text, uniform);
        text.append(WriteRegister(uniform, uniform->registerBinding)).append(";\n");
        if (BindingToken(uniform) == TOKEN_SAUTO) {
            text.append(WriteBuffer(uniform->bufferType)).append(" ");
            text += IsShadowMap(uniform->name) ? "SamplerComparisonState" : "SamplerState";
            text.append(" ").append(SamplerState(uniform->name)).append(":");
            text += SamplerRegister('s', samplerRegisters, uniform->name);
            text += ";\n";
        }
    }
    return text;
}

std::string MorlTranslatorHLSL10::WriteInputList(std::vector<MorlDeclare*> inputs)
{
    std::string text = OpenHlslStruct(HlslStructsOf(program).input);
    if (StageOf(program) == kFragmentStage) {
        text += kDummyPosition;
        Sort(inputs);
    }
    text.append(HlslInputMembers(*this, inputs, variableNames)).append("};\n");
    return text;
}

std::string MorlTranslatorHLSL10::WriteOutputList(std::vector<MorlDeclare*> outputs)
{
    if (StageOf(program) == kVertexStage) {
        Sort(outputs);
    }
    std::string text = OpenHlslStruct(HlslStructsOf(program).output);
    for (MorlDeclare* output : outputs) {
        text += WriteOutputDeclare(output);
    }
    text += "};\n";
    return text;
}

std::string MorlTranslatorHLSL10::WriteOutputDeclare(MorlDeclare* declare)
{
    return HlslOutputMember(*this, declare, variableNames);
}

std::string MorlTranslatorHLSL10::WriteMainFunction(MorlProgram* linked)
{
    std::string text;
    text.reserve(kUsualMain);
    text += OpenHlslMain(program);
    text += WriteInputConvert(linked->inputs);
    text += WriteOutputConvert(linked->outputs);
    AppendMainBody(text, linked);
    text += kHlslMainEnd;
    return text;
}

std::string MorlTranslatorHLSL10::WriteInputConvert(std::vector<MorlDeclare*> inputs)
{
    return HlslInputCopies(*this, inputs);
}

std::string MorlTranslatorHLSL10::WriteOutputConvert(std::vector<MorlDeclare*> /*outputs*/)
{
    return HlslOutputLocal(program);
}

std::string MorlTranslatorHLSL10::WriteRegister(MorlDeclare* declare, MorlRegister* binding)
{
    const HlslBindings bindings = {
        kSemantics, 't', inputSemantics, outputSemantics, samplerRegisters, texcoordCounter};
    return HlslBinding(bindings, program, declare, binding);
}

std::int32_t MorlTranslatorHLSL10::GetRegisterIndex(MorlDeclare* declare)
{
    return RegisterIndex(declare, program, inputSemantics);
}

bool MorlTranslatorHLSL10::SortByRegister(MorlDeclare* a, MorlDeclare* b)
{
    return GetRegisterIndex(a) < GetRegisterIndex(b);
}

void MorlTranslatorHLSL10::Sort(std::vector<MorlDeclare*>& declares)
{
    SortByRegisterIndex(declares, program, inputSemantics);
}

}  // namespace ns_ruke
