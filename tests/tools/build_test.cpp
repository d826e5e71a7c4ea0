// SPDX-License-Identifier: MIT
#include "support/graph.h"
#include "support/log_capture.h"
#include "support/samples.h"
#include "tools/morlc.h"

#include <gtest/gtest.h>
#include <json/json.h>
#include <map>
#include <set>
#include <sstream>

namespace {

namespace fs = std::filesystem;
using morl_test::kExamples;
using morl_test::Morlc;
using morl_test::ProcessResult;
using morl_test::ReadText;
using morl_test::TemporaryDirectory;
using morl_test::WriteText;

Json::Value ReadJson(const fs::path& path)
{
    Json::Value root;
    std::istringstream(ReadText(path)) >> root;
    return root;
}

/// All files below a directory, by name.
std::map<std::string, std::string> Tree(const fs::path& directory)
{
    std::map<std::string, std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(directory)) {
        if (entry.is_regular_file()) {
            files[entry.path().lexically_relative(directory).string()] = ReadText(entry.path());
        }
    }
    return files;
}

/// Builds the sample manifest.
ProcessResult BuildSamples(const fs::path& output, std::vector<std::string> extra = {})
{
    extra.insert(extra.begin(), {"build", "-C", kExamples, "shaders.json", "-o", output.string()});
    return Morlc(extra);
}

std::string WithoutExcerpts(const std::string& diagnostics)
{
    std::string text;
    std::istringstream lines(diagnostics);
    for (std::string line; std::getline(lines, line);) {
        text += line.substr(0, 4) == "    " ? "" : line + "\n";
    }
    return text;
}

/// A graph and a manifest in a directory of their own.
struct Project {
    Project(const std::string& nodes, const std::string& manifest)
    {
        morl_test::WriteNodeFiles(directory.path, nodes);
        WriteText(directory.path / "m.json", manifest);
    }

    ProcessResult Build(std::vector<std::string> extra = {}) const
    {
        extra.insert(extra.begin(), {"build", "-C", Path(), "m.json", "-o", "out"});
        return Morlc(extra);
    }

    std::string Path() const { return directory.path.string(); }
    std::string Nodes() const { return Path() + "/morl/vertex_shader.morl"; }

    TemporaryDirectory directory;
};

// The index leads from every shader, target and variant to the texts that the library gives.
TEST(Build, WritesWhatTheLibraryGives)
{
    const TemporaryDirectory directory;
    const ProcessResult result = BuildSamples(directory.path);
    EXPECT_EQ(result.status, 0) << result.err;
    const std::string summary =
        "16 shaders, 272 variants, 268 distinct of 544 texts (268 written), 0 errors, ";
    EXPECT_EQ(result.out.substr(0, summary.size()), summary);

    const morl_test::LogCapture log;
    const Json::Value index = ReadJson(directory.path / "index.json")["shaders"];
    const auto compiler = morl_test::MakeSampleCompiler();
    std::set<std::string> files;
    for (const morl_test::SampleRequest& request : morl_test::SampleGrid()) {
        const Json::Value& variants = index[request.shader][request.target];
        // Only the lists of the manifest are in the names of variants; the sample names all macros.
        const auto isOfRequest = [&](const std::string& name) {
            std::istringstream parts(name);
            for (std::string part; std::getline(parts, part, ',');) {
                if (("," + request.variant + ",").find("," + part + ",") == std::string::npos) {
                    return name == "default";
                }
            }
            return true;
        };
        const std::vector<std::string> names = variants.getMemberNames();
        const auto name = std::find_if(names.begin(), names.end(), isOfRequest);
        ASSERT_NE(name, names.end()) << request.shader << " " << request.variant;
        const morl_test::SampleTexts texts = morl_test::CompileSample(*compiler, request);
        const std::string vertex = variants[*name]["vertex"].asString();
        const std::string fragment = variants[*name]["fragment"].asString();
        EXPECT_EQ(ReadText(directory.path / vertex), texts.vertex) << vertex;
        EXPECT_EQ(ReadText(directory.path / fragment), texts.fragment) << fragment;
        files.insert({vertex, fragment});
    }
    EXPECT_EQ(files.size(), 268U);
}

