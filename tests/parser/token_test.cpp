// SPDX-License-Identifier: MIT
// Tokens are read by a private operation; what it answers decides all that the parser does.
#include "support/private_access.h"

#include <gtest/gtest.h>

namespace {

using namespace ns_ruke;

std::string Tokens(const std::string& source)
{
    MorlParser parser;
    parser.text = source.c_str();
    parser.length = static_cast<std::uint32_t>(source.size());
    std::string tokens;
    for (;;) {
        std::string word = "~";
        const std::uint32_t before = parser.position;
        const ENUM_TOKEN token = parser.ParseToken(word);
        tokens +=
            (tokens.empty() ? "" : " ") + std::to_string(token) + (word == "~" ? "" : ":" + word);
        if (parser.position == before || parser.Eof()) {
            return tokens + "@" + std::to_string(parser.position);
        }
    }
}

TEST(Token, ReadsWordsNumbersAndSymbols)
{
    const std::pair<const char*, const char*> rows[] = {
        {"x1$y", "65:x1$y@4"},
        {"$count _a", "65:$count 65:_a@9"},
        {"1x", "66:1 65:x@2"},
        {"1.0f", "66:1.0 65:f@4"},
        {"2. 007 1.2.3", "66:2. 66:007 66:1.2 102 66:3@12"},
        {".5", "102 66:5@2"},
        {"texCUBE texcube", "117:texCUBE 65:texcube@15"},
        {"SV_Position SV_POSITION", "43:SV_Position 65:SV_POSITION@23"},
        {"float4x4tranpose float4x4transpose", "16:float4x4tranpose 65:float4x4transpose@34"},
        {"#if #endfor #define #", "79:#if 83:#endfor 65:#define 65:#@21"},
        {"+ ++ += - -- -=", "97 95 70 98 96 71@15"},
        {"* *= / /= // /* %", "99 72 100 73 85 86 101@17"},
        {"< <= > >= = == ! !=", "103 104 105 106 69 107 109 108@19"},
        {"&& || : ; ( ) [ ] .", "110 111 84 89 93 94 91 92 102@19"},
        {"a&b", "65:a 138@1"},
        {"a|b", "65:a 138@1"},
        {"a{", "65:a 138@1"},
        {"a\xc3\xa9", "65:a 138@1"},
        {"a \t\r\n b", "65:a 65:b@7"},
        {"a ", "65:a 138@2"},
        {"&", "138@0"},
    };
    for (const auto& [source, tokens] : rows) {
        EXPECT_EQ(Tokens(source), tokens) << source;
    }
}

TEST(Token, TakesANulInsideOfTheTextForAnyOtherCharacter)
{
    EXPECT_EQ(Tokens(std::string("a\0b", 3)), "65:a 138@1");
}

// One letter per class: buffer, var type, register, control, assign, binary, unary, special,
// system.
TEST(Token, ClassifiesEveryValue)
{
    MorlParser parser;
    std::string classes;
    for (int value = 0; value < kTokenCount; ++value) {
        const auto token = static_cast<ENUM_TOKEN>(value);
        classes += parser.IsGlobalBuffer(token)     ? 'g'
                   : parser.IsVarType(token)        ? 'v'
                   : parser.IsRegister(token)       ? 'r'
                   : parser.IsControl(token)        ? 'c'
                   : parser.IsAssignOperator(token) ? 'a'
                   : parser.IsBinaryOperator(token) ? 'b'
                   : parser.IsUnaryOperator(token)  ? 'u'
                   : parser.IsSpecialKeyWord(token) ? 's'
                   : parser.IsSystemFunction(token) ? 'f'
                                                    : '.';
    }
    EXPECT_EQ(classes,
              ".vvvvvvvvvvvvv"            // void and types
              "fff"                       // matrix helpers
              "vvvvvvvv"                  // samplers, auto
              "ggg"                       // buffers
              "rrrrrrrrrrrrrrrrrrrrrr"    // semantics
              "..................."       // node kinds, identifier, number
              "aaaaa"                     // assignments
              "cccc."                     // control
              "................"          // macros, punctuation up to ")"
              "uu"                        // increments
              "bbbbbbbbbbbb.bb"           // operators; "!" is none
              "ffffffffffffffffffffffff"  // intrinsics
              ".s.");
    EXPECT_FALSE(parser.IsFunction("main"));
}

TEST(Token, RanksOperators)
{
    MorlParser parser;
    std::string ranks;
    for (int value = 0; value < kTokenCount; ++value) {
        const int rank = parser.GetOperatorPriority(static_cast<ENUM_TOKEN>(value));
        ranks += rank > 0 ? std::to_string(value) + ":" + std::to_string(rank) + " " : "";
    }
    EXPECT_EQ(ranks, "90:5 97:2 98:2 99:3 100:3 101:3 102:4 103:1 104:1 105:1 106:1 107:1 108:1 ");
}

TEST(Token, KeepsTheKeywordTableWhenItIsFilledAgain)
{
    MorlParser parser;
    parser.Init();
    EXPECT_EQ(parser.keywords.size(), 94U);
    EXPECT_TRUE(parser.IsKeyword("!="));
    EXPECT_FALSE(parser.IsKeyword("%"));
}

}  // namespace
