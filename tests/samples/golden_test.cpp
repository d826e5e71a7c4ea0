// SPDX-License-Identifier: MIT
#include "samples/golden_files.h"
#include "support/graph.h"
#include "support/log_capture.h"

#include <gtest/gtest.h>
#include <set>

namespace {

using morl_test::ReadText;

TEST(Golden, SampleShadersAreAsReviewed)
{
    const morl_test::LogCapture log;
    const auto compiler = morl_test::MakeSampleCompiler();
    std::set<std::filesystem::path> expected;
    for (const morl_test::SampleRequest& request : morl_test::RichestSamples()) {
        const morl_test::SampleTexts texts = morl_test::CompileSample(*compiler, request);
        const auto vertex = morl_test::GoldenPath(request, ".vert");
        const auto fragment = morl_test::GoldenPath(request, ".frag");
        EXPECT_EQ(texts.vertex, ReadText(vertex)) << vertex;
        EXPECT_EQ(texts.fragment, ReadText(fragment)) << fragment;
        expected.insert({vertex, fragment});
    }
    EXPECT_EQ(log.errors, std::vector<std::string>{});

    const auto root = std::filesystem::path(MORL_SOURCE_DIR) / "tests/golden";
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
        EXPECT_TRUE(entry.is_directory() || expected.count(entry.path()) == 1)
            << entry.path() << " belongs to no sample shader";
    }
}

}  // namespace