TEST(Build, TellsWhatATextNeeds)
{
    const Project project(
        R"([{"name": "v", "content": "in float3 p : POSITION;\nout float2 uv : TEXAUTO;\nvoid main() { uv = p.xy; }"},
            {"name": "f", "content": "in float2 uv : TEXAUTO;\nuniform sampler2D map : SAUTO;\nuniform float4 tint;\nout float4 c : COLOR;\nvoid main() {\n#if N > 1\nc = tint;\n#else\nc = tex2D(map, uv);\n#endif\n}"}])",
        R"({"targets": ["glsl", "hlsl"], "shaders": [{"name": "s", "vertex": ["v"], "fragment": ["f"],
            "macros": {"N": [3, 1, 2], "M": [0, -1], "K": 5}, "samplers": {"map": 3, "other": 4},
            "targetMacros": {"glsl": {"N": 1}}}]})");
    const ProcessResult result = project.Build();
    EXPECT_EQ(result.status, 0) << result.err;
    const Json::Value root = ReadJson(project.Path() + "/out/s.json");
    EXPECT_EQ(root["nodes"]["fragment"][0].asString(), "f");
    EXPECT_EQ(root["macros"]["K"].asInt(), 5);
    EXPECT_EQ(root["macros"]["N"].size(), 3U);
    // Variants are numbered with the last macro, in the order of the names, varying fastest; the
    // first variant of a text gives it its name.
    const Json::Value& hlsl = root["variants"]["hlsl"];
    EXPECT_EQ(hlsl.size(), 6U);
    EXPECT_EQ(hlsl["M=-1,N=2"]["fragment"].asString(), "s/hlsl/M=0,N=3.frag");
    EXPECT_EQ(hlsl["M=-1,N=1"]["fragment"].asString(), "s/hlsl/M=0,N=1.frag");
    EXPECT_EQ(hlsl["M=-1,N=1"]["vertex"].asString(), "s/hlsl/M=0,N=3.vert");
    EXPECT_EQ(root["variants"]["glsl"]["M=0,N=2"]["fragment"].asString(), "s/glsl/M=0,N=3.frag");
    EXPECT_EQ(Tree(project.Path() + "/out").size(), 2U + 3U + 2U);

    const Json::Value& fragment = root["texts"]["s/hlsl/M=0,N=1.frag"];
    EXPECT_EQ(fragment["stage"].asString(), "fragment");
    EXPECT_EQ(fragment["uniforms"][0].asString(), "map");
    EXPECT_EQ(fragment["uniforms"][1].asString(), "tint");
    EXPECT_EQ(fragment["samplers"].size(), 1U);
    EXPECT_EQ(fragment["samplers"]["map"].asInt(), 3);
    EXPECT_EQ(root["texts"]["s/hlsl/M=0,N=3.vert"]["semantics"]["uv"].asString(), "TEXCOORD0");
    EXPECT_NE(ReadText(project.Path() + "/out/s/hlsl/M=0,N=1.frag").find(": register(s3)"),
              std::string::npos);
}

TEST(Build, IsTheSameForAnyNumberOfThreads)
{
    const TemporaryDirectory directory;
    EXPECT_EQ(BuildSamples(directory.path / "one", {"-q"}).out, "");
    const auto expected = Tree(directory.path / "one");
    EXPECT_EQ(expected.size(), 268U + 16U + 1U);
    for (const char* jobs : {"2", "5", "0"}) {
        const fs::path output = directory.path / (std::string("j") + jobs);
        EXPECT_EQ(BuildSamples(output, {"-j", jobs}).status, 0);
        EXPECT_EQ(Tree(output), expected) << jobs;
    }
}

/// Two variants of equal texts, and one shader more.
const char* const kTwoShaders =
    R"({"targets": ["glsl"], "shaders": [{"name": "a", "fragment": ["a"], "macros": {"N": [1, 2]}},
                                         {"name": "b", "fragment": ["b"]}]})";

