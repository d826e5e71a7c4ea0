// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <morl/morl.h>
#include <climits>

namespace {

using ns_ruke::StringHelper;
using Strings = std::vector<std::string>;

TEST(StringHelper, ReadsIntegersFromTheStartOfAText)
{
    const std::pair<const char*, int> rows[] = {
        {"12", 12},
        {"-3", -3},
        {"+7", 7},
        {"007x", 7},
        {"", 0},
        {"x1", 0},
        {"-", 0},
        {"+-1", 0},
        {" 1", 0},
        {"2147483647", INT_MAX},
        {"2147483648", INT_MAX},
        {"99999999999999999999", INT_MAX},
        {"-2147483648", INT_MIN},
        {"-99999999999999999999", INT_MIN},
    };
    for (const auto& [text, value] : rows) {
        EXPECT_EQ(StringHelper::ConvertToInt32(text), value) << text;
    }
}

TEST(StringHelper, WritesIntegers)
{
    EXPECT_EQ(StringHelper::ConvertToString(0U, 10), "0");
    EXPECT_EQ(StringHelper::ConvertToString(UINT_MAX, 10), "4294967295");
    EXPECT_EQ(StringHelper::ConvertToString(-3, 10), "-3");
    EXPECT_EQ(StringHelper::ConvertToString(INT_MIN, 10), "-2147483648");
    EXPECT_EQ(StringHelper::ConvertToString(INT_MIN, 2).size(), 33U);
    EXPECT_EQ(StringHelper::ConvertToString(255U, 16), "ff");
    EXPECT_EQ(StringHelper::ConvertToString(5, 1), "");
}

TEST(StringHelper, SplitsReplacesAndCompares)
{
    EXPECT_EQ(StringHelper::Split("1.25", ".", false), (Strings{"1", "25"}));
    EXPECT_EQ(StringHelper::Split("3", ".", false), (Strings{"3"}));
    EXPECT_EQ(StringHelper::Split("2.", ".", false), (Strings{"2", ""}));
    EXPECT_EQ(StringHelper::Split(".a..b", ".", true), (Strings{"a", "b"}));
    EXPECT_EQ(StringHelper::Split("ab", "", false), (Strings{"ab"}));

    EXPECT_EQ(StringHelper::ReplaceAll("posi", "i", "0"), "pos0");
    EXPECT_EQ(StringHelper::ReplaceAll("lighti", "i", "0"), "l0ght0");
    EXPECT_EQ(StringHelper::ReplaceAll("aaa", "aa", "a"), "aa");
    EXPECT_EQ(StringHelper::ReplaceAll("abc", "", "x"), "abc");

    EXPECT_TRUE(StringHelper::StartWith("shadowMap0", "shadowMap", false));
    EXPECT_FALSE(StringHelper::StartWith("shadow", "shadowMap", false));
    EXPECT_FALSE(StringHelper::StartWith("ShadowMap0", "shadowMap", false));
    EXPECT_TRUE(StringHelper::StartWith("ShadowMap0", "shadowMap", true));
}

}  // namespace
