// SPDX-License-Identifier: MIT
#include "morl/translator/internal/target_spellings.h"

namespace ns_ruke {

constexpr SpellingTable kOperators({
    {TOKEN_INCREMENT, "++"},
    {TOKEN_DECREMENT, "--"},
    {TOKEN_PLUS, "+"},
    {TOKEN_MINUS, "-"},
    {TOKEN_MULTIPLY, "*"},
    {TOKEN_DIVIDE, "/"},
    {TOKEN_MEMBER, "."},
    {TOKEN_LESS, "<"},
    {TOKEN_LESS_EQUAL, "<="},
    {TOKEN_GREATER, ">"},
    {TOKEN_GREATER_EQUAL, ">="},
    {TOKEN_EQUAL, "=="},
    {TOKEN_NOT_EQUAL, "!="},
    {TOKEN_AND, "&&"},
    {TOKEN_OR, "||"},
});

constexpr SpellingTable kAssignOperators({
    {TOKEN_ASSIGN, "="},
    {TOKEN_PLUS_ASSIGN, "+="},
    {TOKEN_MINUS_ASSIGN, "-="},
    {TOKEN_MULTIPLY_ASSIGN, "*="},
    {TOKEN_DIVIDE_ASSIGN, "/="},
});

constexpr SpellingTable kKeywords({
    {TOKEN_DISCARD, "discard"},
});

}  // namespace ns_ruke