std::string TwoNodes(const std::string& a, const std::string& b)
{
    return R"([{"name": "a", "content": "out float4 c : COLOR;\nvoid main() {\n)" + a +
           R"(}"}, {"name": "b", "content": ")" + b + R"("}])";
}

const char* const kDiffering = R"(#if N > 1\nc = c * 2.0;\n#endif\nc = c * 3.0;\n)";

// An index must not lead to the text of another variant, whatever else fails.
TEST(Build, KeepsTheIndexTrue)
{
    const Project project(TwoNodes("c = c * 3.0;", "in float x;"), kTwoShaders);
    ASSERT_EQ(project.Build().status, 0);
    const auto file = [&] {
        return ReadJson(project.Path() +
                        "/out/index.json")["shaders"]["a"]["glsl"]["N=2"]["fragment"]
            .asString();
    };
    EXPECT_EQ(file(), "a/glsl/N=1.frag");
    morl_test::WriteNodeFiles(project.Path(), TwoNodes(kDiffering, "in flot x;"));
    EXPECT_EQ(project.Build().status, 1);
    EXPECT_EQ(file(), "a/glsl/N=2.frag");
    EXPECT_TRUE(fs::exists(project.Path() + "/out/b/glsl/default.frag"));

    // What is not needed any more is removed, also when the shader alone is built.
    morl_test::WriteNodeFiles(project.Path(), TwoNodes("c = c * 4.0;", "in flot x;"));
    const Json::Value before = ReadJson(project.Path() + "/out/index.json");
    EXPECT_EQ(project.Build({"--shader", "a", "--no-index"}).status, 0);
    EXPECT_EQ(file(), "a/glsl/N=2.frag");
    EXPECT_EQ(project.Build({"--shader", "a"}).status, 0);
    EXPECT_EQ(file(), "a/glsl/N=1.frag");
    EXPECT_FALSE(fs::exists(project.Path() + "/out/a/glsl/N=2.frag"));
    const Json::Value after = ReadJson(project.Path() + "/out/index.json");
    EXPECT_NE(before["hashes"]["a/glsl/N=1.frag"], after["hashes"]["a/glsl/N=1.frag"]);
    EXPECT_EQ(before["shaders"]["b"], after["shaders"]["b"]);
}

TEST(Build, LeavesUnchangedFilesAlone)
{
    const TemporaryDirectory directory;
    BuildSamples(directory.path);
    const auto old = fs::file_time_type::clock::now() - std::chrono::hours(1);
    for (const auto& entry : fs::recursive_directory_iterator(directory.path)) {
        fs::last_write_time(entry.path(), old);
    }
    const fs::path changed = directory.path / "blur/glsl/TAPS=4.frag";
    WriteText(changed, "changed");
    const ProcessResult result = BuildSamples(directory.path);
    EXPECT_NE(result.out.find("(1 written)"), std::string::npos) << result.out;
    for (const auto& entry : fs::recursive_directory_iterator(directory.path)) {
        if (entry.is_regular_file()) {
            EXPECT_EQ(fs::last_write_time(entry.path()) == old, entry.path() != changed)
                << entry.path();
        }
    }
}

