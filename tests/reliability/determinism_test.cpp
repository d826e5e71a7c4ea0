// SPDX-License-Identifier: MIT
// The same request gives the same bytes, whatever happened before. The golden files check that
// every compiler and build type gives them, too.
#include "support/graph.h"
#include "support/log_capture.h"
#include "support/samples.h"

#include <gtest/gtest.h>
#include <json/json.h>
#include <algorithm>
#include <random>
#include <sstream>

namespace {

namespace fs = std::filesystem;

/// A compiler with the sample nodes of all files, in random order.
std::unique_ptr<ns_ruke::MorlCompiler> ShuffledCompiler(std::mt19937& random)
{
    std::vector<Json::Value> nodes;
    for (const auto& file : fs::directory_iterator(fs::path(MORL_SOURCE_DIR) / "examples/morl")) {
        Json::Value root;
        std::istringstream(morl_test::ReadText(file.path())) >> root;
        nodes.insert(nodes.end(), root.begin(), root.end());
    }
    std::shuffle(nodes.begin(), nodes.end(), random);
    Json::Value all(Json::arrayValue);
    for (const Json::Value& node : nodes) {
        all.append(node);
    }
    const morl_test::TemporaryDirectory directory;
    morl_test::WriteNodeFiles(directory.path, Json::writeString(Json::StreamWriterBuilder(), all));
    const morl_test::InDirectory inDirectory(directory.path);
    return std::make_unique<ns_ruke::MorlCompiler>();
}

TEST(Determinism, OfRequestsInAnyOrderOnAnyLoading)
{
    const morl_test::LogCapture log;
    const auto reference = morl_test::MakeSampleCompiler();
    std::vector<morl_test::SampleRequest> requests = morl_test::SampleGrid();
    std::mt19937 random(3);
    for (int round = 0; round < 3; ++round) {
        const auto compiler = ShuffledCompiler(random);
        std::shuffle(requests.begin(), requests.end(), random);
        for (const morl_test::SampleRequest& request : requests) {
            const morl_test::SampleTexts expected = morl_test::CompileSample(*reference, request);
            const morl_test::SampleTexts texts = morl_test::CompileSample(*compiler, request);
            ASSERT_EQ(texts.vertex, expected.vertex);
            ASSERT_EQ(texts.fragment, expected.fragment);
        }
    }
}

}  // namespace
