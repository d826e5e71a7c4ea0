// SPDX-License-Identifier: MIT
// An engine at work: every thread reloads nodes and compiles with a compiler of its own, results
// are freed on another thread, and the log is swapped all the time.
#include <gtest/gtest.h>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <morl/c/morl.hpp>
#include <mutex>
#include <thread>

namespace {

/// For how many seconds; "./dev night" sets the variable.
int Seconds()
{
    const char* const seconds = std::getenv("MORL_SOAK");
    return seconds != nullptr ? std::atoi(seconds) : 1;
}

/// Results on their way to the thread that frees them.
class Results {
public:
    void Add(morl::Result result)
    {
        const std::lock_guard<std::mutex> lock(mutex);
        results.push_back(std::move(result));
    }
    void Free()
    {
        std::vector<morl::Result> freed;
        const std::lock_guard<std::mutex> lock(mutex);
        freed.swap(results);
    }

private:
    std::mutex mutex;
    std::vector<morl::Result> results;
};

class Worker {
public:
    explicit Worker(Results& newResults) : results(newResults) {}

    void Run(const std::atomic<bool>& ends)
    {
        for (; !ends; ++rounds) {
            const bool isBroken = rounds % 3 == 0;
            const std::string node = "uniform float4 k_" + std::to_string(rounds % 50) +
                                     ";\nout float4 c : COLOR0;\nvoid main() { #for N : 0 c = k_" +
                                     std::to_string(rounds % 50) + (isBroken ? "" : ";") +
                                     " #endfor }";
            morl::Error error =
                rounds % 2 == 0 ? compiler.Set("n", node) : compiler.LoadSource("", "n", node);
            std::string source;
            if (compiler.GetSource("n", false, source) || source != node + "\n") {
                ++failures;
            }
            morl::Request request;
            request.target = rounds % 2 == 0 ? "hlsl10" : "glsl";
            request.stage = MORL_FRAGMENT;
            request.nodes = {"n"};
            request.macros = {{"N", 20}};
            request.wantsWarnings = true;
            request.mostLoopWork = rounds % 7 == 0 ? 10 : 0;
            morl::Result result;
            if (!error) {
                error = compiler.Compile(request, result);
            }
            const bool isAsExpected =
                request.mostLoopWork > 0 && !isBroken
                    ? error.status == MORL_LIMIT_REACHED
                    : error.status == MORL_OK || error.status == MORL_LIMIT_REACHED;
            failures += isAsExpected ? 0 : 1;
            results.Add(std::move(result));
        }
    }

    int rounds = 1;
    int failures = 0;

private:
    Results& results;
    morl::Compiler compiler;
};

TEST(Soak, OfAnEngine)
{
    Results results;
    std::atomic<bool> ends{false};
    std::atomic<int> heard{0};
    constexpr int kThreads = 4;
    std::vector<std::unique_ptr<Worker>> workers;
    std::vector<std::thread> threads;
    const auto hear = [](void* host, const morl_log_line* line) {
        static_cast<std::atomic<int>*>(host)->fetch_add(line->level == MORL_ERROR ? 1 : 0);
    };
    morl_set_log(hear, &heard, nullptr, nullptr);
    for (int i = 0; i < kThreads; ++i) {
        workers.push_back(std::make_unique<Worker>(results));
        threads.emplace_back([&ends, worker = workers.back().get()] { worker->Run(ends); });
    }
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(Seconds());
    while (std::chrono::steady_clock::now() < end) {
        morl_log before = nullptr;
        void* host = nullptr;
        morl_set_log([](void*, const morl_log_line*) {}, nullptr, &before, &host);
        results.Free();
        morl_set_log(before, host, nullptr, nullptr);
    }
    ends = true;
    for (std::thread& thread : threads) {
        thread.join();
    }
    morl_set_log(nullptr, nullptr, nullptr, nullptr);
    for (const std::unique_ptr<Worker>& worker : workers) {
        EXPECT_EQ(worker->failures, 0);
        EXPECT_GT(worker->rounds, 10);
    }
    EXPECT_GT(heard, 0);
}

}  // namespace