// What is reported, and in which order, does not depend on the threads; a shader with errors leaves
// what an earlier build wrote.
TEST(Build, ReportsEachFaultOnce)
{
    const Project project(
        R"([{"name": "good", "content": "out float4 c : COLOR;"},
            {"name": "bad", "content": "void main() {\nx = ;\n}"},
            {"name": "loop", "ref": ["pool"]}, {"name": "pool", "ref": ["loop"]}])",
        R"({"shaders": [{"name": "a", "fragment": ["good"]},
            {"name": "b", "fragment": ["bad"], "macros": {"N": [1, 2, 3, 4, 5, 6, 7, 8, 9]}},
            {"name": "c", "vertex": ["good"], "fragment": ["good", "bad"]},
            {"name": "d", "fragment": ["goood"], "macros": {"N": [1, 2]}},
            {"name": "e", "fragment": ["pool", "loop"]}, {"name": "f", "fragment": ["bad", "lost"]}]})");
    WriteText(project.Path() + "/out/b.json", "old");
    WriteText(project.Path() + "/out/c.json",
              R"({"texts": {}, "variants": {"glsl": {"default": {"vertex": "c/old"}}}})");
    const std::string expected =
        project.Nodes() +
        ": node bad:2:6: error: expression error:\n"
        "m.json:4:40: error: Morl Compiler: unknown node: goood (did you mean 'good'?) (shader "
        "'d', hlsl/N=1)\n"
        "m.json:5:22: error: MorlLinker: reference cycle: pool, loop (shader 'e', hlsl/default)\n"
        "m.json:5:92: error: Morl Compiler: unknown node: lost (shader 'f', hlsl/default)\n"
        "m.json:2:22: error: shader 'b' is not written: node 'bad' has errors\n"
        "m.json:3:22: error: shader 'c' is not written: node 'bad' has errors\n"
        "m.json:4:22: error: shader 'd' is not written\n"
        "m.json:5:22: error: shader 'e' is not written\n"
        "m.json:5:67: error: shader 'f' is not written\n";
    for (const char* jobs : {"1", "2", "7"}) {
        const ProcessResult result = project.Build({"-j", jobs});
        EXPECT_EQ(result.status, 1);
        EXPECT_NE(result.out.find(", 9 errors, "), std::string::npos) << result.out;
        EXPECT_EQ(WithoutExcerpts(result.err), expected) << jobs;
        const auto files = Tree(project.Path() + "/out");
        EXPECT_EQ(files.size(), 4U + 1U + 2U + 1U);
        EXPECT_EQ(files.at("b.json"), "old");
        const Json::Value index = ReadJson(project.Path() + "/out/index.json")["shaders"];
        EXPECT_EQ(index.getMemberNames(), (std::vector<std::string>{"a", "c"}));
        EXPECT_EQ(index["c"]["glsl"]["default"]["vertex"].asString(), "c/old");
    }
}

