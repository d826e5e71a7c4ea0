// SPDX-License-Identifier: MIT
// case_test FILE: runs the cases of a file and compares the outcomes with those written there.
#include "support/cases.h"

#include <gtest/gtest.h>

namespace {

std::string file;

TEST(Cases, EndAsWritten)
{
    std::size_t count = 0;
    for (const morl_test::Case& one : morl_test::RunCases(file)) {
        EXPECT_EQ(one.rendered, one.written) << one.title << " (\"./dev golden\" writes outcomes)";
        ++count;
    }
    EXPECT_GT(count, 1U);  // the first one is the remark
}

}  // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    file = argc == 2 ? argv[1] : "";
    return RUN_ALL_TESTS();
}
