// SPDX-License-Identifier: MIT
// Classification of tokens, and how tightly operators bind.
#include "morl/parser/internal/keywords.h"
#include "morl/parser/morl_parser.h"

namespace ns_ruke {
namespace {

bool InRange(ENUM_TOKEN token, ENUM_TOKEN first, ENUM_TOKEN last)
{
    return token >= first && token <= last;
}

// The values of the operators, and of the words that existed first, are part of the interface.
static_assert(TOKEN_AUTO == 24 && TOKEN_SAUTO == 49 && TOKEN_WHILE == 77 && TOKEN_OR == 111);
static_assert(TOKEN_ABS == 135 && TOKEN_DISCARD == 137 && TOKEN_NONE == 138);

}  // namespace

bool MorlParser::IsGlobalBuffer(ENUM_TOKEN token) const
{
    return ClassOf(token) == WordClass::Buffer;
}

bool MorlParser::IsVarType(ENUM_TOKEN token) const
{
    return ClassOf(token) == WordClass::Type;
}

bool MorlParser::IsRegister(ENUM_TOKEN token) const
{
    return ClassOf(token) == WordClass::Semantic;
}

bool MorlParser::IsControl(ENUM_TOKEN token) const
{
    return ClassOf(token) == WordClass::Control;
}

bool MorlParser::IsFunction(std::string /*name*/) const
{
    return false;
}

bool MorlParser::IsAssignOperator(ENUM_TOKEN token) const
{
    return InRange(token, TOKEN_ASSIGN, TOKEN_DIVIDE_ASSIGN);
}

bool MorlParser::IsBinaryOperator(ENUM_TOKEN token) const
{
    return InRange(token, TOKEN_PLUS, TOKEN_NOT_EQUAL) || InRange(token, TOKEN_AND, TOKEN_OR);
}

bool MorlParser::IsUnaryOperator(ENUM_TOKEN token) const
{
    return InRange(token, TOKEN_INCREMENT, TOKEN_DECREMENT);
}

bool MorlParser::IsSpecialKeyWord(ENUM_TOKEN token) const
{
    return ClassOf(token) == WordClass::Special;
}

bool MorlParser::IsSystemFunction(ENUM_TOKEN token) const
{
    return ClassOf(token) == WordClass::Function;
}

bool MorlParser::IsKeyword(std::string& word) const
{
    return keywords.Find(word) != TOKEN_NONE;
}

int MorlParser::GetOperatorPriority(ENUM_TOKEN token) const
{
    switch (token) {
    case TOKEN_INDEX:
        return 5;
    case TOKEN_MEMBER:
        return 4;
    case TOKEN_MULTIPLY:
    case TOKEN_DIVIDE:
    case TOKEN_MODULO:
        return 3;
    case TOKEN_PLUS:
    case TOKEN_MINUS:
        return 2;
    case TOKEN_LESS:
    case TOKEN_LESS_EQUAL:
    case TOKEN_GREATER:
    case TOKEN_GREATER_EQUAL:
    case TOKEN_EQUAL:
    case TOKEN_NOT_EQUAL:
        return 1;
    default:  // also "&&" and "||", which bind equally, more loosely than any comparison
        return 0;
    }
}

}  // namespace ns_ruke
