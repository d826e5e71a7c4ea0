// SPDX-License-Identifier: MIT
// Direct3D 10 joins the two stages by the places of the members in their structs.
#include "support/graph.h"
#include "support/log_capture.h"
#include "support/samples.h"

#include <gtest/gtest.h>
#include <regex>

namespace {

/// Type and semantic of each member of a struct, without the names, which do not count.
std::vector<std::string> Members(const std::string& code, const std::string& name)
{
    const std::size_t start = code.find("struct " + name);
    const std::string text = code.substr(start, code.find("};", start) - start);
    static const std::regex member("(\\w+) \\w+(\\[\\w+\\])? : (\\w+);");
    std::vector<std::string> members;
    for (std::sregex_iterator found(text.begin(), text.end(), member), end; found != end; ++found) {
        members.push_back((*found)[1].str() + (*found)[2].str() + " : " + (*found)[3].str());
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