TEST(Build, RefusesManifestsThatAreNone)
{
    const std::pair<std::string, std::string> rows[] = {
        {"", "m.json: error: the file is empty"},
        {"[]", "m.json:1:1: error: the manifest must be an object"},
        {"{", "m.json:1:2: error: not valid JSON: Missing '}' or object member name"},
        {"{\"shaders\": [], \"shaders\": []}",
         "m.json:1:17: error: not valid JSON: Duplicate key: 'shaders'"},
        {"{}", "m.json:1:1: error: \"shaders\" must be a list of shaders"},
        {"{\"shader\": []}",
         "m.json:1:2: error: unknown member \"shader\" of the manifest (did you mean 'shaders'?)"},
        {"{\"targets\": [\"gsl\"], \"shaders\": []}",
         "m.json:1:14: error: unknown target 'gsl' (did you mean 'glsl'?)"},
        {"{\"shaders\": [3]}", "m.json:1:14: error: a shader must be an object"},
        {"{\"shaders\": [{\"name\": \"../x\"}]}",
         "m.json:1:23: error: a shader needs a \"name\" of letters, digits, '_' and '-' (not "
         "\"index\"), as files are called by it"},
        {"{\"shaders\": [{\"name\": \"x\"}]}",
         "m.json:1:14: error: the shader has neither \"vertex\" nor \"fragment\" nodes"},
        {"{\"shaders\": [{\"name\": \"x\", \"fragmnt\": []}]}",
         "m.json:1:28: error: unknown member \"fragmnt\" of a shader (did you mean 'fragment'?)"},
        {"{\"shaders\": [{\"name\": \"x\", \"vertex\": \"a\"}]}",
         "m.json:1:38: error: \"vertex\" must be a list of nodes"},
        {"{\"shaders\": [{\"name\": \"x\", \"vertex\": [1]}]}",
         "m.json:1:39: error: a node must be a string, its name"},
        {"{\"shaders\": [{\"name\": \"x\", \"vertex\": [\"a\"], \"macros\": {\"A\": 1.5}}]}",
         "m.json:1:61: error: the value of A must be an integer of 32 bits"},
        {"{\"shaders\": [{\"name\": \"x\", \"vertex\": [\"a\"], \"macros\": {\"A\": []}}]}",
         "m.json:1:61: error: A has no values"},
        {"{\"shaders\": [{\"name\": \"x\", \"vertex\": [\"a\"], \"macros\": {\"A\": [1, 1]}}]}",
         "m.json:1:65: error: A has this value twice"},
        {"{\"shaders\": [{\"name\": \"x\", \"vertex\": [\"a\"], \"macros\": {\"A/\": 1}}]}",
         "m.json:1:62: error: 'A/' is no name of a macro"},
        {"{\"shaders\": [{\"name\": \"x\", \"vertex\": [\"a\"], \"samplers\": {\"A\": \"1\"}}]}",
         "m.json:1:63: error: the value of A must be an integer of 32 bits"},
        {"{\"shaders\": [{\"name\": \"x\", \"vertex\": [\"a\"], \"targetMacros\": {\"hsl\": {}}}]}",
         "m.json:1:62: error: unknown member \"hsl\" of \"targetMacros\" (did you mean 'hlsl'?)"},
        {"{\"shaders\": [{\"name\": \"x\", \"vertex\": [\"a\"]}, {\"name\": \"x\", \"vertex\": "
         "[\"a\"]}]}",
         "m.json:1:55: error: two shaders are called 'x'"},
    };
    for (const auto& [manifest, message] : rows) {
        const Project project("[]", manifest);
        const ProcessResult result = project.Build();
        EXPECT_EQ(result.status, 1) << manifest;
        EXPECT_EQ(result.out, "") << manifest;
        EXPECT_EQ(result.err.substr(0, message.size() + 1), message + "\n");
        EXPECT_FALSE(fs::exists(project.Path() + "/out"));
    }
    std::string grid;
    for (char macro = 'A'; macro < 'I'; ++macro) {
        grid += std::string(grid.empty() ? "" : ",") + "\"" + macro + "\": [1,2,3,4,5,6,7,8,9]";
    }
    const Project huge("[]", "{\"shaders\": [{\"name\": \"x\", \"vertex\": [\"a\"], \"macros\": {" +
                                 grid + "}}]}");
    EXPECT_NE(huge.Build().err.find("these are more than 1000000 combinations"), std::string::npos);
}

TEST(Build, DrivesNinja)
{
    // Blanks and "$" are special to Ninja, to Make and to the shell.
    const TemporaryDirectory directory;
    const fs::path project = directory.path / "a b$c";
    fs::create_directories(project);
    fs::copy(kExamples, project, fs::copy_options::recursive);
    const std::string ninja = (project / "o ut/build.ninja").string();
    const fs::path tool = MORLC;
    ASSERT_EQ(morl_test::RunShell("cd '" + tool.parent_path().string() + "' && ./morlc build -C '" +
                                  project.string() +
                                  "' shaders.json -o 'o ut' --ninja 'o ut/build.ninja'")
                  .err,
              "");
    const auto run = [&] { return morl_test::RunProcess({"ninja", "-f", ninja}); };
    const auto isIdle = [&] { return run().out.find("no work to do") != std::string::npos; };
    const ProcessResult first = run();
    EXPECT_EQ(first.status, 0) << first.out << first.err;
    EXPECT_NE(first.out.find("[17/17] index"), std::string::npos) << first.out;
    EXPECT_TRUE(isIdle());

    // It makes what a build makes.
    ASSERT_EQ(BuildSamples(directory.path / "whole").status, 0);
    auto expected = Tree(directory.path / "whole");
    for (const auto& [name, text] : Tree(project / "o ut")) {
        if (expected.count(name) > 0) {
            EXPECT_EQ(text, expected[name]) << name;
            expected.erase(name);
        }
    }
    EXPECT_TRUE(expected.empty());

    // A change to one shader of the manifest concerns no other one.
    std::string manifest = ReadText(project / "shaders.json");
    manifest.replace(manifest.find("[2, 4, 8]"), 9, "[2, 3]");
    WriteText(project / "shaders.json", manifest);
    const ProcessResult changed = run();
    EXPECT_NE(changed.out.find("shader blur"), std::string::npos) << changed.out;
    EXPECT_EQ(changed.out.find("shader chrome"), std::string::npos) << changed.out;
    EXPECT_TRUE(fs::exists(project / "o ut/blur/glsl/TAPS=3.frag"));
    EXPECT_TRUE(isIdle());

    // A change to a node file that changes no text ends with the shaders.
    WriteText(project / "morl/post_effect.morl",
              ReadText(project / "morl/post_effect.morl") + "\n");
    const ProcessResult touched = run();
    EXPECT_NE(touched.out.find("shader chrome"), std::string::npos) << touched.out;
    EXPECT_EQ(touched.out.find("index"), std::string::npos) << touched.out;
    EXPECT_TRUE(isIdle());

    WriteText(project / "morl/post_effect.morl", "[");
    EXPECT_NE(run().status, 0);
}

