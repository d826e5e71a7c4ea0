// SPDX-License-Identifier: MIT
// Classification of tokens, and how tightly operators bind.
#include "morl/parser/morl_parser.h"

namespace ns_ruke {
namespace {

bool InRange(ENUM_TOKEN token, ENUM_TOKEN first, ENUM_TOKEN last)
{
    return token >= first && token <= last;
}

}  // namespace

bool MorlParser::IsGlobalBuffer(ENUM_TOKEN token) const
{
    return InRange(token, TOKEN_UNIFORM, TOKEN_OUT);
}

bool MorlParser::IsVarType(ENUM_TOKEN token) const
{
    return InRange(token, TOKEN_FLOAT, TOKEN_FLOAT4X4) ||
           InRange(token, TOKEN_SAMPLER1D, TOKEN_AUTO);
}

bool MorlParser::IsRegister(ENUM_TOKEN token) const
{
    return InRange(token, TOKEN_POSITION, TOKEN_SAUTO);
}

bool MorlParser::IsControl(ENUM_TOKEN token) const
{
    return InRange(token, TOKEN_IF, TOKEN_WHILE);
}

bool MorlParser::IsFunction(std::string_view /*name*/) const
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
    return token == TOKEN_DISCARD;
}

bool MorlParser::IsSystemFunction(ENUM_TOKEN token) const
{
    return InRange(token, TOKEN_TEX1D, TOKEN_ABS) ||
           InRange(token, TOKEN_FLOAT3X3_CONSTRUCT, TOKEN_FLOAT4X4_TRANPOSE);
}

bool MorlParser::IsKeyword(const std::string& word) const
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
