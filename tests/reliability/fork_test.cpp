// SPDX-License-Identifier: MIT
// Processes that fork while their threads compile.
#include "support/graph.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>
#include <atomic>
#include <csignal>
#include <thread>

namespace {

std::string Compile(const char* target)
{
    ns_ruke::MorlCompiler compiler(std::vector<ns_ruke::NodeText>{});
    compiler.SetNode("n", "out float4 c : COLOR0\nvoid main() { c = 1 }");
    ns_ruke::PassProperty pass = morl_test::MakePass(target, 1, {"n"});
    ns_ruke::ShaderOutput output;
    compiler.Compile(pass, output);
    return output.code;
}

// What a child does after a fork. It may hang, so a signal ends it then.
[[noreturn]] void RunChild(const std::string& expected)
{
    alarm(20);
    _exit(Compile("glsl") == expected ? 0 : 1);
}

TEST(Fork, LeavesChildrenThatCompile)
{
    std::atomic<int> logged{0};
    const ns_ruke::LogSink previous = ns_ruke::TamberLogSystem::SetSink(
        [&logged](ns_ruke::LogLevel, const std::string&, const std::string&) { ++logged; });
    const std::string expected = Compile("glsl");
    std::atomic<bool> ends{false};
    std::thread threads[3];
    for (std::thread& thread : threads) {
        thread = std::thread([&ends] {
            while (!ends) {
                Compile("hlsl");
            }
        });
    }
    constexpr int kForks = 300;
    int good = 0;
    for (int status = 0; status == 0 && good < kForks; good += status == 0 ? 1 : 0) {
        const pid_t child = fork();
        if (child == 0) {
            RunChild(expected);
        }
        waitpid(child, &status, 0);
    }
    ends = true;
    for (std::thread& thread : threads) {
        thread.join();
    }
    ns_ruke::TamberLogSystem::SetSink(previous);
    EXPECT_EQ(good, kForks);
    EXPECT_GT(logged, 0);
}

}  // namespace
