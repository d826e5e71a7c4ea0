// SPDX-License-Identifier: MIT
// expression -> primary continuation
// primary    -> Name | Number | "(" expression ")" | "-" expression | call
// call       -> (Type | Intrinsic) "(" [ expression { "," expression } ] ")"
//
// Ownership: a function that receives an operand (`left`) takes it over; `parent` still belongs to
// the caller.
#include "morl/ast/internal/ownership.h"
#include "morl/core/messages.h"
#include "morl/parser/internal/make_unit.h"
#include "morl/parser/internal/nesting.h"
#include "morl/parser/morl_parser.h"

#include <memory>
#include <string_view>
#include <utility>

namespace ns_ruke {
// `parent` is the operation whose right side is being read; null at the top of an expression.
MorlExpression* MorlParser::ParseExpression(MorlBinaryOperation* parent)
{
    Nesting level(*this, 1);
    if (level.ReportTooDeep()) {
        return nullptr;
    }
    bool failed = false;
    MorlExpression* primary = ParsePrimary(failed);
    return failed ? nullptr : ParseNextExpression(parent, primary);
}

// If parentheses fail, the operand is null and the expression continues; any other failure ends it.
MorlExpression* MorlParser::ParsePrimary(bool& failed)
{
    std::string_view word;
    const ENUM_TOKEN token = ParseToken(word);
    if (token == TOKEN_IDENTIFIER) {
        auto variable = Make<MorlVariable>();
        variable->name = word;
        return variable.release();
    }
    if (token == TOKEN_NUMBER) {
        auto number = Make<MorlNumber>();
        number->value = word;
        return number.release();
    }
    if (IsVarType(token) || IsSystemFunction(token)) {
        MorlFunctionCall* call = ParseFunctionCall(token, word);
        failed = call == nullptr;
        return call;
    }
    if (token == TOKEN_LEFT_PARENTHESIS) {
        return ParseParenthesiseExpression();
    }
    if (token == TOKEN_MINUS) {
        return ParsePrefixMinus();
    }
    LogErrorAndSkipLine(messages::kExpressionError);
    failed = true;
    return nullptr;
}

// A prefix minus is a subtraction without a left operand, so it takes part in the climb below.
MorlExpression* MorlParser::ParsePrefixMinus()
{
    return ParseOperation(nullptr, nullptr, TOKEN_MINUS);
}

// Whether the next character cannot continue an expression. This is only a shortcut, for the
// characters that follow most operands; nothing is consumed.
bool MorlParser::OperandEnds() const
{
    const char* next = text + position;
    while (IsSpace(*next)) {
        ++next;
    }
    return *next == ')' || *next == ',' || *next == ';' || *next == ']';
}

// continuation -> [ BinaryOperator expression | "[" expression "]" continuation | "++" | "--" ]
MorlExpression* MorlParser::ParseNextExpression(MorlBinaryOperation* parent, MorlExpression* left)
{
    if (OperandEnds()) {
        return left;
    }
    std::unique_ptr<MorlExpression> operand(left);
    PushLoction();
    std::string_view word;
    const ENUM_TOKEN token = ParseToken(word);
    if (IsBinaryOperator(token)) {
        return ParseOperation(parent, operand.release(), token);
    }
    if (token == TOKEN_LEFT_BRACKET) {
        return ParseIndex(operand.release());
    }
    if (IsUnaryOperator(token)) {
        auto operation = Make<MorlUnaryOperation>();
        operation->operatorToken = token;
        operation->operand = operand.release();
        return operation.release();
    }
    PopLoction();
    return operand.release();
}

// Reads the right side of an operation. Precedence climbing looks back one level only: if `parent`
// binds at least as tightly as this operator, `left` completes the parent, and this operation
// replaces the parent, taking it as its left operand. The call that is reading the parent's right
// side then finds its own operation in `adopted` and returns the result unchanged.
//
// The parent is attached only after everything that can throw, so that an operation never has two
// owners.
MorlExpression* MorlParser::ParseOperation(MorlBinaryOperation* parent, MorlExpression* left,
                                           ENUM_TOKEN operatorToken)
{
    std::unique_ptr<MorlExpression> operand(left);
    auto operation = Make<MorlBinaryOperation>();
    operation->operatorToken = operatorToken;
    const bool adopts = parent != nullptr && GetOperatorPriority(parent->operatorToken) >=
                                                 GetOperatorPriority(operatorToken);
    (adopts ? parent->right : operation->left) = operand.release();

    adopted = nullptr;
    MorlExpression* result = ParseExpression(operation.get());
    if (adopted != operation.get()) {
        operation->right = result;
        result = operation.get();
    }
    if (adopts) {
        operation->left = parent;
        adopted = parent;
    }
    operation.release();
    return result;
}

// Whatever follows the index is parsed without a parent.
MorlExpression* MorlParser::ParseIndex(MorlExpression* left)
{
    std::unique_ptr<MorlExpression> operand(left);
    auto index = Make<MorlBinaryOperation>();
    index->operatorToken = TOKEN_INDEX;
    index->left = operand.release();
    Nesting level(*this, 1);
    if (level.ReportTooDeep()) {
        return index.release();
    }
    index->right = ParseExpression(nullptr);
    CheckSkip(']');
    return ParseNextExpression(nullptr, index.release());
}

MorlParenthesiseExpression* MorlParser::ParseParenthesiseExpression()
{
    const std::uint32_t start = tokenStart;
    std::unique_ptr<MorlExpression> inner(ParseExpression(nullptr));
    if (!CheckSkip(')')) {
        return nullptr;
    }
    auto parenthesis = Make<MorlParenthesiseExpression>();
    parenthesis->offset = start;
    parenthesis->expression = inner.release();
    return parenthesis.release();
}

MorlFunctionCall* MorlParser::ParseFunctionCall(ENUM_TOKEN token, std::string_view name)
{
    Nesting level(*this, 1);  // calls have the largest frames of all expressions
    if (level.ReportTooDeep()) {
        return nullptr;
    }
    auto call = Make<MorlFunctionCall>();
    if (!IsVarType(token) && !IsSystemFunction(token)) {
        return call.release();
    }
    call->name = name;
    call->functionToken = token;
    return ParseParameter(-1, call->arguments) ? call.release() : nullptr;
}

// `expectedCount` below zero stands for any number of arguments. On failure the arguments read so
// far stay in the list.
bool MorlParser::ParseParameter(int expectedCount, std::vector<MorlExpression*>& arguments)
{
    if (!CheckSkip('(')) {
        return false;
    }
    SkipSpace();
    int count = 0;
    if (Current() != ')') {
        do {
            if (count > 0 && !CheckSkip(',')) {
                return false;
            }
            std::unique_ptr<MorlExpression> argument(ParseExpression(nullptr));
            if (!argument) {
                LogErrorAndSkipLine(messages::kParameterFailed);
                return false;
            }
            AppendOwned(arguments, std::move(argument));
            ++count;
            SkipSpace();
        } while (Current() != ')');
    }
    if (expectedCount >= 0 && count != expectedCount) {
        LogErrorAndSkipLine(messages::kParameterCount);
        return false;
    }
    return CheckSkip(')');
}

}  // namespace ns_ruke
