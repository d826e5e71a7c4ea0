// SPDX-License-Identifier: MIT
// Several compilers on several threads share the log and nothing else.
#include "support/graph.h"
#include "support/log_capture.h"
#include "support/samples.h"

#include <gtest/gtest.h>
#include <thread>

namespace {

TEST(Thread, CompilersDoNotDisturbEachOther)
{
    const morl_test::LogCapture log;
    const std::vector<morl_test::SampleRequest> requests = morl_test::RichestSamples();
    constexpr std::size_t kThreads = 4;
    std::vector<std::unique_ptr<ns_ruke::MorlCompiler>> compilers;
    for (std::size_t i = 0; i <= kThreads; ++i) {
        compilers.push_back(morl_test::MakeSampleCompiler());
    }
    const auto compileAll = [&requests](ns_ruke::MorlCompiler& compiler) {
        std::string texts;
        for (const morl_test::SampleRequest& request : requests) {
            const morl_test::SampleTexts sample = morl_test::CompileSample(compiler, request);
            texts += sample.vertex + sample.fragment;
        }
        return texts;
    };
    std::vector<std::string> texts(kThreads);
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < kThreads; ++i) {
        threads.emplace_back([&, i] { texts[i] = compileAll(*compilers[i]); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    const std::string expected = compileAll(*compilers[kThreads]);
    for (const std::string& text : texts) {
        EXPECT_EQ(text, expected);
    }
    EXPECT_EQ(log.errors, std::vector<std::string>{});
}

// Nodes made on one thread may be freed on another, which keeps some of them for itself.
TEST(Thread, FreesNodesOfOtherThreads)
{
    std::vector<std::unique_ptr<ns_ruke::MorlProgram>> programs;
    std::thread maker([&programs] {
        ns_ruke::MorlParser parser;
        for (int i = 0; i < 2000; ++i) {
            programs.push_back(std::make_unique<ns_ruke::MorlProgram>());
            parser.Parse("void main() { x = a[1] + max(b, 2); }", *programs.back());
        }
    });
    maker.join();
    std::thread([&programs] {
        programs.resize(1000);
        ns_ruke::MorlProgram program;
        ns_ruke::MorlParser().Parse("void main() { y = 1; }", program);
        EXPECT_EQ(program.mainFunction->sentences.size(), 1U);
    }).join();
    programs.clear();
    ns_ruke::MorlUnit::ReleaseMemory();
}

// On each thread, a sink sees the node of that thread.
TEST(Thread, KnowsItsNode)
{
    std::vector<std::string> nodes;
    ns_ruke::LogSink previous = ns_ruke::TamberLogSystem::SetSink(
        [&nodes](ns_ruke::LogLevel level, const std::string&, const std::string& message) {
            const ns_ruke::LogLine line(level, message);
            if (line.IsError()) {
                nodes.push_back(line.node + line.text);
            }
        });
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([i] {
            const std::string name = "n" + std::to_string(i);
            ns_ruke::MorlParser parser;
            ns_ruke::MorlNode node;
            node.SetName(name);
            node.SetContent(name);
            for (int j = 0; j < 100; ++j) {
                node.Compile(&parser, "glsl");
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    ns_ruke::TamberLogSystem::SetSink(std::move(previous));
    EXPECT_EQ(nodes.size(), 400U);
    for (const std::string& node : nodes) {
        EXPECT_EQ(node, node.substr(0, 2) + "invalid var declare:" + node.substr(0, 2));
    }
}

}  // namespace
