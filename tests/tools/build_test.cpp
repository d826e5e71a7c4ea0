// SPDX-License-Identifier: MIT
#include "support/graph.h"
#include "support/log_capture.h"
#include "support/process.h"
#include "support/samples.h"

#include <gtest/gtest.h>
#include <json/json.h>
#include <algorithm>
#include <set>
#include <sstream>

namespace {

using morl_test::ReadText;

// For every shader, target and variant, the index points to the texts that the library produces.
TEST(Build, WritesWhatTheLibraryGives)
{
    const morl_test::TemporaryDirectory directory;
    const morl_test::ProcessResult result = morl_test::RunProcess(
        {morl_test::ToolPath(), "build", "-C", std::string(MORL_SOURCE_DIR) + "/examples",
         "shaders.json", "-o", directory.path.string()});
    EXPECT_EQ(result.status, 0) << result.err;
    Json::Value root;
    std::istringstream(ReadText(directory.path / "index.json")) >> root;
    const Json::Value& index = root["shaders"];

    const morl_test::LogCapture log;
    const auto compiler = morl_test::MakeSampleCompiler();
    std::set<std::string> files;
    for (const morl_test::SampleRequest& request : morl_test::SampleGrid()) {
        const Json::Value& variants = index[request.shader][request.target];
        // Variant names contain only the macros with lists; those of the samples contain all
        // macros.
        const auto isOfRequest = [&](const std::string& name) {
            std::istringstream parts(name);
            for (std::string part; std::getline(parts, part, ',');) {
                if (("," + request.variant + ",").find("," + part + ",") == std::string::npos) {
                    return name == "default";
                }
            }
            return true;
        };
        const std::vector<std::string> names = variants.getMemberNames();
        const auto name = std::find_if(names.begin(), names.end(), isOfRequest);
        ASSERT_NE(name, names.end()) << request.shader << " " << request.variant;
        const morl_test::SampleTexts texts = morl_test::CompileSample(*compiler, request);
        const std::string vertex = variants[*name]["vertex"].asString();
        const std::string fragment = variants[*name]["fragment"].asString();
        EXPECT_EQ(ReadText(directory.path / vertex), texts.vertex) << vertex;
        EXPECT_EQ(ReadText(directory.path / fragment), texts.fragment) << fragment;
        files.insert({vertex, fragment});
    }
    const std::string distinct = std::to_string(files.size()) + " distinct of ";
    EXPECT_NE(result.out.find(distinct), std::string::npos) << result.out;
}

}  // namespace
