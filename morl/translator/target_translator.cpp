// SPDX-License-Identifier: MIT
#include "morl/translator/target_translator.h"

#include "morl/translator/internal/bindings.h"
#include "morl/translator/internal/target_spellings.h"
#include "morl/translator/internal/walk.h"

namespace ns_ruke {

MorlTargetTranslator::MorlTargetTranslator(const TargetSpellings& targetSpellings)
    : spellings(&targetSpellings)
{
}

MorlTargetTranslator::~MorlTargetTranslator() = default;

void MorlTargetTranslator::Reset()
{
    MorlTranslator::Reset();
    texcoordCounter = 0;
}

std::string MorlTargetTranslator::WriteFileHeader()
{
    return std::string(spellings->header);
}

std::string MorlTargetTranslator::WriteFunctionCall(MorlFunctionCall* call)
{
    return Collect(*this, [&](auto& walk) { walk.Call(call, spellings->callForms); });
}

std::string MorlTargetTranslator::WriteFunctionName(const MorlFunctionCall* call)
{
    const SpellingTable& functions = spellings->functions;
    return functions.Has(call->functionToken) ? std::string(functions.Text(call->functionToken))
                                              : call->name;
}

std::string MorlTargetTranslator::WriteVariable(MorlVariable* variable)
{
    const auto renamed = variableNames.find(variable->name);
    return renamed != variableNames.end() ? renamed->second : variable->name;
}

std::string MorlTargetTranslator::WriteBuffer(ENUM_TOKEN token)
{
    return std::string(spellings->buffers.Text(token, program));
}

std::string MorlTargetTranslator::WriteVariableType(ENUM_TOKEN token)
{
    return std::string(spellings->types.Text(token));
}

std::string MorlTargetTranslator::WriteVariableType(MorlDeclare* declare)
{
    return declare->varType != TOKEN_AUTO ? WriteVariableType(declare->varType)
                                          : ConcludeVariableType(BindingToken(declare));
}

std::string MorlTargetTranslator::ConcludeVariableType(ENUM_TOKEN token)
{
    return std::string(spellings->autoTypes.Text(token));
}

std::string MorlTargetTranslator::WriteOperator(ENUM_TOKEN token)
{
    return std::string(kOperators.Text(token));
}

std::string MorlTargetTranslator::WriteKeyword(ENUM_TOKEN token)
{
    return std::string(kKeywords.Text(token));
}

std::string MorlTargetTranslator::WriteUniformList(Declares uniforms)
{
    return Collect(*this, [&](auto& walk) { spellings->hookSections.uniforms(walk, uniforms); });
}

std::string MorlTargetTranslator::WriteInputList(Declares inputs)
{
    return Collect(*this, [&](auto& walk) { spellings->hookSections.inputs(walk, inputs); });
}

std::string MorlTargetTranslator::WriteOutputList(Declares outputs)
{
    return Collect(*this, [&](auto& walk) { spellings->hookSections.outputs(walk, outputs); });
}

std::string MorlTargetTranslator::WriteMainFunction(MorlProgram* linked)
{
    return Collect(*this, [&](auto& walk) { spellings->hookSections.main(walk, *linked); });
}

std::string MorlTargetTranslator::WriteInputConvert(Declares inputs)
{
    return Collect(*this, [&](auto& walk) { spellings->hookSections.inputConvert(walk, inputs); });
}

std::string MorlTargetTranslator::WriteOutputConvert(Declares outputs)
{
    return Collect(*this,
                   [&](auto& walk) { spellings->hookSections.outputConvert(walk, outputs); });
}

std::string MorlTargetTranslator::WriteRegister(MorlDeclare* declare, MorlRegister* binding)
{
    return Collect(*this, [&](auto& walk) {
        const AssignedTexcoords texcoords = {outputSemantics, texcoordCounter};
        AppendBinding(walk.text, *spellings, walk.answers, texcoords, declare, binding);
    });
}

}  // namespace ns_ruke
