// SPDX-License-Identifier: MIT
// The installed package, as another project finds it.
#include "support/graph.h"
#include "support/process.h"

#include <gtest/gtest.h>
#include <sstream>

namespace {

using morl_test::ProcessResult;
using morl_test::RunProcess;

void Succeed(const std::vector<std::string>& command)
{
    const ProcessResult result = RunProcess(command);
    ASSERT_EQ(result.status, 0) << testing::PrintToString(command) << result.out << result.err;
}

TEST(Package, IsFoundAndLinked)
{
    const morl_test::TemporaryDirectory directory;
    const std::string prefix = (directory.path / "prefix").string();
    const std::string build = (directory.path / "build").string();
    Succeed({"cmake", "--install", MORL_BINARY_DIR, "--prefix", prefix});
    Succeed({"cmake", "-S", std::string(MORL_SOURCE_DIR) + "/tests/package", "-B", build, "-G",
             "Ninja", "-DCMAKE_PREFIX_PATH=" + prefix, "-DCMAKE_CXX_COMPILER=" MORL_CXX_COMPILER,
             "-DCMAKE_CXX_FLAGS=" MORL_SANITIZE_FLAGS});
    Succeed({"cmake", "--build", build});
    const ProcessResult host = RunProcess({build + "/host"});
    EXPECT_EQ(host.status, 0) << host.err;
    EXPECT_EQ(host.out, "#version 150\nvoid main(){ \n}\n");
    Succeed({prefix + "/bin/morlc", "--version"});
}

// Every installed header compiles by itself, without the headers of the JSON reader.
TEST(Package, HasHeadersThatCompileAlone)
{
    const morl_test::TemporaryDirectory directory;
    Succeed({"cmake", "--install", MORL_BINARY_DIR, "--prefix", directory.path.string()});
    const auto include = directory.path / "include";
    std::string sources;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(include)) {
        if (entry.is_regular_file()) {
            const std::string source = directory.path.string() + "/" + entry.path().stem().string();
            morl_test::WriteText(source + ".cpp", "#include \"" + entry.path().string() + "\"\n");
            sources += " " + source + ".cpp";
        }
    }
    EXPECT_GT(sources.size(), 20U);
    const ProcessResult result = morl_test::RunShell(
        std::string(MORL_CXX_COMPILER) +
        " -std=c++17 -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror -fsyntax-only -I" +
        include.string() + sources);
    EXPECT_EQ(result.status, 0) << result.err;
}

#ifdef MORL_SHARED
TEST(Package, ExportsItsClassesOnly)
{
    const ProcessResult result =
        morl_test::RunShell("nm -DC --defined-only " MORL_LIBRARY " | cut -d' ' -f3- | sort -u");
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_NE(result.out.find("ns_ruke::MorlCompiler::Compile("), std::string::npos);
    std::istringstream lines(result.out);
    for (std::string line; std::getline(lines, line);) {
        const bool ours = line.find("ns_ruke::") != std::string::npos;
        // Templates of the standard library that take our types, or are instantiated for our use.
        const bool standard = line.find("std::") != std::string::npos;
        EXPECT_TRUE(ours || standard) << line;
        for (const char* internal : {"LogGraphics", "MakeTranslator", "AppendFormedCall",
                                     "SubstituteLoopValues", "(anonymous namespace)", "Json::"}) {
            EXPECT_EQ(line.find(internal), std::string::npos) << line;
        }
    }
}
#endif

}  // namespace
