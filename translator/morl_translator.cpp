// SPDX-License-Identifier: MIT
#include "morl/translator/morl_translator.h"

#include "morl/ast/ownership.h"
#include "morl/core/graphics_log.h"
#include "morl/core/limits.h"
#include "morl/translator/spellings.h"

#include <utility>

namespace ns_ruke {
namespace {

/// Bytes of a written statement, for an estimate of the whole.
constexpr std::size_t kUsualSentence = 64;

void AppendIndent(std::string& text, int indent)
{
    text.append(indent > 0 ? static_cast<std::size_t>(indent) : 0, '\t');
}

/// Appends a text that often is one character, which is cheaper to append by itself.
void AppendShort(std::string& text, const std::string& addition)
{
    if (addition.size() == 1) {
        text += addition.front();
    } else {
        text += addition;
    }
}

/// What `append` adds to an empty text.
template <class Append>
std::string Collect(const Append& append)
{
    std::string text;
    append(text);
    return text;
}

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

}  // namespace

MorlTranslator::MorlTranslator() = default;
MorlTranslator::~MorlTranslator() = default;

// Everything that can fail happens before the first change to `output`.
void MorlTranslator::WriteProgram(MorlProgram* newProgram,
                                  std::unordered_map<std::string, std::string>& semantics,
                                  std::unordered_map<std::string, int>& registers,
                                  ShaderOutput& output)
{
    program = newProgram;
    Reset();
    for (const auto& [name, semantic] : semantics) {
        inputSemantics[name] = semantic;
    }
    for (const auto& [name, number] : registers) {
        samplerRegisters[name] = number;
    }

    // A section may rename variables for those after it, so their order is also that of the calls.
    const std::string sections[] = {
        WriteFileHeader(),
        WriteUniformList(program->uniforms),
        WriteInputList(program->inputs),
        WriteOutputList(program->outputs),
        WriteFunctionList(program->functions),
        WriteMainFunction(program),
    };
    std::string code = Join(sections);

    std::vector<std::string> names = Names(program->uniforms);
    ReserveMore(output.uniformNames, names.size());
    if (!outputSemantics.empty()) {
        std::unordered_map<std::string, std::string> merged = output.semantics;
        for (const auto& [name, semantic] : outputSemantics) {
            merged[name] = semantic;
        }
        output.semantics.swap(merged);
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
    repeatingCalls = 0;
    repeatedText = 0;
}

std::string MorlTranslator::WriteFileHeader()
{
    return {};
}

std::string MorlTranslator::WriteFunctionCall(MorlFunctionCall* call)
{
    return Collect([&](std::string& text) { AppendPlainCall(text, call); });
}

void MorlTranslator::AppendFunctionCall(std::string& text, MorlFunctionCall* call)
{
    text += WriteFunctionCall(call);
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
    return Collect([&](std::string& text) { AppendSentences(text, function->sentences, 1); });
}

std::string MorlTranslator::WriteDeclare(MorlDeclare* /*declare*/)
{
    return {};
}

// Statements.

// Macro statements are the linker's; what it leaves of them is not written.
void MorlTranslator::AppendSentence(std::string& text, MorlSentence* sentence, int indent)
{
    if (sentence == nullptr) {
        return;
    }
    switch (sentence->unitType) {
    case TOKEN_EMPTY_SENTENCE:
        AppendEmptySentence(text, indent);
        break;
    case TOKEN_DEFINITION_SENTENCE:
        AppendDefinitionSentence(text, static_cast<MorlDefinitionSentence*>(sentence), indent);
        break;
    case TOKEN_ASSIGN:
        AppendAssignSentence(text, static_cast<MorlAssignSentence*>(sentence), indent);
        break;
    case TOKEN_IF:
    case TOKEN_ELSE:
        AppendIfSentence(text, static_cast<MorlIfSentence*>(sentence), indent);
        break;
    case TOKEN_FOR:
        AppendForSentence(text, static_cast<MorlForSentence*>(sentence), indent);
        break;
    case TOKEN_SINGLE_COMMENT:
        AppendSingleComment(text, static_cast<MorlSingleCommentSentence*>(sentence), indent);
        break;
    case TOKEN_MULTI_COMMENT:
        AppendMultiComment(text, static_cast<MorlMultiCommentSentence*>(sentence), indent);
        break;
    case TOKEN_SPECIAL_SENTENCE:
        AppendSpecialSentence(text, static_cast<MorlSpecialSentence*>(sentence), indent);
        break;
    default:
        break;
    }
}

void MorlTranslator::AppendSentences(std::string& text, const std::vector<MorlSentence*>& sentences,
                                     int indent)
{
    for (MorlSentence* sentence : sentences) {
        AppendSentence(text, sentence, indent);
    }
}

void MorlTranslator::AppendMainBody(std::string& text, const MorlProgram* linked)
{
    if (linked->mainFunction != nullptr) {
        text.reserve(text.size() + kUsualSentence * linked->mainFunction->sentences.size());
        AppendSentences(text, linked->mainFunction->sentences, 1);
    }
}

void MorlTranslator::AppendEmptySentence(std::string& text, int indent)
{
    AppendIndent(text, indent);
    text += "; \n";
}

void MorlTranslator::AppendSpecialSentence(std::string& text, MorlSpecialSentence* sentence,
                                           int indent)
{
    AppendIndent(text, indent);
    text += WriteKeyword(sentence->keyword);
    text += "; \n";
}

void MorlTranslator::AppendSingleComment(std::string& text, MorlSingleCommentSentence* sentence,
                                         int indent)
{
    AppendIndent(text, indent);
    text.append("//").append(sentence->text).append("\n");
}

void MorlTranslator::AppendMultiComment(std::string& text, MorlMultiCommentSentence* sentence,
                                        int indent)
{
    AppendIndent(text, indent);
    text.append("/*").append(sentence->text).append("*/\n");
}

void MorlTranslator::AppendDefinitionSentence(std::string& text, MorlDefinitionSentence* sentence,
                                              int indent)
{
    AppendIndent(text, indent);
    if (sentence->varType != TOKEN_NONE) {
        text += WriteVariableType(sentence->varType);
        text += ' ';
    }
    text += sentence->name;
    AppendDefinitionArray(text, sentence->arraySize);
    text += ";\n";
}

void MorlTranslator::AppendAssignSentence(std::string& text, MorlAssignSentence* sentence,
                                          int indent)
{
    AppendIndent(text, indent);
    if (sentence->varType != TOKEN_NONE) {
        text += WriteVariableType(sentence->varType);
        text += ' ';
    }
    AppendExpression(text, sentence->target);
    text += ' ';
    text += kAssignOperators.Text(sentence->operatorToken);
    text += ' ';
    AppendExpression(text, sentence->value);
    if (sentence->withSemicolon) {
        text += ";\n";
    }
}

void MorlTranslator::AppendIfSentence(std::string& text, MorlIfSentence* sentence, int indent)
{
    AppendIndent(text, indent);
    text += sentence->unitType == TOKEN_ELSE ? "else if(" : "if(";
    AppendExpression(text, sentence->condition);
    text += " ) {\n";
    AppendSentences(text, sentence->sentences, indent + 1);
    AppendIndent(text, indent);
    text += "} \n";
    if (sentence->elseSentences.empty()) {
        return;
    }
    AppendIndent(text, indent);
    text += "else { \n";
    AppendSentences(text, sentence->elseSentences, indent + 1);
    AppendIndent(text, indent);
    text += "} \n";
}

// The init statement brings its semicolon and a line break, which is taken back.
void MorlTranslator::AppendForSentence(std::string& text, MorlForSentence* sentence, int indent)
{
    AppendIndent(text, indent);
    text += "for(";
    AppendSentence(text, sentence->init, 0);
    text.pop_back();
    AppendExpression(text, sentence->condition);
    text += ';';
    if (sentence->step != nullptr) {
        AppendAssignSentence(text, sentence->step, 0);
    }
    text += " ) {\n";
    AppendSentences(text, sentence->sentences, indent + 1);
    AppendIndent(text, indent);
    text += "} \n";
}

void MorlTranslator::AppendDefinitionArray(std::string& text, MorlExpression* size)
{
    if (size != nullptr) {
        text += '[';
        AppendExpression(text, size);
        text += ']';
    }
}

// Expressions.

void MorlTranslator::AppendExpression(std::string& text, MorlExpression* expression)
{
    if (expression == nullptr) {
        return;
    }
    switch (expression->unitType) {
    case TOKEN_FUNCTION_CALL:
        AppendFunctionCall(text, static_cast<MorlFunctionCall*>(expression));
        break;
    case TOKEN_UNARY_OPERATION:
        AppendUnaryOperation(text, static_cast<MorlUnaryOperation*>(expression));
        break;
    case TOKEN_BINARY_OPERATION:
        AppendBinaryOperation(text, static_cast<MorlBinaryOperation*>(expression));
        break;
    case TOKEN_PARENTHESISE_EXPRESSION:
        AppendParenthesiseExpression(text, static_cast<MorlParenthesiseExpression*>(expression));
        break;
    case TOKEN_IDENTIFIER:
        AppendShort(text, WriteVariable(static_cast<MorlVariable*>(expression)));
        break;
    case TOKEN_NUMBER:
        text += static_cast<MorlNumber*>(expression)->value;
        break;
    default:
        break;
    }
}

void MorlTranslator::AppendCall(std::string& text, MorlFunctionCall* call, const CallForms& forms)
{
    const CallForm* form = forms.Find(call->functionToken);
    if (form == nullptr) {
        AppendPlainCall(text, call);
    } else {
        AppendFormedCall(text, *form,
                         WriteArguments(call, form->arguments, form->arguments, form->Repeats()));
    }
}

void MorlTranslator::AppendPlainCall(std::string& text, MorlFunctionCall* call)
{
    text += WriteFunctionName(call);
    text += '(';
    bool first = true;
    for (MorlExpression* argument : call->arguments) {
        if (!first) {
            text += ',';
        }
        first = false;
        AppendExpression(text, argument);
    }
    text += ')';
}

// The operator always stands in front, although the source has it behind its operand.
void MorlTranslator::AppendUnaryOperation(std::string& text, MorlUnaryOperation* operation)
{
    AppendShort(text, WriteOperator(operation->operatorToken));
    AppendExpression(text, operation->operand);
}

// No parentheses are added: the source's own are nodes of the tree.
void MorlTranslator::AppendBinaryOperation(std::string& text, MorlBinaryOperation* operation)
{
    AppendExpression(text, operation->left);
    if (operation->operatorToken == TOKEN_INDEX) {
        text += '[';
        AppendExpression(text, operation->right);
        text += ']';
        return;
    }
    AppendShort(text, WriteOperator(operation->operatorToken));
    AppendExpression(text, operation->right);
}

void MorlTranslator::AppendParenthesiseExpression(std::string& text,
                                                  MorlParenthesiseExpression* expression)
{
    text += '(';
    AppendExpression(text, expression->expression);
    text += ')';
}

void MorlTranslator::AppendGlobal(std::string& text, MorlDeclare* declare)
{
    text.append(WriteBuffer(declare->bufferType)).append(" ");
    text.append(WriteVariableType(declare)).append(" ").append(declare->name);
    AppendDefinitionArray(text, declare->arraySize);
}

CallArguments MorlTranslator::WriteArguments(MorlFunctionCall* call, std::size_t count,
                                             std::size_t repeated, std::size_t repeats)
{
    if (call->arguments.size() < count) {
        ReportMissingArguments(call);
    }
    CallArguments texts;
    std::size_t size = 0;
    for (std::size_t i = 0; i < count && i < call->arguments.size(); ++i) {
        const bool isRepeated = repeats > 0 && i < repeated;
        repeatingCalls += isRepeated ? 1 : 0;
        AppendExpression(texts[i], call->arguments[i]);
        repeatingCalls -= isRepeated ? 1 : 0;
        size += isRepeated ? texts[i].size() : 0;
    }
    if (size > 0 && repeatingCalls > 0 && !WithinRepeatedText(call, size * repeats)) {
        return {};
    }
    return texts;
}

// Only repetition inside of repetition counts: it alone grows exponentially.
bool MorlTranslator::WithinRepeatedText(const MorlFunctionCall* call, std::size_t size)
{
    if (repeatedText > kMaxRepeatedText) {
        return false;
    }
    repeatedText += size;
    if (repeatedText <= kMaxRepeatedText) {
        return true;
    }
    LogGraphicsError("Morl Compiler: expression too long: " + call->name);
    return false;
}

void MorlTranslator::ReportMissingArguments(const MorlFunctionCall* call)
{
    LogGraphicsError("Morl Compiler: not enough arguments: " + call->name);
}

// The writers as the interface names them.

std::string MorlTranslator::WriteSentence(MorlSentence* sentence, int indent)
{
    return Collect([&](std::string& text) { AppendSentence(text, sentence, indent); });
}

std::string MorlTranslator::WriteEmptySentence(MorlEmptySentence* /*sentence*/, int indent)
{
    return Collect([&](std::string& text) { AppendEmptySentence(text, indent); });
}

std::string MorlTranslator::WriteSpecialSentence(MorlSpecialSentence* sentence, int indent)
{
    return Collect([&](std::string& text) { AppendSpecialSentence(text, sentence, indent); });
}

std::string MorlTranslator::WriteSingleComment(MorlSingleCommentSentence* sentence, int indent)
{
    return Collect([&](std::string& text) { AppendSingleComment(text, sentence, indent); });
}

std::string MorlTranslator::WriteMultiComment(MorlMultiCommentSentence* sentence, int indent)
{
    return Collect([&](std::string& text) { AppendMultiComment(text, sentence, indent); });
}

std::string MorlTranslator::WriteDefinitionSentence(MorlDefinitionSentence* sentence, int indent)
{
    return Collect([&](std::string& text) { AppendDefinitionSentence(text, sentence, indent); });
}

std::string MorlTranslator::WriteAssignSentence(MorlAssignSentence* sentence, int indent)
{
    return Collect([&](std::string& text) { AppendAssignSentence(text, sentence, indent); });
}

std::string MorlTranslator::WriteIfSentence(MorlIfSentence* sentence, int indent)
{
    return Collect([&](std::string& text) { AppendIfSentence(text, sentence, indent); });
}

std::string MorlTranslator::WriteForSentence(MorlForSentence* sentence, int indent)
{
    return Collect([&](std::string& text) { AppendForSentence(text, sentence, indent); });
}

std::string MorlTranslator::WriteDefinitionArray(MorlExpression* size)
{
    return Collect([&](std::string& text) { AppendDefinitionArray(text, size); });
}

std::string MorlTranslator::WriteAssignOperator(ENUM_TOKEN token)
{
    return std::string(kAssignOperators.Text(token));
}

std::string MorlTranslator::WriteExpression(MorlExpression* expression)
{
    return Collect([&](std::string& text) { AppendExpression(text, expression); });
}

std::string MorlTranslator::WriteUnaryOperation(MorlUnaryOperation* operation)
{
    return Collect([&](std::string& text) { AppendUnaryOperation(text, operation); });
}

std::string MorlTranslator::WriteBinaryOperation(MorlBinaryOperation* operation)
{
    return Collect([&](std::string& text) { AppendBinaryOperation(text, operation); });
}

std::string MorlTranslator::WriteParenthesiseExpression(MorlParenthesiseExpression* expression)
{
    return Collect([&](std::string& text) { AppendParenthesiseExpression(text, expression); });
}

std::string MorlTranslator::WriteNumber(MorlNumber* number)
{
    return number->value;
}

}  // namespace ns_ruke
