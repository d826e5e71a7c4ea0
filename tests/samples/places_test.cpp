// SPDX-License-Identifier: MIT
// Direct3D 10 joins the two stages by the places of the members in their structs.
#include "support/graph.h"
#include "support/log_capture.h"
#include "support/samples.h"

#include <gtest/gtest.h>
#include <sstream>

namespace {

/// Type and semantic of each member of a struct, without the names, which do not count.
std::vector<std::string> Members(const std::string& code, const std::string& name)
{
    const std::size_t start = code.find('\n', code.find("struct " + name)) + 1;
    std::istringstream lines(code.substr(start, code.find("};", start) - start));
    std::vector<std::string> members;
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        std::string type;
        std::string member;
        std::string colon;
        std::string semantic;
        words >> type >> member >> colon >> semantic;
        members.push_back(type + " : " + semantic);
    }
    return members;
}

TEST(Places, OfFragmentInputsAreThoseOfVertexOutputs)
{
    const morl_test::LogCapture log;
    const auto compiler = morl_test::MakeSampleCompiler();
    std::size_t count = 0;
    for (const morl_test::SampleRequest& request : morl_test::SampleGrid()) {
        if (request.target != "hlsl10") {
            continue;
        }
        const morl_test::SampleTexts texts = morl_test::CompileSample(*compiler, request);
        std::vector<std::string> outputs = Members(texts.vertex, "VS_OUTPUT");
        const std::vector<std::string> inputs = Members(texts.fragment, "FS_INPUT");
        ASSERT_LE(inputs.size(), outputs.size()) << request.shader << " " << request.variant;
        outputs.resize(inputs.size());
        EXPECT_EQ(inputs, outputs) << request.shader << " " << request.variant;
        count += inputs.size();
    }
    EXPECT_GT(count, 0U);
}

}  // namespace
