// SPDX-License-Identifier: MIT
#include "morl/translator/morl_translator.h"

#include "morl/translator/internal/fill_output.h"
#include "morl/translator/internal/walk.h"

#include <utility>

namespace ns_ruke {
namespace {

template <std::size_t count>
std::string Join(const std::string (&texts)[count])
{
    std::size_t size = 0;
    for (const std::string& text : texts) {
        size += text.size();
    }
    std::string joined;
    joined.reserve(size);
    for (const std::string& text : texts) {
        joined += text;
    }
    return joined;
}

}  // namespace

MorlTranslator::MorlTranslator() = default;
MorlTranslator::~MorlTranslator() = default;

MorlTranslator::Writing::Writing(MorlTranslator& translator) : repetition(translator.repetition)
{
    if (repetition.operations == 0) {
        repetition.nested = 0;
        repetition.bytes = 0;
    }
    ++repetition.operations;
}

void MorlTranslator::WriteProgram(MorlProgram* newProgram,
                                  std::unordered_map<std::string, std::string>& semantics,
                                  std::unordered_map<std::string, int>& registers,
                                  ShaderOutput& output)
{
    const Writing writing(*this);
    program = newProgram;
    Reset();
    for (const auto& [name, semantic] : semantics) {
        inputSemantics[name] = semantic;
    }
    for (const auto& [name, number] : registers) {
        samplerRegisters[name] = number;
    }

    // These calls must be made in the order of the sections, because a section may rename variables
    // for those after it.
    const std::string sections[] = {
        WriteFileHeader(),
        WriteUniformList(program->uniforms),
        WriteInputList(program->inputs),
        WriteOutputList(program->outputs),
        WriteFunctionList(program->functions),
        WriteMainFunction(program),
    };
    FillOutput(Join(sections), program->uniforms, outputSemantics, output);
}

void MorlTranslator::Reset()
{
    samplerRegisters.clear();
    variableNames.clear();
    inputSemantics.clear();
    outputSemantics.clear();
}

std::string MorlTranslator::WriteFileHeader()
{
    return {};
}

std::string MorlTranslator::WriteFunctionCall(MorlFunctionCall* call)
{
    return Collect(*this, nullptr, [&](Walk& walk) { walk.PlainCall(call); });
}

std::string MorlTranslator::WriteVariable(MorlVariable* variable)
{
    return variable->name;
}

// The bodies of all nodes are in `main`; other functions are never written.
std::string MorlTranslator::WriteFunctionList(std::vector<MorlFunction*> /*functions*/)
{
    return {};
}

std::string MorlTranslator::WriteFunction(MorlFunction* function)
{
    return Collect(*this, nullptr, [&](Walk& walk) { walk.Sentences(function->sentences, 1); });
}

std::string MorlTranslator::WriteDeclare(MorlDeclare* /*declare*/)
{
    return {};
}

// The parts of the walk, as the interface names them.

std::string MorlTranslator::WriteSentence(MorlSentence* sentence, int indent)
{
    return Collect(*this, nullptr, [&](Walk& walk) { walk.Sentence(sentence, indent); });
}

std::string MorlTranslator::WriteEmptySentence(MorlEmptySentence* /*sentence*/, int indent)
{
    return Collect(*this, nullptr, [&](Walk& walk) { walk.EmptySentence(indent); });
}

std::string MorlTranslator::WriteSpecialSentence(MorlSpecialSentence* sentence, int indent)
{
    return Collect(*this, nullptr, [&](Walk& walk) { walk.SpecialSentence(sentence, indent); });
}

std::string MorlTranslator::WriteSingleComment(MorlSingleCommentSentence* sentence, int indent)
{
    return Collect(*this, nullptr, [&](Walk& walk) { walk.SingleComment(sentence, indent); });
}

std::string MorlTranslator::WriteMultiComment(MorlMultiCommentSentence* sentence, int indent)
{
    return Collect(*this, nullptr, [&](Walk& walk) { walk.MultiComment(sentence, indent); });
}

std::string MorlTranslator::WriteDefinitionSentence(MorlDefinitionSentence* sentence, int indent)
{
    return Collect(*this, nullptr, [&](Walk& walk) { walk.DefinitionSentence(sentence, indent); });
}

std::string MorlTranslator::WriteAssignSentence(MorlAssignSentence* sentence, int indent)
{
    return Collect(*this, nullptr, [&](Walk& walk) { walk.AssignSentence(sentence, indent); });
}

std::string MorlTranslator::WriteIfSentence(MorlIfSentence* sentence, int indent)
{
    return Collect(*this, nullptr, [&](Walk& walk) { walk.IfSentence(sentence, indent); });
}

std::string MorlTranslator::WriteForSentence(MorlForSentence* sentence, int indent)
{
    return Collect(*this, nullptr, [&](Walk& walk) { walk.ForSentence(sentence, indent); });
}

std::string MorlTranslator::WriteDefinitionArray(MorlExpression* size)
{
    return Collect(*this, nullptr, [&](Walk& walk) { walk.DefinitionArray(size); });
}

std::string MorlTranslator::WriteAssignOperator(ENUM_TOKEN token)
{
    return std::string(kAssignOperators.Text(token));
}

std::string MorlTranslator::WriteExpression(MorlExpression* expression)
{
    return Collect(*this, nullptr, [&](Walk& walk) { walk.Expression(expression); });
}

std::string MorlTranslator::WriteUnaryOperation(MorlUnaryOperation* operation)
{
    return Collect(*this, nullptr, [&](Walk& walk) { walk.UnaryOperation(operation); });
}

std::string MorlTranslator::WriteBinaryOperation(MorlBinaryOperation* operation)
{
    return Collect(*this, nullptr, [&](Walk& walk) { walk.BinaryOperation(operation); });
}

std::string MorlTranslator::WriteParenthesiseExpression(MorlParenthesiseExpression* expression)
{
    return Collect(*this, nullptr, [&](Walk& walk) { walk.ParenthesiseExpression(expression); });
}

std::string MorlTranslator::WriteNumber(MorlNumber* number)
{
    return number->value;
}

}  // namespace ns_ruke
