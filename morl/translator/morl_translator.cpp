// SPDX-License-Identifier: MIT
#include "morl/translator/morl_translator.h"

#include "morl/ast/internal/ownership.h"
#include "morl/translator/internal/target_spellings.h"
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

std::vector<std::string> Names(const std::vector<MorlDeclare*>& declares)
{
    std::vector<std::string> names;
    names.reserve(declares.size());
    for (const MorlDeclare* declare : declares) {
        names.push_back(declare->name);
    }
    return names;
}

using Semantics = std::unordered_map<std::string, std::string>;

/// Sets entries of a table in place. Everything that can fail happens in the constructor.
class SemanticsUpdate {
public:
    SemanticsUpdate(const Semantics& assigned, Semantics& target) : table(target)
    {
        for (const auto& [name, semantic] : assigned) {
            const auto entry = table.find(name);
            if (entry == table.end()) {
                added.emplace(name, semantic);
            } else {
                replaced.emplace_back(&entry->second, semantic);
            }
        }
        if (!added.empty()) {
            table.reserve(table.size() + added.size());
        }
    }

    void Apply() noexcept
    {
        for (auto& [entry, semantic] : replaced) {
            entry->swap(semantic);
        }
        table.merge(added);
    }

private:
    Semantics& table;
    Semantics added;
    std::vector<std::pair<std::string*, std::string>> replaced;
};

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
    FillOutput(Join(sections), output);
}

// Everything that can fail happens before the first change to `output`.
void MorlTranslator::FillOutput(std::string code, ShaderOutput& output) const
{
    std::vector<std::string> names = Names(program->uniforms);
    ReserveMore(output.uniformNames, names.size());
    if (!outputSemantics.empty()) {
        SemanticsUpdate(outputSemantics, output.semantics).Apply();
    }
    for (std::string& name : names) {
        output.uniformNames.push_back(std::move(name));
    }
    output.code = std::move(code);
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
    return Collect(HookAnswers(*this), [&](auto& walk) { walk.PlainCall(call); });
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
    return Collect(HookAnswers(*this), [&](auto& walk) { walk.Sentences(function->sentences, 1); });
}

std::string MorlTranslator::WriteDeclare(MorlDeclare* /*declare*/)
{
    return {};
}

// The parts of the walk, as the interface names them.

std::string MorlTranslator::WriteSentence(MorlSentence* sentence, int indent)
{
    return Collect(HookAnswers(*this), [&](auto& walk) { walk.Sentence(sentence, indent); });
}

std::string MorlTranslator::WriteEmptySentence(MorlEmptySentence* /*sentence*/, int indent)
{
    return Collect(HookAnswers(*this), [&](auto& walk) { walk.EmptySentence(indent); });
}

std::string MorlTranslator::WriteSpecialSentence(MorlSpecialSentence* sentence, int indent)
{
    return Collect(HookAnswers(*this), [&](auto& walk) { walk.SpecialSentence(sentence, indent); });
}

std::string MorlTranslator::WriteSingleComment(MorlSingleCommentSentence* sentence, int indent)
{
    return Collect(HookAnswers(*this), [&](auto& walk) { walk.SingleComment(sentence, indent); });
}

std::string MorlTranslator::WriteMultiComment(MorlMultiCommentSentence* sentence, int indent)
{
    return Collect(HookAnswers(*this), [&](auto& walk) { walk.MultiComment(sentence, indent); });
}

std::string MorlTranslator::WriteDefinitionSentence(MorlDefinitionSentence* sentence, int indent)
{
    return Collect(HookAnswers(*this),
                   [&](auto& walk) { walk.DefinitionSentence(sentence, indent); });
}

std::string MorlTranslator::WriteAssignSentence(MorlAssignSentence* sentence, int indent)
{
    return Collect(HookAnswers(*this), [&](auto& walk) { walk.AssignSentence(sentence, indent); });
}

std::string MorlTranslator::WriteIfSentence(MorlIfSentence* sentence, int indent)
{
    return Collect(HookAnswers(*this), [&](auto& walk) { walk.IfSentence(sentence, indent); });
}

std::string MorlTranslator::WriteForSentence(MorlForSentence* sentence, int indent)
{
    return Collect(HookAnswers(*this), [&](auto& walk) { walk.ForSentence(sentence, indent); });
}

std::string MorlTranslator::WriteDefinitionArray(MorlExpression* size)
{
    return Collect(HookAnswers(*this), [&](auto& walk) { walk.DefinitionArray(size); });
}

std::string MorlTranslator::WriteAssignOperator(ENUM_TOKEN token)
{
    return std::string(kAssignOperators.Text(token));
}

std::string MorlTranslator::WriteExpression(MorlExpression* expression)
{
    return Collect(HookAnswers(*this), [&](auto& walk) { walk.Expression(expression); });
}

std::string MorlTranslator::WriteUnaryOperation(MorlUnaryOperation* operation)
{
    return Collect(HookAnswers(*this), [&](auto& walk) { walk.UnaryOperation(operation); });
}

std::string MorlTranslator::WriteBinaryOperation(MorlBinaryOperation* operation)
{
    return Collect(HookAnswers(*this), [&](auto& walk) { walk.BinaryOperation(operation); });
}

std::string MorlTranslator::WriteParenthesiseExpression(MorlParenthesiseExpression* expression)
{
    return Collect(HookAnswers(*this),
                   [&](auto& walk) { walk.ParenthesiseExpression(expression); });
}

std::string MorlTranslator::WriteNumber(MorlNumber* number)
{
    return number->value;
}

}  // namespace ns_ruke
