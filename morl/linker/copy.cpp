// SPDX-License-Identifier: MIT
// What is added to the linked program: deep copies with the loop values substituted into names, or,
// where it may share, the nodes' own declarations and statements.
#include "morl/ast/internal/ownership.h"
#include "morl/ast/internal/unit_memory.h"
#include "morl/core/limits.h"
#include "morl/core/string_helper.h"
#include "morl/linker/morl_linker.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string_view>

namespace ns_ruke {
namespace {

/// Reads a name that begins with a digit from 0 to 3 as vector components: for the loop value 2,
/// v.N becomes v.b.
void ApplySwizzle(std::string& name)
{
    if (name.empty() || name.front() < '0' || name.front() > '3') {
        return;
    }
    constexpr std::string_view kComponents = "rgba";
    for (char& c : name) {
        if (c >= '0' && c <= '3') {
            c = kComponents[static_cast<std::size_t>(c - '0')];
        }
    }
}

}  // namespace

template <class Unit>
Unit* MorlLinker::CopyChild(const Unit* unit)
{
    return static_cast<Unit*>(CopyMorlUnit(unit));
}

// Adds an element to a list of the linked program: itself if that is allowed and a copy would be
// the same, otherwise a copy. `owner` takes the copies; null: the list owns its elements.
// What is shared is charged like its copy, so that kMaxLinkWork means the same for every program.
template <class Unit>
void MorlLinker::Append(std::vector<Unit*>& list, Unit* unit, std::vector<MorlUnit*>* owner,
                        bool isConstant)
{
    if (owner != nullptr && isConstant && loopValues.empty()) {
        work += unit->copyWork;
        list.push_back(unit);
        return;
    }
    std::unique_ptr<Unit> copy(CopyElement(unit));
    if (owner == nullptr) {
        AppendOwned(list, std::move(copy));
        return;
    }
    Unit* added = copy.get();
    AppendOwned(*owner, std::move(copy));
    list.push_back(added);
}

MorlDeclare* MorlLinker::CopyElement(const MorlDeclare* declare)
{
    work += kLinesOfDeclare;
    MorlDeclare* copy = CopyDeclare(declare);
    copy->offset = declare->offset;
    return copy;
}

MorlSentence* MorlLinker::CopyElement(const MorlSentence* sentence)
{
    work += sentence != nullptr ? sentence->lineWork : 0;
    return CopyChild(sentence);
}

void MorlLinker::AppendDeclare(std::vector<MorlDeclare*>& declares, MorlDeclare* declare)
{
    Append(declares, declare, sharing != nullptr ? &sharing->ownership.copies : nullptr, true);
}

// Copied statements own what they contain, so only the list of `main` may share.
void MorlLinker::AppendSentence(std::vector<MorlSentence*>& sentences, MorlSentence* sentence)
{
    const bool isMain = sharing != nullptr && &sentences == &sharing->mainFunction->sentences;
    const bool isConstant = sentence != nullptr && !sentence->mayExpand;
    Append(sentences, sentence, isMain ? &sharing->ownership.copies : nullptr, isConstant);
}

MorlUnit* MorlLinker::CopyMorlUnit(const MorlUnit* unit)
{
    ++work;
    MorlUnit* copy = unit != nullptr ? CopyByKind(unit) : nullptr;
    if (copy != nullptr) {
        copy->offset = unit->offset;
    }
    return copy;
}

// Macro groups, macro assignments and programs are not copied: they give null.
MorlUnit* MorlLinker::CopyByKind(const MorlUnit* unit)
{
    switch (unit->unitType) {
    case TOKEN_FUNCTION:
        return CopyFunction(static_cast<const MorlFunction*>(unit));
    case TOKEN_DECLARE:
        return CopyDeclare(static_cast<const MorlDeclare*>(unit));
    case TOKEN_REGISTER:
        return CopyRegister(static_cast<const MorlRegister*>(unit));
    case TOKEN_FUNCTION_CALL:
        return CopyFunctionCall(static_cast<const MorlFunctionCall*>(unit));
    case TOKEN_UNARY_OPERATION:
        return CopyUnaryOperation(static_cast<const MorlUnaryOperation*>(unit));
    case TOKEN_BINARY_OPERATION:
        return CopyBinaryOperation(static_cast<const MorlBinaryOperation*>(unit));
    case TOKEN_PARENTHESISE_EXPRESSION:
        return CopyParenthesiseExpression(static_cast<const MorlParenthesiseExpression*>(unit));
    case TOKEN_IDENTIFIER:
        return CopyVariable(static_cast<const MorlVariable*>(unit));
    case TOKEN_NUMBER:
        return CopyNumber(static_cast<const MorlNumber*>(unit));
    case TOKEN_EMPTY_SENTENCE:
        return CopyEmptySentence(static_cast<const MorlEmptySentence*>(unit));
    case TOKEN_DEFINITION_SENTENCE:
        return CopyDefinitionSentence(static_cast<const MorlDefinitionSentence*>(unit));
    case TOKEN_ASSIGN:
        return CopyAssignSentence(static_cast<const MorlAssignSentence*>(unit));
    case TOKEN_IF:
        return CopyIfSentence(static_cast<const MorlIfSentence*>(unit));
    case TOKEN_ELSE:
        return CopyElseIfSentence(static_cast<const MorlElseIfSentence*>(unit));
    case TOKEN_FOR:
        return CopyForSentence(static_cast<const MorlForSentence*>(unit));
    case TOKEN_SINGLE_COMMENT:
        return CopySingleCommentSentence(static_cast<const MorlSingleCommentSentence*>(unit));
    case TOKEN_MULTI_COMMENT:
        return CopyMultiCommentSentence(static_cast<const MorlMultiCommentSentence*>(unit));
    case TOKEN_SPECIAL_SENTENCE:
        return CopySpecialSentence(static_cast<const MorlSpecialSentence*>(unit));
    default:
        return nullptr;
    }
}

// Loop values are substituted only into the names of variables, declarations and local definitions.
void MorlLinker::CopyName(const std::string& from, std::string& to)
{
    to = from;
    if (!loopValues.empty() && HasWorkLeftOrReport(from)) {
        SubstituteLoopValues(to);
    }
    work += to.size() / kBytesPerWork;
}

// Replaces every occurrence of each loop name by its value, as plain text, one name after the other
// in the order of the map.
void MorlLinker::SubstituteLoopValues(std::string& name)
{
    for (const auto& [loopName, value] : loopValues) {
        work += 1 + name.size() / kBytesPerWork;
        if (name.find(loopName) != std::string::npos) {
            name = StringHelper::ReplaceAll(name, loopName, value);
            work += name.size() / kBytesPerWork;
        }
    }
}

MorlVariable* MorlLinker::CopyVariable(const MorlVariable* variable)
{
    auto copy = MakeUnit<MorlVariable>();
    CopyName(variable->name, copy->name);
    ApplySwizzle(copy->name);
    return copy.release();
}

MorlNumber* MorlLinker::CopyNumber(const MorlNumber* number)
{
    auto copy = MakeUnit<MorlNumber>();
    copy->value = number->value;
    work += copy->value.size() / kBytesPerWork;
    return copy.release();
}

MorlFunctionCall* MorlLinker::CopyFunctionCall(const MorlFunctionCall* call)
{
    auto copy = MakeUnit<MorlFunctionCall>();
    copy->name = call->name;
    copy->functionToken = call->functionToken;
    copy->arguments.reserve(call->arguments.size());
    for (const MorlExpression* argument : call->arguments) {
        copy->arguments.push_back(CopyChild(argument));
    }
    return copy.release();
}

MorlUnaryOperation* MorlLinker::CopyUnaryOperation(const MorlUnaryOperation* operation)
{
    auto copy = MakeUnit<MorlUnaryOperation>();
    copy->operatorToken = operation->operatorToken;
    copy->operand = CopyChild(operation->operand);
    return copy.release();
}

MorlBinaryOperation* MorlLinker::CopyBinaryOperation(const MorlBinaryOperation* operation)
{
    auto copy = MakeUnit<MorlBinaryOperation>();
    copy->operatorToken = operation->operatorToken;
    copy->left = CopyChild(operation->left);
    copy->right = CopyChild(operation->right);
    return copy.release();
}

MorlParenthesiseExpression* MorlLinker::CopyParenthesiseExpression(
    const MorlParenthesiseExpression* expression)
{
    auto copy = MakeUnit<MorlParenthesiseExpression>();
    copy->expression = nullptr;
    copy->expression = CopyChild(expression->expression);
    return copy.release();
}

MorlRegister* MorlLinker::CopyRegister(const MorlRegister* binding)
{
    auto copy = MakeUnit<MorlRegister>();
    copy->registerToken = binding->registerToken;
    copy->name = binding->name;
    return copy.release();
}

// The copy is a plain declaration, whatever kind the source is.
MorlDeclare* MorlLinker::CopyDeclare(const MorlDeclare* declare)
{
    auto copy = MakeUnit<MorlDeclare>();
    copy->bufferType = declare->bufferType;
    copy->varType = declare->varType;
    CopyName(declare->name, copy->name);
    copy->arraySize = CopyChild(declare->arraySize);
    copy->registerBinding = CopyChild(declare->registerBinding);
    return copy.release();
}

MorlEmptySentence* MorlLinker::CopyEmptySentence(const MorlEmptySentence* /*sentence*/)
{
    return MakeUnit<MorlEmptySentence>().release();
}

MorlSpecialSentence* MorlLinker::CopySpecialSentence(const MorlSpecialSentence* sentence)
{
    auto copy = MakeUnit<MorlSpecialSentence>();
    copy->keyword = sentence->keyword;
    return copy.release();
}

MorlSingleCommentSentence* MorlLinker::CopySingleCommentSentence(
    const MorlSingleCommentSentence* sentence)
{
    auto copy = MakeUnit<MorlSingleCommentSentence>();
    copy->text = sentence->text;
    work += copy->text.size() / kBytesPerWork;
    return copy.release();
}

MorlMultiCommentSentence* MorlLinker::CopyMultiCommentSentence(
    const MorlMultiCommentSentence* sentence)
{
    auto copy = MakeUnit<MorlMultiCommentSentence>();
    copy->text = sentence->text;
    work += copy->text.size() / kBytesPerWork;
    return copy.release();
}

MorlDefinitionSentence* MorlLinker::CopyDefinitionSentence(const MorlDefinitionSentence* sentence)
{
    auto copy = MakeUnit<MorlDefinitionSentence>();
    copy->varType = sentence->varType;
    CopyName(sentence->name, copy->name);
    copy->arraySize = CopyChild(sentence->arraySize);
    return copy.release();
}

MorlAssignSentence* MorlLinker::CopyAssignSentence(const MorlAssignSentence* sentence)
{
    auto copy = MakeUnit<MorlAssignSentence>();
    copy->varType = sentence->varType;
    copy->target = CopyChild(sentence->target);
    copy->operatorToken = sentence->operatorToken;
    copy->value = CopyChild(sentence->value);
    copy->withSemicolon = sentence->withSemicolon;
    return copy.release();
}

MorlIfSentence* MorlLinker::CopyIfSentence(const MorlIfSentence* sentence)
{
    auto copy = MakeUnit<MorlIfSentence>();
    CopyBranches(sentence, *copy);
    return copy.release();
}

MorlElseIfSentence* MorlLinker::CopyElseIfSentence(const MorlElseIfSentence* sentence)
{
    auto copy = MakeUnit<MorlElseIfSentence>();
    CopyBranches(sentence, *copy);
    return copy.release();
}

// Expands the macro statements in the branches, with the macros that were last set by UseMacros.
void MorlLinker::CopyBranches(const MorlIfSentence* from, MorlIfSentence& to)
{
    to.condition = CopyChild(from->condition);
    to.sentences.reserve(from->sentences.size());
    for (MorlSentence* sentence : from->sentences) {
        ProcessSentence(macroValues, to.sentences, sentence, false);
    }
    to.endOffset = from->endOffset;
    to.elseOffset = from->elseOffset;
    to.elseEndOffset = from->elseEndOffset;
    to.elseSentences.reserve(from->elseSentences.size());
    for (MorlSentence* sentence : from->elseSentences) {
        ProcessSentence(macroValues, to.elseSentences, sentence, false);
    }
}

// Macro statements in the body are not expanded; they leave null entries.
MorlForSentence* MorlLinker::CopyForSentence(const MorlForSentence* sentence)
{
    auto copy = MakeUnit<MorlForSentence>();
    copy->init = CopyChild(sentence->init);
    copy->condition = CopyChild(sentence->condition);
    copy->step = CopyChild(sentence->step);
    copy->endOffset = sentence->endOffset;
    copy->sentences.reserve(sentence->sentences.size());
    for (const MorlSentence* member : sentence->sentences) {
        copy->sentences.push_back(CopyElement(member));
    }
    return copy.release();
}

MorlFunction* MorlLinker::CopyFunction(const MorlFunction* function)
{
    auto copy = MakeUnit<MorlFunction>();
    copy->returnType = function->returnType;
    copy->name = function->name;
    copy->parameters.reserve(function->parameters.size());
    for (const MorlDeclare* parameter : function->parameters) {
        copy->parameters.push_back(CopyChild(parameter));
    }
    copy->sentences.reserve(function->sentences.size());
    for (const MorlSentence* sentence : function->sentences) {
        copy->sentences.push_back(CopyChild(sentence));
    }
    return copy.release();
}

}  // namespace ns_ruke
