// SPDX-License-Identifier: MIT
#include "support/log_capture.h"

#include <gtest/gtest.h>
#include <climits>
#include <thread>

namespace {

using namespace ns_ruke;
using morl_test::LogCapture;

TamberLogSystem& Log()
{
    TamberLogSystem::LogInitialize();
    return *Singleton<TamberLogSystem>::GetSingletonPtr();
}

TEST(Log, TakesAMessageWithoutArgumentsVerbatim)
{
    LogCapture capture;
    const std::string message("100%s %n %d\0 end", 16);
    Log().LogError("Graphics", message);
    Log().LogInfo("Graphics", message);
    EXPECT_EQ(capture.errors, std::vector<std::string>{message});
    EXPECT_EQ(capture.infos, std::vector<std::string>{message});
    ASSERT_EQ(capture.messages.size(), 2U);
    EXPECT_EQ(capture.messages[0].category, "Graphics");
    EXPECT_EQ(capture.messages[1].category, "Graphics");
}

TEST(Log, AppliesConversionsToItsArguments)
{
    LogCapture capture;
    Log().LogInfo("c", "%d|%5d|%-5d|%05d|%+d", 7, 7, 7, 7, 7);
    Log().LogInfo("c", "%s|%5s|%-5s|%.2s", "abc", std::string("abc"), "abc", "abc");
    Log().LogInfo("c", "%u|%x|%lld|%zu|%c|%%", 42U, 255U, LLONG_MIN, sizeof(int), 'x');
    Log().LogInfo("c", "%.2f|%g|%*d", 1.5, 0.25F, 4, 9);
    Log().LogInfo("c", "%x|%u|%c", -1, static_cast<short>(-1), 65U);
    Log().LogInfo("c", "%*d|%.*f|%#d|%d", -4, 7, -1, 2.5, 3, TOKEN_NONE);
    EXPECT_EQ(capture.infos,
              (std::vector<std::string>{"7|    7|7    |00007|+7", "abc|  abc|abc  |ab",
                                        "42|ff|-9223372036854775808|4|x|%", "1.50|0.25|   9",
                                        "ffffffff|4294967295|A", "7   |2.500000|3|138"}));
}

TEST(Log, NeverMisreadsAnArgument)
{
    LogCapture capture;
    Log().LogError("c", "%s|%d|%f|%n", 5, "text", 7U, 1);
    Log().LogError("c", "%d|%d|%s|%", 1);
    Log().LogError("c", "%s", static_cast<const char*>(nullptr));
    Log().LogError("c", "%999999999d", 1);
    enum class Level : short { Low = 3 };
    static const volatile int object = 1;
    const char open[2] = {'a', 'b'};  // not a text: only its address may be read
    Log().LogError("c", "%p%d%p%p%.2s", nullptr, Level::Low, &object, &open[0], &open[0]);
    Log().LogError("c", "%03s%#c%hhd %hu %Lf %lld %*d|", "a", 'b', 257, 65537, 1.5L, 1LL << 40,
                   "no number", 7);
    EXPECT_EQ(capture.errors[0], "5|text|7|1");
    EXPECT_EQ(capture.errors[1], "1|%d|%s|%");
    EXPECT_EQ(capture.errors[2], "(null)");
    EXPECT_EQ(capture.errors[3].size(), 1024U);
#ifdef _WIN32
    const std::string null = "0";
#else
    const std::string null = "(nil)";
#endif
    EXPECT_EQ(capture.errors[4].find(null + "3"), 0U);
    EXPECT_EQ(capture.errors[4].substr(capture.errors[4].size() - 2), "ab");
    EXPECT_EQ(capture.errors[5], "  ab1 1 1.500000 1099511627776 no number|");
}

TEST(Log, GivesBackTheSinkInForce)
{
    std::vector<std::string> first;
    std::vector<std::string> second;
    LogSink original = TamberLogSystem::SetSink(
        [&first](LogLevel, const std::string&, const std::string& m) { first.push_back(m); });
    LogSink earlier = TamberLogSystem::SetSink(
        [&second](LogLevel, const std::string&, const std::string& m) { second.push_back(m); });
    Log().LogInfo("c", "two");
    EXPECT_TRUE(TamberLogSystem::SetSink(std::move(earlier)));
    Log().LogInfo("c", "one");
    TamberLogSystem::SetSink(std::move(original));
    EXPECT_EQ(first, std::vector<std::string>{"one"});
    EXPECT_EQ(second, std::vector<std::string>{"two"});
}

TEST(Log, WritesToStandardErrorByDefault)
{
    const LogSink outer = TamberLogSystem::SetSink({});
    testing::internal::CaptureStderr();
    Log().LogError("Graphics", "broken");
    Log().LogInfo("Graphics", "fine");
    Log().LogInfo("Graphics", messages::kCompilerStart);
    Log().LogInfo("Graphics", messages::kCompilerEnd);
    const std::string node = "sky";
    const LogScope scope(node);
    Log().LogError("Graphics", "red");
    const std::string text = testing::internal::GetCapturedStderr();
    TamberLogSystem::SetSink(outer);
    EXPECT_EQ(
        text,
        "[error] Graphics: broken\n[info] Graphics: fine\n[error] Graphics: node 'sky': red\n");
}

TEST(Log, LetsASinkLogAndReplaceItself)
{
    std::vector<std::string> seen;
    const LogSink outer =
        TamberLogSystem::SetSink([&seen](LogLevel, const std::string&, const std::string& m) {
            const std::string kept = m;
            TamberLogSystem::SetSink([&seen](LogLevel, const std::string&, const std::string& n) {
                seen.push_back("second " + n);
            });
            Log().LogInfo("c", "nested");
            seen.push_back("first " + kept);
        });
    Log().LogInfo("c", "message");
    TamberLogSystem::SetSink(outer);
    EXPECT_EQ(seen, (std::vector<std::string>{"second nested", "first message"}));
}

TEST(Log, SerialisesConcurrentWriters)
{
    LogCapture capture;  // its vectors are not thread-safe
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([] {
            for (int j = 0; j < 500; ++j) {
                Log().LogError("Graphics", "message");
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(capture.errors, std::vector<std::string>(2000, "message"));
}

}  // namespace
