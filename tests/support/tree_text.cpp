// SPDX-License-Identifier: MIT
#include "support/tree_text.h"

#include <vector>

namespace morl_test {
namespace {

using namespace ns_ruke;

std::string Number(ENUM_TOKEN token)
{
    return token == TOKEN_NONE ? "-" : std::to_string(token);
}

std::string Operator(ENUM_TOKEN token)
{
    switch (token) {
    case TOKEN_INCREMENT:
        return "++";
    case TOKEN_DECREMENT:
        return "--";
    case TOKEN_PLUS:
        return "+";
    case TOKEN_MINUS:
        return "-";
    case TOKEN_MULTIPLY:
        return "*";
    case TOKEN_DIVIDE:
        return "/";
    case TOKEN_MODULO:
        return "%";
    case TOKEN_MEMBER:
        return ".";
    case TOKEN_LESS:
        return "<";
    case TOKEN_LESS_EQUAL:
        return "<=";
    case TOKEN_GREATER:
        return ">";
    case TOKEN_GREATER_EQUAL:
        return ">=";
    case TOKEN_EQUAL:
        return "==";
    case TOKEN_NOT_EQUAL:
        return "!=";
    case TOKEN_AND:
        return "&&";
    case TOKEN_OR:
        return "||";
    case TOKEN_INDEX:
        return "[]";
    case TOKEN_ASSIGN:
        return "=";
    case TOKEN_PLUS_ASSIGN:
        return "+=";
    case TOKEN_MINUS_ASSIGN:
        return "-=";
    case TOKEN_MULTIPLY_ASSIGN:
        return "*=";
    case TOKEN_DIVIDE_ASSIGN:
        return "/=";
    default:
        return Number(token);
    }
}

template <class T>
std::string List(const std::vector<T*>& items)
{
    std::string text = "{";
    for (const T* item : items) {
        text += (text.size() > 1 ? " " : "") + TreeText(item);
    }
    return text + "}";
}

std::string IfText(const std::string& word, const MorlIfSentence* sentence)
{
    return word + "(" + TreeText(sentence->condition) + ")" + List(sentence->sentences) +
           List(sentence->elseSentences);
}

std::string AssignText(const std::string& word, const MorlAssignSentence* sentence)
{
    return word + "(" + Number(sentence->varType) + " " + TreeText(sentence->target) + " " +
           Operator(sentence->operatorToken) + " " + TreeText(sentence->value) + ")" +
           (sentence->withSemicolon ? ";" : "");
}

std::string ForHead(const std::string& name, int start)
{
    return "#for(" + name + ":" + std::to_string(start) + ")";
}

}  // namespace

std::string TreeText(const MorlExpression* expression)
{
    if (expression == nullptr) {
        return "-";
    }
    switch (expression->unitType) {
    case TOKEN_FUNCTION_CALL: {
        const auto* call = static_cast<const MorlFunctionCall*>(expression);
        return call->name + ":" + Number(call->functionToken) + List(call->arguments);
    }
    case TOKEN_UNARY_OPERATION: {
        const auto* operation = static_cast<const MorlUnaryOperation*>(expression);
        return "(" + TreeText(operation->operand) + Operator(operation->operatorToken) + ")";
    }
    case TOKEN_BINARY_OPERATION: {
        const auto* operation = static_cast<const MorlBinaryOperation*>(expression);
        return "(" + TreeText(operation->left) + " " + Operator(operation->operatorToken) + " " +
               TreeText(operation->right) + ")";
    }
    case TOKEN_PARENTHESISE_EXPRESSION:
        return "<" +
               TreeText(static_cast<const MorlParenthesiseExpression*>(expression)->expression) +
               ">";
    case TOKEN_IDENTIFIER:
        return static_cast<const MorlVariable*>(expression)->name;
    case TOKEN_NUMBER:
        return static_cast<const MorlNumber*>(expression)->value;
    default:
        return "?" + Number(expression->unitType);
    }
}

std::string TreeText(const MorlSentence* sentence)
{
    if (sentence == nullptr) {
        return "-";
    }
    switch (sentence->unitType) {
    case TOKEN_EMPTY_SENTENCE:
        return "empty";
    case TOKEN_SPECIAL_SENTENCE:
        return "special(" + Number(static_cast<const MorlSpecialSentence*>(sentence)->keyword) +
               ")";
    case TOKEN_SINGLE_COMMENT:
        return "//[" + static_cast<const MorlSingleCommentSentence*>(sentence)->text + "]";
    case TOKEN_MULTI_COMMENT:
        return "/*[" + static_cast<const MorlMultiCommentSentence*>(sentence)->text + "]";
    case TOKEN_DEFINITION_SENTENCE: {
        const auto* definition = static_cast<const MorlDefinitionSentence*>(sentence);
        return "define(" + Number(definition->varType) + " " + definition->name + " " +
               TreeText(definition->arraySize) + ")";
    }
    case TOKEN_ASSIGN:
        return AssignText("assign", static_cast<const MorlAssignSentence*>(sentence));
    case TOKEN_MARCO_ASSIGN_SENTENCE:
        return AssignText("macro", static_cast<const MorlAssignSentence*>(sentence));
    case TOKEN_IF:
        return IfText("if", static_cast<const MorlIfSentence*>(sentence));
    case TOKEN_ELSE:
        return IfText("elseif", static_cast<const MorlIfSentence*>(sentence));
    case TOKEN_FOR: {
        const auto* loop = static_cast<const MorlForSentence*>(sentence);
        return "for(" + TreeText(loop->init) + " " + TreeText(loop->condition) + " " +
               TreeText(static_cast<const MorlSentence*>(loop->step)) + ")" + List(loop->sentences);
    }
    case TOKEN_MARCO_IF_SENTENCE: {
        const auto* group = static_cast<const MorlMarcoIfSentence*>(sentence);
        return "#if(" + TreeText(group->condition) + ")" + List(group->sentences) +
               List(group->elseSentences);
    }
    case TOKEN_MARCO_FOR_SENTENCE: {
        const auto* group = static_cast<const MorlMarcoForSentence*>(sentence);
        return ForHead(group->varName, group->start) + List(group->sentences);
    }
    default:
        return "?" + Number(sentence->unitType);
    }
}

std::string TreeText(const MorlDeclare* declare)
{
    if (declare->unitType == TOKEN_MARCO_IF_DECLARE) {
        const auto* group = static_cast<const MorlMarcoIfDeclare*>(declare);
        return "#if" + Number(group->bufferType) + "(" + TreeText(group->condition) + ")" +
               List(group->declares) + List(group->elseDeclares);
    }
    if (declare->unitType == TOKEN_MARCO_FOR_DECLARE) {
        const auto* group = static_cast<const MorlMarcoForDeclare*>(declare);
        return ForHead(group->varName, group->start) + List(group->declares);
    }
    const MorlRegister* binding = declare->registerBinding;
    return Number(declare->bufferType) + " " + Number(declare->varType) + " " + declare->name +
           (declare->arraySize != nullptr ? "[" + TreeText(declare->arraySize) + "]" : "") +
           (binding != nullptr ? " : " + Number(binding->registerToken) + " " + binding->name : "");
}

std::string TreeText(const MorlFunction* function)
{
    if (function->unitType == TOKEN_MARCO_IF_FUNCTION) {
        const auto* group = static_cast<const MorlMarcoIfFunction*>(function);
        return "#if(" + TreeText(group->condition) + ")" + List(group->functions) +
               List(group->elseFunctions);
    }
    if (function->unitType == TOKEN_MARCO_FOR_FUNCTION) {
        const auto* group = static_cast<const MorlMarcoForFunction*>(function);
        return ForHead(group->varName, group->start) + List(group->functions);
    }
    return Number(function->returnType) + " " + function->name + List(function->parameters) +
           List(function->sentences);
}

std::string TreeText(const MorlProgram& program)
{
    std::string text;
    const auto section = [&text](const std::string& name, const auto& items) {
        for (const auto* item : items) {
            text += name + " " + TreeText(item) + "\n";
        }
    };
    section("comment", program.comments);
    section("in", program.inputs);
    section("out", program.outputs);
    section("uniform", program.uniforms);
    section("function", program.functions);
    if (program.mainFunction != nullptr) {
        const MorlFunction& main = *program.mainFunction;
        text += "main " + Number(main.returnType) + " " + main.name + List(main.parameters) + "\n";
        section(" ", main.sentences);
    }
    return text;
}

}  // namespace morl_test
