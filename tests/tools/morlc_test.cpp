// SPDX-License-Identifier: MIT
#include "support/graph.h"
#include "support/process.h"

#include <gtest/gtest.h>
#include <json/json.h>
#include <sstream>

namespace {

namespace fs = std::filesystem;
using morl_test::ProcessResult;
using morl_test::ReadText;
using morl_test::RunProcess;
using morl_test::TemporaryDirectory;
using morl_test::WriteText;

const std::string kExamples = std::string(MORL_SOURCE_DIR) + "/examples";

ProcessResult Morlc(std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin(), MORLC);
    return RunProcess(arguments);
}

/// Runs on a graph of one node, "node", with this source.
ProcessResult MorlcOn(const fs::path& directory, const std::string& source,
                      std::vector<std::string> arguments)
{
    Json::Value node;
    node["name"] = "node";
    node["content"] = source;
    Json::Value array(Json::arrayValue);
    array.append(node);
    morl_test::WriteNodeFiles(directory, Json::writeString(Json::StreamWriterBuilder(), array));
    arguments.insert(arguments.begin(), {"-C", directory.string()});
    return Morlc(arguments);
}

TEST(Morlc, WritesTheShaderToStandardOutput)
{
    const ProcessResult result =
        Morlc({"-C", kExamples, "-t", "glsl", "-s", "fragment", "surface_color", "unlit"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out,
              "#version 150\nuniform vec4 surfaceColor;\nvoid main(){ \n"
              "\tvec4 albedo = surfaceColor;\n\tvec3 lit = albedo.xyz;\n}\n");
}

TEST(Morlc, CarriesTheTableBetweenPasses)
{
    const TemporaryDirectory directory;
    const std::string table = (directory.path / "table.json").string();
    const std::string code = (directory.path / "out.hlsl").string();
    EXPECT_EQ(Morlc({"-C", kExamples, "-t", "hlsl", "-s", "vertex", "--semantics-out", table, "-o",
                     code, "vertex_static", "transform", "texcoord"})
                  .status,
              0);
    EXPECT_NE(ReadText(code).find("\tfloat2 oUV : TEXCOORD2;\n"), std::string::npos);
    Json::Value root;
    std::istringstream(ReadText(table)) >> root;
    EXPECT_EQ(root["oUV"].asString(), "TEXCOORD2");

    const ProcessResult fragment =
        Morlc({"-C", kExamples, "-t", "hlsl", "-s", "fragment", "--semantics-in", table,
               "--sampler", "albedoMap=4", "surface_texture", "unlit"});
    EXPECT_EQ(fragment.status, 0);
    EXPECT_NE(fragment.out.find("\tfloat2 oUV : TEXCOORD2;\n"), std::string::npos);
    EXPECT_NE(fragment.out.find("albedoMap : register(s4);\n"), std::string::npos);
}

TEST(Morlc, WritesAllTargetsInOneGo)
{
    const TemporaryDirectory directory;
    const ProcessResult result = Morlc(
        {"-C", kExamples, "-t", "all", "--vertex", "vertex_static,transform,texcoord", "--fragment",
         "surface_texture,unlit,surface_out", "-o", (directory.path / "out").string()});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out + result.err, "");
    for (const std::string target : {"hlsl", "hlsl10", "glsl", "glsles"}) {
        EXPECT_NE(ReadText(directory.path / "out" / (target + ".vert")), "");
        EXPECT_NE(ReadText(directory.path / "out" / (target + ".frag")), "");
    }
    EXPECT_NE(ReadText(directory.path / "out/hlsl10.frag").find("\tfloat2 oUV : TEXCOORD2;"),
              std::string::npos);
}

