// SPDX-License-Identifier: MIT
#include "morl/translator/hlsl10.h"

#include "morl/core/string_helper.h"
#include "morl/translator/hlsl_layout.h"
#include "morl/translator/register_order.h"
#include "morl/translator/shared_hooks.h"

namespace ns_ruke {
namespace {

/// The line that opens every input struct of a fragment stage: the projected position, which the
/// vertex output struct holds at its head.
constexpr char kDummyPosition[] = "float4 oDummyProj : SV_Position; \n";

/// A texture whose name begins with this is a shadow map: it is sampled by comparison.
bool IsShadowMap(const std::string& name)
{
    return StringHelper::StartWith(name, "shadowMap", false);
}

std::string SamplerState(const std::string& texture)
{
    return "sampler_" + texture;
}

bool IsSampling(ENUM_TOKEN token)
{
    switch (token) {
    case TOKEN_TEX1D:
    case TOKEN_TEX2D:
    case TOKEN_TEX2DARRAY:
    case TOKEN_TEX3D:
    case TOKEN_TEX2DPROJ:
    case TOKEN_TEXCUBE:
        return true;
    default:
        return false;
    }
}

}  // namespace

MorlTranslatorHLSL10::MorlTranslatorHLSL10() = default;
MorlTranslatorHLSL10::~MorlTranslatorHLSL10() = default;

void MorlTranslatorHLSL10::Reset()
{
    MorlTranslator::Reset();
    texcoordCounter = 0;
}

std::string MorlTranslatorHLSL10::WriteFunctionCall(MorlFunctionCall* call)
{
    std::string text;
    AppendFunctionCall(text, call);
    return text;
}

void MorlTranslatorHLSL10::AppendFunctionCall(std::string& text, MorlFunctionCall* call)
{
    if (IsSampling(call->functionToken)) {
        AppendSampling(text, call);
    } else {
        AppendCall(text, call, kHlslCallForms);
    }
}

// Sampling is a method of the texture object. All sampling intrinsics take this one form, projected
// and array sampling included; a shadow map takes the value to compare with as its third argument.
void MorlTranslatorHLSL10::AppendSampling(std::string& text, MorlFunctionCall* call)
{
    const CallArguments arguments = WriteArguments(call, 2, 1, 1);
    const bool compares = IsShadowMap(arguments[0]);
    text.append(arguments[0]).append(compares ? ".SampleCmpLevelZero(" : ".Sample(");
    text.append(SamplerState(arguments[0])).append(",").append(arguments[1]);
    if (compares) {
        text += ",";
        AppendComparison(text, call);
    }
    text += ")";
}

void MorlTranslatorHLSL10::AppendComparison(std::string& text, MorlFunctionCall* call)
{
    if (call->arguments.size() > 2) {
        AppendExpression(text, call->arguments[2]);
    } else if (call->arguments.size() == 2) {  // with fewer, it has been reported
        ReportMissingArguments(call);
    }
}

std::string MorlTranslatorHLSL10::WriteFunctionName(const MorlFunctionCall* call)
{
    return FunctionName(kHlslFunctions, call);
}

std::string MorlTranslatorHLSL10::WriteVariable(MorlVariable* variable)
{
    return RenamedVariable(variableNames, variable);
}

std::string MorlTranslatorHLSL10::WriteBuffer(ENUM_TOKEN token)
{
    return Spell(kHlslBuffers, token);
}

std::string MorlTranslatorHLSL10::WriteVariableType(ENUM_TOKEN token)
{
    return Spell(kHlsl10Types, token);
}

std::string MorlTranslatorHLSL10::WriteVariableType(MorlDeclare* declare)
{
    return DeclaredType(*this, declare);
}

std::string MorlTranslatorHLSL10::ConcludeVariableType(ENUM_TOKEN token)
{
    return token == TOKEN_BLENDINDICES ? "uint4" : "";
}

std::string MorlTranslatorHLSL10::WriteOperator(ENUM_TOKEN token)
{
    return Spell(kOperators, token);
}

std::string MorlTranslatorHLSL10::WriteKeyword(ENUM_TOKEN token)
{
    return Spell(kKeywords, token);
}

// A sampler that the compiler numbers has a second line: its sampler state.
std::string MorlTranslatorHLSL10::WriteUniformList(std::vector<MorlDeclare*> uniforms)
{
    std::string text;
    ReserveLines(text, uniforms.size());
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
    std::string text = OpenHlslStruct(HlslStructsOf(program->stage).input);
    if (program->stage == kFragmentStage) {
        text += kDummyPosition;
        Sort(inputs);
    }
    text.append(HlslInputMembers(*this, inputs, variableNames)).append("};\n");
    return text;
}

std::string MorlTranslatorHLSL10::WriteOutputList(std::vector<MorlDeclare*> outputs)
{
    if (program->stage == kVertexStage) {
        Sort(outputs);
    }
    std::string text = OpenHlslStruct(HlslStructsOf(program->stage).output);
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
    text += OpenHlslMain(linked->stage);
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
    return HlslOutputLocal(program->stage);
}

std::string MorlTranslatorHLSL10::WriteRegister(MorlDeclare* declare, MorlRegister* binding)
{
    const HlslBindings bindings = {
        kHlsl10Semantics, 't', inputSemantics, outputSemantics, samplerRegisters, texcoordCounter};
    return HlslBinding(bindings, program->stage, declare, binding);
}

std::int32_t MorlTranslatorHLSL10::GetRegisterIndex(MorlDeclare* declare)
{
    return RegisterIndex(declare, program->stage, inputSemantics);
}

bool MorlTranslatorHLSL10::SortByRegister(MorlDeclare* a, MorlDeclare* b)
{
    return GetRegisterIndex(a) < GetRegisterIndex(b);
}

void MorlTranslatorHLSL10::Sort(std::vector<MorlDeclare*>& declares)
{
    SortByRegisterIndex(declares, program->stage, inputSemantics);
}

}  // namespace ns_ruke
