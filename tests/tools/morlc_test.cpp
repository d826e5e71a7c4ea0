// SPDX-License-Identifier: MIT
#include "tools/morlc.h"
#include "support/graph.h"
#include "support/process.h"

#include <gtest/gtest.h>
#include <json/json.h>
#include <sstream>
#include <tuple>

namespace {

namespace fs = std::filesystem;
using morl_test::ProcessResult;
using morl_test::ReadText;
using morl_test::TemporaryDirectory;
using morl_test::WriteText;

using morl_test::kExamples;
using morl_test::Morlc;

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
    for (const std::string& target : ns_ruke::MorlTargets()) {
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
    const std::string file = (directory.path / "morl/vertex_shader.morl").string();
    EXPECT_EQ(result.err, file + ": node node:2:20: error: expression error:\n" +
                              "    void main() { x = ; }\n" + "                       ^\n" + file +
                              ": node node:2:22: error: miss '}':\n" +
                              "    void main() { x = ; }\n" + "                         ^\n");
    EXPECT_NE(result.out.find("void main(){"), std::string::npos);

    const ProcessResult verbose =
        MorlcOn(directory.path, "in float a;", {"-t", "glsl", "-s", "vertex", "--verbose", "node"});
    EXPECT_EQ(verbose.status, 0);
    EXPECT_EQ(verbose.err, file + ": node node: info: Morl Compiler: Compiler Start\n" + file +
                               ": node node: info: Morl Compiler: Compiler End\n");
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

std::string TargetList(const std::string& separator)
{
    std::string list;
    for (const std::string& target : ns_ruke::MorlTargets()) {
        list += (list.empty() ? "" : separator) + target;
    }
    return list;
}

// Every answer names the option and says what to do.
TEST(Morlc, RefusesWrongUsage)
{
    const std::pair<std::vector<std::string>, std::string> rows[] = {
        {{}, "--target: say -t with one of " + TargetList(", ")},
        {{"-t", "spirv", "-s", "vertex", "n"},
         "--target: spirv not in {" + TargetList(",") + ",all}"},
        {{"-t", "glsl", "n"}, "--stage: say -s vertex or -s fragment"},
        {{"-t", "glsl", "-s", "geometry", "n"}, "--stage: geometry not in {vertex,fragment}"},
        {{"-t", "glsl", "-s", "vertex"}, "NODE: name at least one node (--list shows them)"},
        {{"-t", "glsl", "-s", "vertex", "-D", "A", "n"}, "--define: 'A' should read NAME=INTEGER"},
        {{"-t", "glsl", "-s", "vertex", "-D", "=1", "n"},
         "--define: '=1' should read NAME=INTEGER"},
        {{"-t", "glsl", "-s", "vertex", "-D", "A=1x", "n"}, "--define: '1x' is not an integer"},
        {{"-t", "glsl", "-s", "vertex", "-D", "A=2147483648", "n"},
         "--define: 2147483648 is outside of the 32-bit range"},
        {{"-t", "glsl", "-s", "vertex", "--sampler", "A=", "n"}, "--sampler: '' is not an integer"},
        {{"--taget", "glsl"}, "unknown option --taget (did you mean '--target'?)"},
        {{"--nonsense"}, "unknown option --nonsense"},
        {{"-t", "all", "-s", "vertex", "n"},
         "--target: 'all' needs --vertex, --fragment and -o DIR"},
        {{"-t", "all", "--vertex", "n", "-o", "out"},
         "--vertex: --vertex and --fragment go together"},
        {{"-t", "all", "--vertex", "n", "--fragment", "n"},
         "--output: both passes need a directory: -o DIR"},
        {{"-t", "all", "--vertex", "n", "--fragment", "n", "-o", "out", "n"},
         "--vertex: takes the place of --stage and of the node names"},
        {{"-t", "all", "--vertex", "n", "--fragment", "n", "-o", "out", "--semantics-in", "x"},
         "--vertex: hands the table to the fragment pass by itself: leave --semantics-in and "
         "--semantics-out out"},
        {{"--list", "-t", "glsl"}, "--list: compiles nothing: leave --target out"},
        {{"--graph", "png"}, "--graph: png not in {dot}"},
        {{"--list", "--graph", "dot"}, "--list: compiles nothing: leave --graph out"},
        {{"--diagnostics", "xml"}, "--diagnostics: xml not in {text,json}"},
        {{"-C", "x", "build", "m.json"}, "build: comes first: morlc build ..."},
        {{"-t", "glls"},
         "--target: glls not in {" + TargetList(",") + ",all} (did you mean 'glsl'?)"},
        {{"build", "m.json", "-o", "d", "--ninja", ""}, "--ninja: has an empty value"},
        {{"build"}, "FILE: name the manifest, such as shaders.json"},
        {{"build", "m.json"}, "--output: say where to write: -o DIR"},
        {{"build", "m.json", "-o", "d", "x"}, "unexpected argument 'x'"},
        {{"build", "m.json", "-o", "d", "-j", "257"}, "--jobs: 257 is not between 0 and 256"},
        {{"build", "m.json", "-o", "d", "--shader", "a", "--index"},
         "--index: does not go with --shader: give one of them"},
        {{"build", "m.json", "-o", "d", "--launcher", "nice"}, "--launcher requires --ninja"},
        {{"build", "m.json", "-o", "d", "--index", "--depfile", "f"},
         "--depfile: does not go with --index"},
        {{"build", "m.json", "-o", "d", "--index", "--no-index"},
         "--no-index: does not go with --index"},
    };
    for (const auto& [arguments, message] : rows) {
        const ProcessResult result = Morlc(arguments);
        const bool isBuild = !arguments.empty() && arguments[0] == "build";
        EXPECT_EQ(result.status, 2) << message;
        EXPECT_EQ(result.out, "") << message;
        EXPECT_EQ(result.err, "morlc: error: " + message + "\nSee 'morlc" +
                                  (isBuild ? " build" : "") + " --help'.\n");
    }
    EXPECT_EQ(Morlc({"--help"}).status, 0);
    EXPECT_EQ(Morlc({"build", "--help"}).status, 0);
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
         "morlc: error: cannot read " + base + "/none.json: No such file or directory"},
        {{"--semantics-in", base}, "morlc: error: cannot read " + base + ": Is a directory"},
        {{"--semantics-in", base + "/empty.json"}, base + "/empty.json: error: the file is empty"},
        {{"--semantics-in", base + "/array.json"},
         base + "/array.json:1:1: error: not a JSON object\n    []\n    ^"},
        {{"--semantics-in", base + "/number.json"},
         base + "/number.json:1:7: error: the value of \"a\" is not a string\n    {\"a\": 3}\n" +
             "          ^"},
        {{"--semantics-in", base + "/wrong.json"},
         base +
             "/wrong.json:1:8: error: not valid JSON: Syntax error: value, object or array "
             "expected.\n" +
             "    {\"a\": [\n           ^"},
        {{"-o", base}, "morlc: error: cannot write " + base + ": Is a directory"},
        {{"-o", base + "/none/out"},
         "morlc: error: cannot write " + base + "/none/out: No such file or directory"},
        {{"-o", "/dev/full"}, "morlc: error: cannot write /dev/full: No space left on device"},
        {{"--semantics-out", "/dev/full"},
         "morlc: error: cannot write /dev/full: No space left on device"},
    };
    for (const auto& [extra, message] : rows) {
        std::vector<std::string> arguments = extra;
        arguments.insert(arguments.end(), {"-t", "glsl", "-s", "vertex", "node"});
        const ProcessResult result = MorlcOn(directory.path, "in float a;", arguments);
        EXPECT_EQ(result.status, 1) << message;
        EXPECT_EQ(result.err, message + "\n");
    }
    EXPECT_EQ(Morlc({"-C", base + "/none", "-t", "glsl", "-s", "vertex", "n"}).status, 1);
}