TEST(Morlc, NamesTheNodeOfAnError)
{
    const TemporaryDirectory directory;
    const ProcessResult result = MorlcOn(directory.path, "in float a;\nvoid main() { x = ; }",
                                         {"-t", "glsl", "-s", "vertex", "node"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err,
              "node node:2:20: error: expression error:\n"
              "node node:2:22: error: miss '}':\n");
    EXPECT_NE(result.out.find("void main(){"), std::string::npos);

    const ProcessResult verbose =
        MorlcOn(directory.path, "in float a;", {"-t", "glsl", "-s", "vertex", "--verbose", "node"});
    EXPECT_EQ(verbose.status, 0);
    EXPECT_EQ(verbose.err,
              "node node: info: Morl Compiler: Compiler Start\n"
              "node node: info: Morl Compiler: Compiler End\n");
}

TEST(Morlc, OffersTheNearestName)
{
    const ProcessResult result =
        Morlc({"-C", kExamples, "-t", "glsl", "-s", "vertex", "trasnform", "zzzzzzzzzz"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err,
              "morlc: error: Morl Compiler: unknown node: trasnform (did you mean 'transform'?)\n"
              "morlc: error: Morl Compiler: unknown node: zzzzzzzzzz\n");
}

TEST(Morlc, RefusesWrongUsage)
{
    const std::vector<std::string> rows[] = {
        {},
        {"-t", "spirv", "-s", "vertex", "n"},
        {"-t", "glsl", "n"},
        {"-t", "glsl", "-s", "geometry", "n"},
        {"-t", "glsl", "-s", "vertex"},
        {"-t", "glsl", "-s", "vertex", "-D", "A", "n"},
        {"-t", "glsl", "-s", "vertex", "-D", "=1", "n"},
        {"-t", "glsl", "-s", "vertex", "-D", "A=1x", "n"},
        {"-t", "glsl", "-s", "vertex", "-D", "A=2147483648", "n"},
        {"-t", "glsl", "-s", "vertex", "--sampler", "A=", "n"},
        {"-t", "glsl", "-s", "vertex", "--nonsense", "n"},
        {"-t", "all", "-s", "vertex", "n"},
        {"-t", "all", "--vertex", "n", "-o", "out"},
        {"-t", "all", "--vertex", "n", "--fragment", "n"},
        {"-t", "all", "--vertex", "n", "--fragment", "n", "-o", "out", "n"},
    };
    for (const std::vector<std::string>& arguments : rows) {
        const ProcessResult result = Morlc(arguments);
        EXPECT_EQ(result.status, 2) << testing::PrintToString(arguments);
        EXPECT_EQ(result.out, "") << testing::PrintToString(arguments);
        EXPECT_NE(result.err, "") << testing::PrintToString(arguments);
    }
    EXPECT_EQ(Morlc({"--help"}).status, 0);
    EXPECT_EQ(Morlc({"--version"}).out, "morlc 1.0.0\n");
}

TEST(Morlc, ReportsFilesThatCannotBeReadOrWritten)
{
    const TemporaryDirectory directory;
    WriteText(directory.path / "wrong.json", "{\"a\": [");
    WriteText(directory.path / "array.json", "[]");
    WriteText(directory.path / "number.json", "{\"a\": 3}");
    WriteText(directory.path / "empty.json", "");
    const std::string base = directory.path.string();
    const std::pair<std::vector<std::string>, std::string> rows[] = {
        {{"--semantics-in", base + "/none.json"},
         "cannot read " + base + "/none.json: No such file or directory"},
        {{"--semantics-in", base}, "cannot read " + base + ": Is a directory"},
        {{"--semantics-in", base + "/empty.json"},
         "cannot read " + base + "/empty.json: the file is empty"},
        {{"--semantics-in", base + "/array.json"}, base + "/array.json: not a JSON object"},
        {{"--semantics-in", base + "/number.json"},
         base + "/number.json: the value of \"a\" is not a string"},
        {{"-o", base}, "cannot write " + base + ": Is a directory"},
        {{"-o", base + "/none/out"},
         "cannot write " + base + "/none/out: No such file or directory"},
        {{"-o", "/dev/full"}, "cannot write /dev/full: No space left on device"},
        {{"--semantics-out", "/dev/full"}, "cannot write /dev/full: No space left on device"},
    };
    for (const auto& [extra, message] : rows) {
        std::vector<std::string> arguments = extra;
        arguments.insert(arguments.end(), {"-t", "glsl", "-s", "vertex", "node"});
        const ProcessResult result = MorlcOn(directory.path, "in float a;", arguments);
        EXPECT_EQ(result.status, 1) << message;
        EXPECT_EQ(result.err, "morlc: error: " + message + "\n");
    }
    const ProcessResult wrong =
        MorlcOn(directory.path, "in float a;",
                {"--semantics-in", base + "/wrong.json", "-t", "glsl", "-s", "vertex", "node"});
    EXPECT_EQ(wrong.status, 1);
    EXPECT_EQ(wrong.err.find("morlc: error: " + base + "/wrong.json: not valid JSON: "), 0U);
    EXPECT_EQ(std::count(wrong.err.begin(), wrong.err.end(), '\n'), 1);
    EXPECT_EQ(Morlc({"-C", base + "/none", "-t", "glsl", "-s", "vertex", "n"}).status, 1);
}

TEST(Morlc, ReportsAFullDiskAndAClosedPipe)
{
    const std::string command =
        std::string(MORLC) + " -C " + kExamples + " -t glsl -s vertex transform";
    const ProcessResult full = morl_test::RunShell(command + " > /dev/full");
    EXPECT_EQ(full.status, 1);
    EXPECT_EQ(full.err, "morlc: error: cannot write standard output: No space left on device\n");
    const ProcessResult pipe =
        morl_test::RunShell("(sleep 0.3; " + command + "; echo $? >&2) | true");
    EXPECT_EQ(pipe.err, "morlc: error: cannot write standard output: Broken pipe\n1\n");
}

TEST(Morlc, LeavesAnOldFileWhenItCannotWriteANewOne)
{
    const TemporaryDirectory directory;
    const fs::path out = directory.path / "out.glsl";
    WriteText(out, "old");
    const ProcessResult result =
        Morlc({"-C", kExamples, "-t", "glsl", "-s", "vertex", "-o", out.string(), "nosuchnode"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(ReadText(out), "old");
    EXPECT_EQ(std::distance(fs::directory_iterator(directory.path), fs::directory_iterator()), 1);
}

TEST(Morlc, ReplacesAFileInPlace)
{
    const TemporaryDirectory directory;
    const fs::path real = directory.path / "real.glsl";
    const fs::path link = directory.path / "link.glsl";
    WriteText(real, "old");
    fs::permissions(real, fs::perms::owner_read | fs::perms::owner_write);
    fs::create_symlink(real, link);
    const std::string table = (directory.path / "table.json").string();
    EXPECT_EQ(
        Morlc({"-C", kExamples, "-t", "glsl", "-s", "vertex", "-o", link.string(), "vertex_static"})
            .status,
        0);
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_NE(ReadText(real), "old");
    EXPECT_EQ(fs::status(real).permissions(), fs::perms::owner_read | fs::perms::owner_write);

    // A refused request leaves both files.
    WriteText(table, "{}");
    const std::string before = ReadText(real);
    Morlc({"-C", kExamples, "-t", "glsl", "-s", "vertex", "-o", link.string(), "--semantics-out",
           table, "nosuchnode"});
    EXPECT_EQ(ReadText(real), before);
    EXPECT_EQ(ReadText(table), "{}");
}

TEST(Morlc, ReportsBrokenNodeFiles)
{
    const TemporaryDirectory directory;
    morl_test::WriteNodeFiles(directory.path, "[{\"name\": 3}]");
    const ProcessResult wrong =
        Morlc({"-C", directory.path.string(), "-t", "glsl", "-s", "vertex", "n"});
    EXPECT_EQ(wrong.status, 1);
    EXPECT_EQ(wrong.err, "morlc: error: Type is not convertible to string\n");

    morl_test::WriteNodeFiles(directory.path,
                              "[{\"name\": \"a\\u0000\\n\xff\", \"content\": \"in float a\"}]");
    const ProcessResult strange =
        Morlc({"-C", directory.path.string(), "-t", "glsl", "-s", "vertex", "b\n"});
    EXPECT_EQ(strange.status, 1);
    EXPECT_EQ(strange.err, "morlc: error: Morl Compiler: unknown node: b?\n");
}

}  // namespace
