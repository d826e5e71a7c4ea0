// SPDX-License-Identifier: MIT
#include "support/log_capture.h"
#include "support/tree_text.h"

#include <gtest/gtest.h>

namespace {

using namespace ns_ruke;

/// The tree of the statements, or what was logged about them.
std::string Read(const std::string& statements)
{
    const morl_test::LogCapture log;
    MorlProgram program;
    MorlParser().Parse("void main() {" + statements + "}", program);
    std::string text;
    for (const std::string& error : log.errors) {
        const LogLine line(LogLevel::Error, error);
        text += std::to_string(line.column - 13) + " " + line.text + "|";
    }
    for (const MorlSentence* sentence : program.mainFunction->sentences) {
        text += morl_test::TreeText(sentence);
    }
    return text;
}

TEST(Token, AreReadAsTheyAreWritten)
{
    const std::pair<std::string, const char*> rows[] = {
        {"x1$y=$_a;", "assign(- x1$y = $_a);"},
        {"x=007;y=2.;", "assign(- x = 007);assign(- y = 2.);"},
        {"x=SV_POSITION+texcube;", "assign(- x = (SV_POSITION + texcube));"},
        {"x=1.2.y;", "assign(- x = (1.2 . y));"},
        {"a.x=a;a+=b;a-=b;a*=b;a/=b;",
         "assign(- (a . x) = a);assign(- a += b);assign(- a -= b);assign(- a *= b);assign(- a /= "
         "b);"},
        {"x=a<b;x=a<=b;x=a>b;x=a>=b;x=a==b;x=a!=b;",
         "assign(- x = (a < b));assign(- x = (a <= b));assign(- x = (a > b));"
         "assign(- x = (a >= b));assign(- x = (a == b));assign(- x = (a != b));"},
        {"x=a&&b;x=a||b;x=a%b;x=a/b;x=a*b;x=a-b;",
         "assign(- x = (a && b));assign(- x = (a || b));assign(- x = (a % b));"
         "assign(- x = (a / b));assign(- x = (a * b));assign(- x = (a - b));"},
        {"x \t\r = b ;", "assign(- x = b);"},
        {"x = 1.0f;", "8 miss ';':|"},
        {"x = 1.2.3;", "assign(- x = (1.2 . 3));"},
        {"x = .5;", "6 expression error:|"},
        {"x = a&b;", "6 miss ';':|"},
        {"x = a|b;", "6 miss ';':|"},
        {"x = SV_Position;", "16 expression error:|"},
        {"x = #define;", "assign(- x = #define);"},
        {std::string("x = a\0b;", 8), "6 miss ';':|"},
        {"x = a\xc3\xa9;", "6 miss ';':|"},
    };
    for (const auto& [statements, text] : rows) {
        EXPECT_EQ(Read(statements).substr(0, std::string(text).size()), text) << statements;
    }
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
    EXPECT_EQ(KeywordMap::Language().size(), 94U);
    EXPECT_EQ(KeywordMap().Find("float"), TOKEN_NONE);
    for (const Keyword& keyword : KeywordMap::Keywords()) {
        EXPECT_EQ(KeywordMap::Language().Find(keyword.spelling), keyword.token);
    }
    EXPECT_TRUE(parser.IsKeyword("!="));
    EXPECT_FALSE(parser.IsKeyword("%"));
}

}  // namespace
