// SPDX-License-Identifier: MIT
// "morlc check" on generated shaders: it is silent about valid ones, and finds planted faults on
// their lines.
#include "support/process.h"
#include "support/random_graph.h"

#include <gtest/gtest.h>
#include <json/json.h>
#include <cstdlib>
#include <map>
#include <sstream>

namespace {

using morl_test::NodeSource;
using morl_test::ProcessResult;
using morl_test::RandomGraph;

/// Many generated shaders in one directory, with a manifest.
class Shaders {
public:
    /// Adds the shader of a graph; its nodes get names of their own.
    void Add(unsigned seed, const RandomGraph& graph)
    {
        const std::string prefix = "s" + std::to_string(seed) + "_";
        for (const NodeSource& source : graph.nodes) {
            Json::Value node(Json::objectValue);
            node["name"] = prefix + source.name;
            node["content"] = source.content;
            for (const std::string& reference : source.references) {
                node["ref"].append(prefix + reference);
            }
            nodes.append(node);
        }
        Json::Value shader(Json::objectValue);
        shader["name"] = prefix;
        for (const std::string& name : graph.vertexNodes) {
            shader["vertex"].append(prefix + name);
        }
        for (const std::string& name : graph.fragmentNodes) {
            shader["fragment"].append(prefix + name);
        }
        for (const auto& [name, value] : graph.macros) {
            shader["macros"][name] = value;
        }
        manifest["shaders"].append(shader);
    }

    ProcessResult Check(std::vector<std::string> options) const
    {
        const morl_test::TemporaryDirectory directory;
        morl_test::WriteNodeFiles(directory.path, nodes.toStyledString());
        morl_test::WriteText(directory.path / "m.json", manifest.toStyledString());
        options.insert(options.begin(), {morl_test::ToolPath(), "check", "-C",
                                         directory.path.string(), "m.json", "-q"});
        return morl_test::RunProcess(options);
    }

private:
    Json::Value nodes{Json::arrayValue};
    Json::Value manifest{Json::objectValue};
};

/// How many valid programs there are; MORL_PROGRAMS changes it.
unsigned ProgramCount()
{
    const char* const count = std::getenv("MORL_PROGRAMS");
    return count != nullptr ? static_cast<unsigned>(std::atol(count)) : 1000;
}

TEST(Check, SaysNothingOfValidPrograms)
{
    Shaders shaders;
    for (unsigned seed = 0; seed < ProgramCount(); ++seed) {
        shaders.Add(seed, RandomGraph(seed));
    }
    // Not every program uses every macro, and some assign in vain; that is true.
    const ProcessResult result = shaders.Check({"-W", "no-unused-macro", "-W", "no-unread-change"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
}

const char* const kFaults[] = {
    "float wrong = missing_name;",
    "float wrong = oFirst.z;",
    "float3 wrong = cross(oThird, oSecond);",
    "float wrong = dot(oFirst, oSecond);",
    "float4 wrong = tex2D(oFirst, oFirst);",
    "float wrong = sin(oFirst, oFirst);",
    "float2 wrong = oThird *\n    missing_name;",
    "float4 wrong = float4(oFirst, missing_name, 1.0);",
};

/// Puts a line into the `main` of a source, outside of blocks, and returns its number; 0 if there
/// is no place for it.
int Plant(std::string& source, const std::string& fault, unsigned choice)
{
    std::vector<std::size_t> places;
    int depth = 0;
    bool isInMain = false;
    const ns_ruke::TextLines lines(source);
    for (const std::size_t start : lines.Starts()) {
        const std::string line = source.substr(start, source.find('\n', start) - start);
        const bool isInside = line.rfind("of two lines", 0) == 0 || line.rfind("else", 0) == 0;
        if (isInMain && depth == 0 && !isInside) {
            places.push_back(start);
        }
        isInMain = isInMain || line == "void main() {";
        depth += line.rfind("#if", 0) == 0 || line.rfind("#for ", 0) == 0 ? 1 : 0;
        depth += line.rfind("#end", 0) == 0 ? -1 : 0;
    }
    if (places.empty()) {
        return 0;
    }
    const std::size_t place = places[choice % places.size()];
    source.insert(place, fault + "\n");
    return lines.PlaceOf(place).line;
}

TEST(Check, FindsFaultsOnTheLinesWhereTheyArePlanted)
{
    Shaders shaders;
    std::map<std::string, int> planted;
    for (unsigned seed = 0; seed < 200; ++seed) {
        RandomGraph graph(seed);
        // The inputs are in scope from the first fragment node on.
        NodeSource& node = graph.nodes[1 + seed % (graph.nodes.size() - 1)];
        const std::string fault = kFaults[seed % std::size(kFaults)];
        const int line = Plant(node.content, fault, seed / 3);
        ASSERT_GT(line, 0) << node.content;
        planted["s" + std::to_string(seed) + "_" + node.name] = line;
        shaders.Add(seed, graph);
    }
    // Without the library's own checks, so that all messages are the compiler's.
    std::vector<std::string> options = {"--diagnostics", "json"};
    for (const char* group : {"names", "macros", "lost-code", "values", "stages", "targets"}) {
        options.insert(options.end(), {"-W", std::string("no-") + group});
    }
    std::istringstream lines(shaders.Check(options).err);
    std::map<std::string, int> found;
    for (std::string text; std::getline(lines, text);) {
        Json::Value message;
        std::istringstream(text) >> message;
        const std::string node = message["node"].asString();
        const int distance = message["nodeLine"].asInt() - planted[node];
        // The last line of a fault of two lines holds its word.
        EXPECT_TRUE(distance == 0 || distance == 1) << text;
        ++found[node];
    }
    EXPECT_EQ(found.size(), planted.size());
}

// Texts that would overflow a compiler's stack or take it minutes.
TEST(Check, LeavesNothingToTheCompilerThatItCannotTake)
{
    const auto check = [](const std::string& content, const std::string& options) {
        const morl_test::TemporaryDirectory directory;
        Json::Value node(Json::objectValue);
        node["name"] = "n";
        node["content"] = content;
        Json::Value nodes(Json::arrayValue);
        nodes.append(node);
        morl_test::WriteNodeFiles(directory.path, nodes.toStyledString());
        const ProcessResult result =
            morl_test::RunShell("ulimit -s 2048; '" + morl_test::ToolPath() + "' check -C '" +
                                directory.path.string() + "' -s fragment n " + options);
        return std::to_string(result.status) + " " + result.err;
    };
    constexpr std::size_t kDeep = 1200;
    EXPECT_EQ(check("out float4 c : COLOR0; void main() { c = float4(" + std::string(kDeep, '(') +
                        "1.0" + std::string(kDeep, ')') + ", 1.0, 1.0, 1.0); }",
                    ""),
              "0 ");
    const std::string said = check(
        "out float4 c : COLOR0; void main() { #for N : 0 c = float4(1.0,1.0,1.0,1.0); #endfor }",
        "-D N=150000 -t glsl");
    EXPECT_NE(said.find("no verdict on a text of "), std::string::npos) << said;
}

}  // namespace
