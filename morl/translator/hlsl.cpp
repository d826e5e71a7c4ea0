// SPDX-License-Identifier: MIT
#include "morl/translator/hlsl.h"

#include "morl/translator/internal/hlsl_layout.h"

namespace ns_ruke {
namespace {

constexpr SpellingTable kAutoTypes({
    {TOKEN_BLENDINDICES, "float4"},
});

constexpr CallForm kCalls[] = {
    kHlslMatrix3,
    kHlslMatrix4,
    kHlslMatrix4Rows,
};

void Uniforms(Walk& walk, const Declares& uniforms)
{
    for (MorlDeclare* uniform : uniforms) {
        HlslUniform(walk, uniform);
    }
}

void InputList(Walk& walk, const Declares& inputs)
{
    HlslInputs(walk, "", inputs);
}

constexpr TargetRecord kRecord = {
    {"hlsl", kHlsl | kPlainSamplers, 30},
    "",
    kHlslTypes,
    kAutoTypes,
    kHlslFunctions,
    kSemantics,
    kHlslBuffers,
    's',
    true,
    CallForms(kCalls),
    kHlslWords,
    kNoMoreWords,
    {"shader model 3", 16, 16, 10, 256, 224, false},
    {Uniforms, InputList, HlslOutputs, HlslEntry, HlslInputCopies, HlslOutputLocal, HlslReturn}};

}  // namespace

MorlTranslatorHLSL::MorlTranslatorHLSL() : MorlTargetTranslator(kRecord) {}
MorlTranslatorHLSL::~MorlTranslatorHLSL() = default;

const TargetRecord& MorlTranslatorHLSL::Record()
{
    return kRecord;
}

std::string MorlTranslatorHLSL::WriteOutputDeclare(MorlDeclare* declare)
{
    return Collect([&](Walk& walk) { HlslOutputMember(walk, declare); });
}

}  // namespace ns_ruke
