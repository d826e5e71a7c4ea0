// SPDX-License-Identifier: MIT
// case_test FILE [windows]: runs the cases of a file and compares the outcomes with those written
// there. "windows": the tool is one for Windows.
#include "support/cases.h"

#include <gtest/gtest.h>
#include <cstdio>

namespace {

std::string file;

#ifdef _WIN32
morl_test::System testedSystem = morl_test::System::Windows;
#else
morl_test::System testedSystem = morl_test::System::Posix;
#endif

TEST(Cases, EndAsWritten)
{
    std::size_t count = 0;
    for (const morl_test::Case& one : morl_test::RunCases(file, testedSystem)) {
        EXPECT_EQ(one.rendered, one.written) << one.title << " (\"./dev golden\" writes outcomes)";
        if (one.isSkipped) {
            std::printf("skipped on Windows: %s\n", one.title.c_str());
        }
        ++count;
    }
    EXPECT_GT(count, 1U);  // the first one is the remark
}

}  // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    file = argc > 1 ? argv[1] : "";
    if (argc > 2) {
        testedSystem = morl_test::System::Windows;
    }
    return RUN_ALL_TESTS();
}
