// SPDX-License-Identifier: MIT
#include "morl/translator/hlsl.h"

#include "morl/translator/hlsl_layout.h"
#include "morl/translator/shared_hooks.h"

namespace ns_ruke {

MorlTranslatorHLSL::MorlTranslatorHLSL() = default;
MorlTranslatorHLSL::~MorlTranslatorHLSL() = default;

void MorlTranslatorHLSL::Reset()
{
    MorlTranslator::Reset();
    texcoordCounter = 0;
}

std::string MorlTranslatorHLSL::WriteFunctionCall(MorlFunctionCall* call)
{
    std::string text;
    AppendFunctionCall(text, call);
    return text;
}

void MorlTranslatorHLSL::AppendFunctionCall(std::string& text, MorlFunctionCall* call)
{
    AppendCall(text, call, kHlslCallForms);
}

std::string MorlTranslatorHLSL::WriteFunctionName(const MorlFunctionCall* call)
{
    return FunctionName(kHlslFunctions, call);
}

std::string MorlTranslatorHLSL::WriteVariable(MorlVariable* variable)
{
    return RenamedVariable(variableNames, variable);
}

std::string MorlTranslatorHLSL::WriteBuffer(ENUM_TOKEN token)
{
    return Spell(kHlslBuffers, token);
}

std::string MorlTranslatorHLSL::WriteVariableType(ENUM_TOKEN token)
{
    return Spell(kHlslTypes, token);
}

std::string MorlTranslatorHLSL::WriteVariableType(MorlDeclare* declare)
{
    return DeclaredType(*this, declare);
}

std::string MorlTranslatorHLSL::ConcludeVariableType(ENUM_TOKEN token)
{
    return token == TOKEN_BLENDINDICES ? "float4" : "";
}

std::string MorlTranslatorHLSL::WriteOperator(ENUM_TOKEN token)
{
    return Spell(kOperators, token);
}

std::string MorlTranslatorHLSL::WriteKeyword(ENUM_TOKEN token)
{
    return Spell(kKeywords, token);
}

std::string MorlTranslatorHLSL::WriteUniformList(std::vector<MorlDeclare*> uniforms)
{
    std::string text;
    ReserveLines(text, uniforms.size());
    for (MorlDeclare* uniform : uniforms) {
        AppendGlobal(text, uniform);
        text.append(WriteRegister(uniform, uniform->registerBinding)).append(";\n");
    }
    return text;
}

std::string MorlTranslatorHLSL::WriteInputList(std::vector<MorlDeclare*> inputs)
{
    return OpenHlslStruct(HlslStructsOf(program->stage).input) +
           HlslInputMembers(*this, inputs, variableNames) + "};\n";
}

std::string MorlTranslatorHLSL::WriteOutputList(std::vector<MorlDeclare*> outputs)
{
    std::string text = OpenHlslStruct(HlslStructsOf(program->stage).output);
    for (MorlDeclare* output : outputs) {
        text += WriteOutputDeclare(output);
    }
    text += "};\n";
    return text;
}

std::string MorlTranslatorHLSL::WriteOutputDeclare(MorlDeclare* declare)
{
    return HlslOutputMember(*this, declare, variableNames);
}

std::string MorlTranslatorHLSL::WriteMainFunction(MorlProgram* linked)
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

std::string MorlTranslatorHLSL::WriteInputConvert(std::vector<MorlDeclare*> inputs)
{
    return HlslInputCopies(*this, inputs);
}

std::string MorlTranslatorHLSL::WriteOutputConvert(std::vector<MorlDeclare*> /*outputs*/)
{
    return HlslOutputLocal(program->stage);
}

std::string MorlTranslatorHLSL::WriteRegister(MorlDeclare* declare, MorlRegister* binding)
{
    const HlslBindings bindings = {
        kHlslSemantics, 's', inputSemantics, outputSemantics, samplerRegisters, texcoordCounter};
    return HlslBinding(bindings, program->stage, declare, binding);
}

}  // namespace ns_ruke
