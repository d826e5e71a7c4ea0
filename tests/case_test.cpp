// SPDX-License-Identifier: MIT
#include "support/cases.h"

#include <gtest/gtest.h>

namespace {

class Cases : public testing::TestWithParam<std::filesystem::path> {};

TEST_P(Cases, EndAsWritten)
{
    std::size_t count = 0;
    for (const morl_test::Case& one : morl_test::RunCases(GetParam())) {
        EXPECT_EQ(one.rendered, one.written) << one.title << " (\"./dev golden\" writes outcomes)";
        ++count;
    }
    EXPECT_GT(count, 1U);
}

/// "parser/messages.txt" as "parser_messages".
std::string Name(const testing::TestParamInfo<std::filesystem::path>& info)
{
    return info.param.parent_path().filename().string() + "_" + info.param.stem().string();
}

INSTANTIATE_TEST_SUITE_P(Files, Cases, testing::ValuesIn(morl_test::CaseFiles()), Name);

}  // namespace
