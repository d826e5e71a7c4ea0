// SPDX-License-Identifier: MIT
#include "morl/translator/hlsl10.h"

#include "morl/translator/internal/hlsl_layout.h"
#include "morl/translator/internal/register_order.h"

namespace ns_ruke {
namespace {

/// Samplers become texture objects.
constexpr SpellingTable kTypes(kHlslTypes, {
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
constexpr SpellingTable kTargetSemantics(kSemantics, {
                                                         {TOKEN_SV_POSITION, "SV_Position"},
                                                         {TOKEN_COLOR0, "SV_Target0"},
                                                         {TOKEN_COLOR1, "SV_Target1"},
                                                         {TOKEN_COLOR2, "SV_Target2"},
                                                         {TOKEN_COLOR3, "SV_Target3"},
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
void Uniforms(Walk& walk, const Declares& uniforms)
{
    for (MorlDeclare* uniform : uniforms) {
        HlslUniform(walk, uniform);
        if (BindingToken(uniform) != TOKEN_SAUTO) {
            continue;
        }
        const bool compares = IsShadowMap(uniform->name);
        walk.Mark(uniform);
        walk.answers.AppendBuffer(walk.text, uniform->bufferType);
        walk.text.Append(compares ? " SamplerComparisonState " : " SamplerState ");
        walk.text.Append(kSamplerState, uniform->name, ':');
        AppendRegister(walk.text, 's', walk.answers.SamplerNumber(uniform->name));
        walk.text.Append(";\n");
    }
}

void InputList(Walk& walk, const Declares& inputs)
{
    const bool isFragment = walk.answers.Stage() == kFragmentStage;
    Declares sorted;
    HlslInputs(walk, isFragment ? kDummyPosition : "",
               OrderedIn(kFragmentStage, walk.answers, inputs, sorted));
}

void OutputList(Walk& walk, const Declares& outputs)
{
    Declares sorted;
    HlslOutputs(walk, OrderedIn(kVertexStage, walk.answers, outputs, sorted));
}

constexpr TargetRecord kRecord = {
    {"hlsl10", kHlsl | kTextureObjects, 40},
    "",
    kTypes,
    kAutoTypes,
    kHlslFunctions,
    kTargetSemantics,
    kHlslBuffers,
    't',
    true,
    CallForms(kCalls),
    kHlslWords,
    kNoMoreWords,
    {"Direct3D 10", 16, 16, 16, 4096, 4096, true},
    {Uniforms, InputList, OutputList, HlslEntry, HlslInputCopies, HlslOutputLocal, HlslReturn}};

}  // namespace

MorlTranslatorHLSL10::MorlTranslatorHLSL10() : MorlTargetTranslator(kRecord) {}
MorlTranslatorHLSL10::~MorlTranslatorHLSL10() = default;

const TargetRecord& MorlTranslatorHLSL10::Record()
{
    return kRecord;
}

std::string MorlTranslatorHLSL10::WriteOutputDeclare(MorlDeclare* declare)
{
    return Collect([&](Walk& walk) { HlslOutputMember(walk, declare); });
}

std::int32_t MorlTranslatorHLSL10::GetRegisterIndex(MorlDeclare* declare)
{
    return RegisterIndex(Answers(*this, &kRecord), declare);
}

bool MorlTranslatorHLSL10::SortByRegister(MorlDeclare* a, MorlDeclare* b)
{
    return GetRegisterIndex(a) < GetRegisterIndex(b);
}

void MorlTranslatorHLSL10::Sort(Declares& declares)
{
    declares = InRegisterOrder(Answers(*this, &kRecord), declares);
}

}  // namespace ns_ruke
