// SPDX-License-Identifier: MIT
#include "morl/translator/hlsl.h"

#include "morl/translator/internal/bindings.h"
#include "morl/translator/internal/hlsl_layout.h"
#include "morl/translator/internal/target_spellings.h"
#include "morl/translator/internal/walk.h"

namespace ns_ruke {
namespace {

/// Shader model 3 has only 2D and cube samplers.
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
    {TOKEN_SAMPLER2D, "sampler2D"},
    {TOKEN_SAMPLERCUBE, "samplerCUBE"},
});

constexpr SpellingTable kAutoTypes({
    {TOKEN_BLENDINDICES, "float4"},
});

/// Shader model 3 has no system values: the projected position is POSITION.
constexpr SpellingTable kSemantics({
    {TOKEN_POSITION, "POSITION"},
    {TOKEN_NORMAL, "NORMAL"},
    {TOKEN_TANGENT, "TANGENT"},
    {TOKEN_BINORMAL, "BINORMAL"},
    {TOKEN_BLENDINDICES, "BLENDINDICES"},
    {TOKEN_BLENDWEIGHT, "BLENDWEIGHT"},
    {TOKEN_TEXCOORD0, "TEXCOORD0"},
    {TOKEN_TEXCOORD1, "TEXCOORD1"},
    {TOKEN_TEXCOORD2, "TEXCOORD2"},
    {TOKEN_TEXCOORD3, "TEXCOORD3"},
    {TOKEN_TEXCOORD4, "TEXCOORD4"},
    {TOKEN_TEXCOORD5, "TEXCOORD5"},
    {TOKEN_TEXCOORD6, "TEXCOORD6"},
    {TOKEN_TEXCOORD7, "TEXCOORD7"},
    {TOKEN_SV_POSITION, "POSITION"},
    {TOKEN_COLOR, "COLOR"},
    {TOKEN_COLOR0, "COLOR0"},
    {TOKEN_COLOR1, "COLOR1"},
    {TOKEN_COLOR2, "COLOR2"},
    {TOKEN_COLOR3, "COLOR3"},
});

constexpr CallForm kCalls[] = {
    kHlslMatrix3,
    kHlslMatrix4,
    kHlslMatrix4Rows,
};

template <class Answers>
void Uniforms(Walk<Answers>& walk, const Declares& uniforms)
{
    for (MorlDeclare* uniform : uniforms) {
        HlslUniform(walk, uniform);
    }
}

template <class Answers>
void InputList(Walk<Answers>& walk, const Declares& inputs)
{
    walk.text.Append("struct ", HlslStructsOf(walk.answers.Stage()).input, "{\n");
    HlslInputMembers(walk, inputs);
    walk.text.Append("};\n");
}

template <class Answers>
constexpr TargetSections<Answers> kSections = {Uniforms<Answers>,        InputList<Answers>,
                                               HlslOutputs<Answers>,     HlslMain<Answers>,
                                               HlslInputCopies<Answers>, HlslOutputLocal<Answers>};

constexpr TargetSpellings kSpellings = {"",
                                        kTypes,
                                        kAutoTypes,
                                        kHlslFunctions,
                                        kSemantics,
                                        kHlslBuffers,
                                        's',
                                        true,
                                        CallForms(kCalls),
                                        kSections<HookAnswers>,
                                        kSections<RecordAnswers>};

}  // namespace

MorlTranslatorHLSL::MorlTranslatorHLSL() : MorlTargetTranslator(kSpellings) {}
MorlTranslatorHLSL::~MorlTranslatorHLSL() = default;

const TargetSpellings& MorlTranslatorHLSL::Spellings()
{
    return kSpellings;
}

std::string MorlTranslatorHLSL::WriteOutputDeclare(MorlDeclare* declare)
{
    return Collect(*this, [&](auto& walk) { HlslOutputMember(walk, declare); });
}

}  // namespace ns_ruke
