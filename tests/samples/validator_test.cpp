// SPDX-License-Identifier: MIT
// Every variant of every sample shader goes through a real compiler's front end.
#include "support/graph.h"
#include "support/log_capture.h"
#include "support/process.h"
#include "support/samples.h"

#include <gtest/gtest.h>
#include <map>
#include <set>

namespace {

using morl_test::SampleRequest;
using morl_test::SampleTexts;
using Command = std::vector<std::string>;

/// How to run the validator for a target. It links the two stages of GLSL, but cannot link those of
/// HLSL, because it puts the uniforms of both stages into blocks of the same name.
const std::map<std::string, std::vector<Command>>& Commands()
{
    static const std::map<std::string, std::vector<Command>> commands = {
        {"hlsl",
         {{"-D", "--hlsl-dx9-compatible", "-V", "-e", "main", "-o", "/dev/null", "-S", "vert", "V"},
          {"-D", "--hlsl-dx9-compatible", "-V", "-e", "main", "-o", "/dev/null", "-S", "frag",
           "F"}}},
        {"hlsl10",
         {{"-D", "-V", "-e", "main", "-o", "/dev/null", "-S", "vert", "V"},
          {"-D", "-V", "-e", "main", "-o", "/dev/null", "-S", "frag", "F"}}},
    };
    return commands;
}

/// For other targets, the texts themselves say what they are.
const std::vector<Command>& CommandsOf(const std::string& target)
{
    static const std::vector<Command> plain = {{"-l", "V", "F"}};
    const auto found = Commands().find(target);
    return found != Commands().end() ? found->second : plain;
}

void Validate(const SampleRequest& request, const SampleTexts& texts)
{
    const morl_test::TemporaryDirectory directory;
    const std::string vertex = (directory.path / "shader.vert").string();
    const std::string fragment = (directory.path / "shader.frag").string();
    morl_test::WriteText(vertex, texts.vertex);
    morl_test::WriteText(fragment, texts.fragment);
    for (Command command : CommandsOf(request.target)) {
        for (std::string& word : command) {
            word = word == "V" ? vertex : word == "F" ? fragment : word;
        }
        command.insert(command.begin(), "glslangValidator");
        const morl_test::ProcessResult result = morl_test::RunProcess(command);
        ASSERT_NE(result.status, 127) << "glslangValidator is not installed: ./dev setup";
        EXPECT_EQ(result.status, 0)
            << request.shader << " (" << request.variant << ") in " << request.target << "\n"
            << result.out << result.err << texts.vertex << texts.fragment;
    }
}

TEST(Validator, AcceptsEveryVariantOfEverySampleShader)
{
    const morl_test::LogCapture log;
    const auto compiler = morl_test::MakeSampleCompiler();
    std::set<std::string> seen;
    std::size_t shaders = 0;
    for (const SampleRequest& request : morl_test::SampleGrid()) {
        const SampleTexts texts = morl_test::CompileSample(*compiler, request);
        shaders += 2;
        if (seen.insert(request.target + texts.vertex + "\n" + texts.fragment).second) {
            Validate(request, texts);
        }
    }
    EXPECT_EQ(log.errors, std::vector<std::string>{});
    EXPECT_GE(shaders, 150U);
    std::cout << "accepted " << shaders << " shaders, " << seen.size()
              << " different pairs of stages\n";
}

}  // namespace