TEST(Build, WritesDependenciesForMake)
{
    const TemporaryDirectory directory;
    ASSERT_EQ(BuildSamples(directory.path / "o ut", {"--depfile", (directory.path / "d").string()})
                  .status,
              0);
    const std::string output = directory.path.string() + "/o\\ ut/";
    const std::string depfile = ReadText(directory.path / "d");
    EXPECT_EQ(depfile.find(output + "index.json " + output + "lit_textured.json "), 0U) << depfile;
    WriteText(directory.path / "Makefile",
              "all: " + output + "index.json\n" + output + "index.json:\n\techo made\ninclude d\n");
    const auto make = [&] {
        return morl_test::RunProcess({"make", "-s", "-C", directory.path.string()}).out;
    };
    EXPECT_EQ(make(), "");
    fs::last_write_time(directory.path / "o ut/index.json",
                        fs::file_time_type::clock::now() - std::chrono::hours(100000));
    EXPECT_EQ(make(), "made\n");
}

TEST(Build, RefusesPathsThatMakeCannotRead)
{
    const TemporaryDirectory directory;
    for (const char* option : {"--depfile", "--ninja"}) {
        const ProcessResult result =
            BuildSamples(directory.path / "a;b", {option, (directory.path / "d").string()});
        EXPECT_EQ(result.status, 1);
        EXPECT_NE(result.err.find("has a character (';') that Make or Ninja cannot read"),
                  std::string::npos)
            << result.err;
        EXPECT_FALSE(fs::exists(directory.path / "d"));
    }
}

TEST(Build, ShowsProgressOnATerminalOnly)
{
    const TemporaryDirectory directory;
    const std::string command = "\"" MORLC "\" build -C \"" + kExamples + "\"" +
                                " shaders.json -o " + directory.path.string();
    EXPECT_EQ(morl_test::RunShell(command).err, "");
    const std::string shown = morl_test::RunShell("script -qec '" + command + "' /dev/null").out;
    EXPECT_NE(shown.find("/272] variants"), std::string::npos) << shown;
}

TEST(Build, ReportsWhatItCannotWrite)
{
    const Project project("[{\"name\": \"n\", \"content\": \"in float a;\"}]",
                          "{\"shaders\": [{\"name\": \"s\", \"vertex\": [\"n\"]}]}");
    WriteText(project.Path() + "/out/s", "a file where a directory should be");
    const ProcessResult result = project.Build();
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("out/s"), std::string::npos) << result.err;
    EXPECT_EQ(Morlc({"build", "-C", project.Path(), "m.json", "-o", "none", "--index"}).err,
              "morlc: error: cannot read none/s.json: No such file or directory\n");
    WriteText(project.Path() + "/none/s.json", "{\"texts\": [3], \"variants\": {\"glsl\": 3}}");
    EXPECT_NE(Morlc({"build", "-C", project.Path(), "m.json", "-o", "none", "--index"})
                  .err.find("none/s.json:1:1: error: this is not what 'morlc build' writes"),
              std::string::npos);
    EXPECT_EQ(project.Build({"--shader", "z"}).err,
              "m.json: error: --shader: no shader is called 'z'\n");
}

}  // namespace
