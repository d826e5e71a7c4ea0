// SPDX-License-Identifier: MIT
#include "morl/translator/target_translator.h"

#include "morl/translator/internal/walk.h"

namespace ns_ruke {

MorlTargetTranslator::MorlTargetTranslator(const TargetRecord& targetRecord) : record(&targetRecord)
{
}

MorlTargetTranslator::~MorlTargetTranslator() = default;

std::string MorlTargetTranslator::Collect(const WalkPart& part)
{
    return ns_ruke::Collect(*this, record, part);
}

void MorlTargetTranslator::Reset()
{
    MorlTranslator::Reset();
    texcoordCounter = 0;
}

std::string MorlTargetTranslator::WriteFileHeader()
{
    return std::string(record->header);
}

std::string MorlTargetTranslator::WriteFunctionCall(MorlFunctionCall* call)
{
    return Collect([&](Walk& walk) { walk.Call(call); });
}

std::string MorlTargetTranslator::WriteFunctionName(const MorlFunctionCall* call)
{
    const SpellingTable& functions = record->functions;
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
    return std::string(record->buffers.Text(token, program));
}

std::string MorlTargetTranslator::WriteVariableType(ENUM_TOKEN token)
{
    return std::string(record->types.Text(token));
}

std::string MorlTargetTranslator::WriteVariableType(MorlDeclare* declare)
{
    return declare->varType != TOKEN_AUTO ? WriteVariableType(declare->varType)
                                          : ConcludeVariableType(BindingToken(declare));
}

std::string MorlTargetTranslator::ConcludeVariableType(ENUM_TOKEN token)
{
    return std::string(record->autoTypes.Text(token));
}

std::string MorlTargetTranslator::WriteOperator(ENUM_TOKEN token)
{
    return std::string(kOperators.Text(token));
}

std::string MorlTargetTranslator::WriteKeyword(ENUM_TOKEN token)
{
    return std::string(kSpecialWords.Text(token));
}

std::string MorlTargetTranslator::WriteUniformList(Declares uniforms)
{
    return Collect([&](Walk& walk) { record->layout.uniforms(walk, uniforms); });
}

std::string MorlTargetTranslator::WriteInputList(Declares inputs)
{
    return Collect([&](Walk& walk) { record->layout.inputs(walk, inputs); });
}

std::string MorlTargetTranslator::WriteOutputList(Declares outputs)
{
    return Collect([&](Walk& walk) { record->layout.outputs(walk, outputs); });
}

std::string MorlTargetTranslator::WriteMainFunction(MorlProgram* linked)
{
    return Collect([&](Walk& walk) { walk.Main(*linked); });
}

std::string MorlTargetTranslator::WriteInputConvert(Declares inputs)
{
    return Collect([&](Walk& walk) { record->layout.inputConvert(walk, inputs); });
}

std::string MorlTargetTranslator::WriteOutputConvert(Declares outputs)
{
    return Collect([&](Walk& walk) { record->layout.outputConvert(walk, outputs); });
}

std::string MorlTargetTranslator::WriteRegister(MorlDeclare* declare, MorlRegister* binding)
{
    return Collect([&](Walk& walk) { walk.Binding(declare, binding, texcoordCounter); });
}

}  // namespace ns_ruke
