// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <morl/morl.h>
#include <cctype>
#include <iterator>

namespace {

using namespace ns_ruke;

constexpr int kTokenCount = 139;

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
    const KeywordList keywords = KeywordMap::Keywords();
    EXPECT_EQ(KeywordMap::Language().size(),
              static_cast<std::size_t>(std::distance(keywords.begin(), keywords.end())));
    EXPECT_EQ(KeywordMap().Find("float"), TOKEN_NONE);
    std::string signs;
    for (const Keyword& keyword : keywords) {
        EXPECT_EQ(KeywordMap::Language().Find(keyword.spelling), keyword.token);
        const bool isWord = keyword.spelling[0] == '#' || std::isalpha(keyword.spelling[0]) != 0;
        signs += isWord ? "" : std::to_string(keyword.token) + std::string(keyword.spelling) + " ";
    }
    EXPECT_EQ(signs, "97+ 98- 99* 100/ 102. 103< 104<= 105> 106>= 107== 108!= ");
    std::string known = "!=";
    std::string unknown = "%";
    EXPECT_TRUE(parser.IsKeyword(known));
    EXPECT_FALSE(parser.IsKeyword(unknown));
}

}  // namespace
