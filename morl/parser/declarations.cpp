// SPDX-License-Identifier: MIT
// declare    -> ("uniform" | "in" | "out") Type Name [ "[" expression "]" | ":" register ] ";"
// register   -> Semantic | "(" Name ")"
// function   -> (Type | "void") Name "(" [ parameter { "," parameter } ] ")" "{" { sentence } "}"
// parameter  -> Type Name
#include "morl/ast/internal/ownership.h"
#include "morl/core/messages.h"
#include "morl/parser/internal/make_unit.h"
#include "morl/parser/morl_parser.h"

#include <memory>
#include <string_view>

namespace ns_ruke {

MorlDeclare* MorlParser::ParseGlobalDeclare(ENUM_TOKEN bufferToken)
{
    auto declare = Make<MorlDeclare>();
    declare->bufferType = bufferToken;
    if (!ParseVarDeclare(declare->varType, declare->name)) {
        return nullptr;
    }
    std::string_view word;
    switch (ParseToken(word)) {
    case TOKEN_COLON:
        declare->registerBinding = ParseRegister();
        return CheckSkip(';') ? declare.release() : nullptr;
    case TOKEN_LEFT_BRACKET:
        return ParseArraySize(declare->arraySize) ? declare.release() : nullptr;
    case TOKEN_SEMICOLON:
        return declare.release();
    default:
        LogErrorAndSkipLine(messages::kInvalidEndOfLine, word);
        return nullptr;
    }
}

// Both tokens are read into one string, so if the second has no text of its own, the message shows
// the type. The outputs are set only on success.
bool MorlParser::ParseVarDeclare(ENUM_TOKEN& varType, std::string& name)
{
    std::string_view word;
    const ENUM_TOKEN type = ParseToken(word);
    if (!IsVarType(type)) {
        LogErrorAndSkipLine(messages::kInvalidVarType, word);
        return false;
    }
    if (ParseToken(word) != TOKEN_IDENTIFIER) {
        LogErrorAndSkipLine(messages::kNotValidVar, word);
        return false;
    }
    varType = type;
    name = word;
    return true;
}

// Reads the rest of a declaration after "[", including the semicolon. `size` receives the
// expression even on failure.
bool MorlParser::ParseArraySize(MorlExpression*& size)
{
    size = ParseExpression(nullptr);
    return CheckSkip(']') && CheckSkip(';');
}

MorlRegister* MorlParser::ParseRegister()
{
    SkipSpace();
    if (Current() == '(') {
        return ParseNamedRegister();
    }
    std::string_view word;
    const ENUM_TOKEN token = ParseToken(word);
    if (!IsRegister(token)) {
        LogErrorAndSkipLine(messages::kNeedRegister, word);
        return nullptr;
    }
    auto binding = Make<MorlRegister>();
    binding->registerToken = token;
    binding->name = word;
    return binding.release();
}

// The ")" is checked but not consumed, so the caller finds it where it expects ";". The form is
// recognised, but never yields a declaration.
MorlRegister* MorlParser::ParseNamedRegister()
{
    Advance(1);
    std::string_view word;
    if (ParseToken(word) != TOKEN_IDENTIFIER) {
        LogErrorAndSkipLine(messages::kNotValidVar, word);
        return nullptr;
    }
    SkipSpace();
    if (Current() != ')') {
        LogErrorAndSkipLine(messages::kMissRegisterEnd);
        return nullptr;
    }
    auto binding = Make<MorlRegister>();
    binding->registerToken = TOKEN_IDENTIFIER;
    binding->name = "(" + std::string(word) + ")";
    return binding.release();
}

// Never null: whatever goes wrong is logged, and the function keeps what was read.
MorlFunction* MorlParser::ParseFunction(ENUM_TOKEN returnType)
{
    std::string_view word;
    if (ParseToken(word) != TOKEN_IDENTIFIER) {
        LogError(messages::kNotValidVar, word);
    }
    auto function = Make<MorlFunction>();
    function->returnType = returnType;
    function->name = word;
    ParseParameter(function->parameters);
    ParseFunctionBody(function->sentences);
    return function.release();
}

// An empty list must have nothing between its parentheses, not even a space. If a parameter after
// the first one fails, the one before it is repeated.
void MorlParser::ParseParameter(std::vector<MorlDeclare*>& parameters)
{
    if (!CheckSkip('(')) {
        return;
    }
    if (Current() == ')') {
        Advance(1);
        return;
    }
    ENUM_TOKEN type = TOKEN_NONE;
    std::string name;
    if (!ParseVarDeclare(type, name)) {
        return;
    }
    AppendParameter(parameters, type, name);
    SkipSpace();
    while (Current() != ')') {
        if (!CheckSkip(',')) {
            return;
        }
        ParseVarDeclare(type, name);
        AppendParameter(parameters, type, name);
        SkipSpace();
    }
    PeekNext();
}

void MorlParser::AppendParameter(std::vector<MorlDeclare*>& parameters, ENUM_TOKEN type,
                                 const std::string& name)
{
    auto parameter = Make<MorlDeclare>();
    parameter->varType = type;
    parameter->name = name;
    AppendOwned(parameters, std::move(parameter));
}

void MorlParser::ParseFunctionBody(std::vector<MorlSentence*>& sentences)
{
    if (CheckSkip('{')) {
        ParseBracedSentences(sentences);
    }
}

}  // namespace ns_ruke