TEST(Morlc, ReportsAFullDiskAndAClosedPipe)
{
    const std::string command =
        "\"" MORLC "\" -C \"" + kExamples + "\" -t glsl -s vertex transform";
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

// What the compiler leaves out without a word, or raises without saying where.
TEST(Morlc, ReportsBrokenNodeFiles)
{
    const std::pair<std::string, std::string> rows[] = {
        {"[{\"name\": 3}]", ":1:11: error: a node's \"name\" must be a string"},
        {"[{},\n /* x\n */ {\"x\": []}]", ":3:11: error: a node's \"x\" must be a number"},
        {"[{\"ref\": [[]]}]", ":1:11: error: a reference must be a string, the name of a node"},
        {"[{\"ref\": {\"a\": 1}}]", ":1:10: error: a node's \"ref\" must be a list of names"},
        {"[{\"name\": \"a\"} // x\n {}]",
         ":2:2: error: not valid JSON: Missing ',' or ']' in array declaration"},
        {"\xEF\xBB\xBF[{\"name\": 3}]", ":1:11: error: a node's \"name\" must be a string"},
        {"{}", ":1:1: error: not a list of nodes (a JSON array)"},
        {std::string(300, '['), ": error: not valid JSON: nested too deeply"},
    };
    for (const auto& [text, message] : rows) {
        const TemporaryDirectory directory;
        morl_test::WriteNodeFiles(directory.path, text);
        const ProcessResult result =
            Morlc({"-C", directory.path.string(), "-t", "glsl", "-s", "vertex", "n"});
        EXPECT_EQ(result.status, 1) << text;
        EXPECT_EQ(result.out, "") << text;
        const std::string start = directory.path.string() + "/morl/vertex_shader.morl" + message;
        EXPECT_EQ(result.err.substr(0, start.size() + 1), start + "\n");
    }
}

TEST(Morlc, TakesStrangeNames)
{
    const TemporaryDirectory directory;
    morl_test::WriteNodeFiles(directory.path,
                              "[null, {\"name\": true, \"x\": false, \"ref\": null}, /**/"
                              "{\"name\": \"a\\u0000\\n\xff\", \"content\": \"in float a\"}]");
    const ProcessResult strange =
        Morlc({"-C", directory.path.string(), "-t", "glsl", "-s", "vertex", "b\n"});
    EXPECT_EQ(strange.status, 1);
    EXPECT_EQ(strange.err, "morlc: error: Morl Compiler: unknown node: b?\n");
    EXPECT_EQ(Morlc({"-C", directory.path.string(), "-t", "glsl", "-s", "vertex", "true"}).err, "");

    fs::remove(directory.path / "morl/post_effect.morl");
    EXPECT_EQ(Morlc({"-C", directory.path.string(), "-t", "glsl", "-s", "vertex", "true"}).err,
              directory.path.string() + "/morl/post_effect.morl: error: Can't Find File: " +
                  "morl/post_effect.morl (a file without nodes holds [])\n");
}

// The caret stands under the column whatever is to its left; of a long line a part is shown.
TEST(Morlc, PointsAtTheColumn)
{
    const std::string blanks(200, ' ');
    std::string accents;
    for (int i = 0; i < 100; ++i) {
        accents += "\u00df";
    }
    const std::tuple<std::string, std::string> rows[] = {
        {"void main() {\n\tfloat a\u00df = 1.0;\n}", "     float a\u00df = 1.0;\n            ^\n"},
        {"void main() {\n  /*\u00df\u20ac*/ x = ;\n}",
         "      /*\u00df\u20ac*/ x = ;\n                  ^\n"},
        {"void main() {\r\n x = ;\r\n}", "     x = ;\n          ^\n"},
        {"void main() { /*" + accents + "*/ x = ;}",
         "    " + accents.substr(0, 2 * 26) + "*/ x = ;}\n" + std::string(38, ' ') + "^\n"},
        {"void main() { x =" + blanks + ";" + blanks + "}",
         std::string(63, ' ') + ";" + std::string(60, ' ') + "\n" + std::string(64, ' ') + "^\n"},
    };
    for (const auto& [source, excerpt] : rows) {
        const TemporaryDirectory directory;
        const ProcessResult result =
            MorlcOn(directory.path, source, {"-t", "glsl", "-s", "vertex", "node"});
        const std::size_t line = result.err.find('\n');
        ASSERT_NE(line, std::string::npos) << source;
        EXPECT_EQ(result.err.substr(line + 1, excerpt.size()), excerpt) << result.err;
    }
}

TEST(Morlc, WritesDiagnosticsAsJson)
{
    const TemporaryDirectory directory;
    const ProcessResult result =
        MorlcOn(directory.path, "in float a;\nvoid main() { x = \"; }",
                {"-t", "glsl", "-s", "vertex", "--diagnostics", "json", "node"});
    std::istringstream lines(result.err);
    std::string line;
    ASSERT_TRUE(std::getline(lines, line));
    Json::Value object;
    std::istringstream(line) >> object;
    EXPECT_EQ(object["file"].asString(), (directory.path / "morl/vertex_shader.morl").string());
    EXPECT_EQ(object["node"].asString(), "node");
    EXPECT_EQ(object["line"].asInt(), 2);
    EXPECT_EQ(object["column"].asInt(), 19);
    EXPECT_EQ(object["severity"].asString(), "error");
    EXPECT_EQ(object["message"].asString(), "expression error:");
    EXPECT_EQ(object.size(), 6U);
}

TEST(Morlc, IsColouredOnATerminalOnly)
{
    const std::string command = "\"" MORLC "\" -C \"" + kExamples + "\" -t glsl -s vertex nope";
    const std::string terminal = "script -qec '" + command + "' /dev/null";
    const std::string plain = "morlc: error: Morl Compiler: unknown node: nope\r\n";
    EXPECT_EQ(morl_test::RunShell("TERM=xterm " + terminal).out,
              "\x1b[1mmorlc:\x1b[0m \x1b[1;31merror:\x1b[0m Morl Compiler: unknown node: nope\r\n");
    EXPECT_EQ(morl_test::RunShell("TERM=xterm NO_COLOR=1 " + terminal).out, plain);
    EXPECT_EQ(morl_test::RunShell("TERM=dumb " + terminal).out, plain);
    EXPECT_EQ(morl_test::RunShell("TERM=xterm " + command).err,
              "morlc: error: Morl Compiler: unknown node: nope\n");
}

TEST(Morlc, ListsNodes)
{
    const TemporaryDirectory directory;
    const ProcessResult result = MorlcOn(
        directory.path,
        "uniform float3 colors[4];\n#if LIGHTS > 1\nin float3 n : TEXAUTO;\n#else\nin float m;\n"
        "#endif\n#for LIGHTS:0\nuniform float light_LIGHTS;\n#endfor\nout auto c : COLOR;",
        {"--list"});
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, "node  " + directory.path.string() + "/morl/vertex_shader.morl\n" +
                              "  in       float3 n : TEXAUTO  #if\n"
                              "  in       float m  #else\n"
                              "  out      auto c : COLOR\n"
                              "  uniform  float3 colors[4]\n"
                              "  uniform  float light_LIGHTS  #for LIGHTS\n");
    const ProcessResult samples = Morlc({"-C", kExamples, "--list"});
    EXPECT_EQ(samples.status, 0);
    EXPECT_NE(samples.out.find("\nfog  " + kExamples +
                               "/morl/fragment_shader.morl\n  ref      lighting\n"),
              std::string::npos);
}

TEST(Morlc, DrawsTheGraph)
{
    const TemporaryDirectory directory;
    morl_test::WriteNodeFiles(directory.path, R"([{"name": "a<", "x": 5, "y": 7, "ref": ["b", "b"]},
        {"name": "b", "x": 5, "y": 7, "ref": ["c", "gone"]}, {"name": "c", "ref": ["b"]},
        {"name": "d", "x": 1e300, "y": -1e300}])");
    const std::string base = directory.path.string();
    const std::string dot = Morlc({"-C", base, "--graph", "dot"}).out;
    const char* const edges =
        "  n0 -> n1;\n"
        "  n1 -> n2 [color=red, penwidth=2];\n"
        "  n1 -> n4 [color=red, style=dashed];\n"
        "  n2 -> n1 [color=red, penwidth=2];\n}\n";
    EXPECT_NE(dot.find(edges), std::string::npos) << dot;
    EXPECT_NE(dot.find("n0 [label=\"a<\", pos=\"5,-7\"];"), std::string::npos) << dot;
    EXPECT_NE(dot.find("n1 [label=\"b\", pos=\"5,-7\", color=red, penwidth=2];"), std::string::npos)
        << dot;
}

}  // namespace
