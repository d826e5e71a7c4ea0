// SPDX-License-Identifier: MIT
#include "morl/translator/target_translator.h"

#include "morl/translator/internal/bindings.h"
#include "morl/translator/internal/target_spellings.h"
#include "morl/translator/internal/walk.h"

namespace ns_ruke {
namespace {

/// Estimated bytes per written statement, for reserving space.
constexpr std::size_t kUsualSentence = 64;

}  // namespace

MorlTargetTranslator::MorlTargetTranslator(const TargetSpellings& targetSpellings)
    : spellings(&targetSpellings)
{
}

MorlTargetTranslator::~MorlTargetTranslator() = default;

std::string MorlTargetTranslator::WriteFileHeader()
{
    return std::string(spellings->header);
}

std::string MorlTargetTranslator::WriteFunctionCall(MorlFunctionCall* call)
{
    return Collect(HookAnswers(*this), [&](auto& walk) { walk.Call(call, spellings->callForms); });
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

template <class Part>
void MorlTargetTranslator::Append(std::string& text, const Part& part)
{
    if (isPlain.value) {
        Walk<RecordAnswers> walk(RecordAnswers(*this, *spellings, variableNames), text);
        part(walk);
    } else {
        Walk<HookAnswers> walk(HookAnswers(*this), text);
        part(walk);
    }
}

void MorlTargetTranslator::AppendGlobal(std::string& text, MorlDeclare* declare)
{
    text.append(WriteBuffer(declare->bufferType)).append(" ");
    text.append(WriteVariableType(declare)).append(" ").append(declare->name);
    Append(text, [&](auto& walk) { walk.DefinitionArray(declare->arraySize); });
}

void MorlTargetTranslator::AppendMainBody(std::string& text, const MorlProgram* linked)
{
    if (linked->mainFunction != nullptr) {
        const std::vector<MorlSentence*>& sentences = linked->mainFunction->sentences;
        text.reserve(text.size() + kUsualSentence * sentences.size());
        Append(text, [&](auto& walk) { walk.Sentences(sentences, 1); });
    }
}

}  // namespace ns_ruke
