// SPDX-License-Identifier: MIT
// Nodes that come from memory and change while the compiler lives.
#include "support/graph.h"
#include "support/log_capture.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <map>
#include <random>
#include <utility>

namespace {

using namespace ns_ruke;
using morl_test::LogCapture;
using morl_test::MakePass;

const std::vector<NodeText> kNoTexts;

std::string NodeList(const std::string& name, const std::string& content,
                     const std::string& reference)
{
    return R"([{"name": ")" + name + R"(", "content": ")" + content + R"(", "ref": [")" +
           reference + R"("]}])";
}

/// What the nodes of a compiler should be, and which of them it has parsed for which target.
struct Model {
    struct Node {
        std::string content;
        std::string reference;
        std::string parsed{};
    };

    void Set(const std::string& name, const std::string& content, const std::string& reference)
    {
        const auto old = nodes.find(name);
        const bool keeps = old != nodes.end() && old->second.content == content;
        nodes[name] = {content, reference, keeps ? old->second.parsed : ""};
    }

    std::vector<std::string> Names() const
    {
        std::vector<std::string> names;
        for (const auto& [name, node] : nodes) {
            names.push_back(name);
        }
        return names;
    }

    std::string CompileAfresh(const std::string& target) const
    {
        MorlCompiler compiler(kNoTexts);
        for (const auto& [name, node] : nodes) {
            compiler.SetNode(name, node.content, {node.reference});
        }
        PassProperty pass = MakePass(target, 0, Names());
        ShaderOutput output;
        compiler.Compile(pass, output);
        return output.code;
    }

    /// How many nodes a request for all of them has to parse; from then on they are parsed.
    std::size_t Parse(const std::string& target)
    {
        std::size_t count = 0;
        for (auto& [name, node] : nodes) {
            count += std::exchange(node.parsed, target) != target ? 1 : 0;
        }
        return count;
    }

    std::map<std::string, Node> nodes;
};

std::size_t CountParses(const LogCapture& log)
{
    const std::string mark = messages::kCompilerStart;
    return static_cast<std::size_t>(std::count(log.infos.begin(), log.infos.end(), mark));
}

// After any edits, a request gives what a new compiler gives, and parses what has changed.
TEST(Nodes, GiveTheSameAsANewCompilerAfterAnyEdits)
{
    const char* const names[] = {"a", "b", "c", "d"};
    const char* const contents[] = {"", "void main() { x = 1; }", "uniform float u;",
                                    "in float v; void main() { v = 2; }", "void main() { x = ; }"};
    std::mt19937 random(7);
    const auto pick = [&random](const auto& list) { return list[random() % std::size(list)]; };
    Model model;
    MorlCompiler compiler(kNoTexts);
    std::size_t requests = 0;
    for (int i = 0; i < 3000; ++i) {
        const std::string name = pick(names);
        const std::string content = pick(contents);
        const std::string reference = pick(names);
        const LogCapture log;
        switch (random() % 5) {
        case 0:
            compiler.SetNode(name, content, {reference});
            model.Set(name, content, reference);
            break;
        case 1:
            EXPECT_EQ(compiler.RemoveNode(name), model.nodes.erase(name) == 1);
            break;
        case 2: {
            const NodeTextResult result =
                compiler.LoadNodes({"t", NodeList(name, content, reference)});
            EXPECT_EQ(result.nodes, std::vector<std::string>{name});
            model.Set(name, content, reference);
            break;
        }
        case 3:
            EXPECT_FALSE(
                compiler.LoadNodes({"t", R"([{"name": "new"}, {"name": 3}])"}).faults.empty());
            break;
        default: {
            const std::string target = pick(MorlTargets());
            PassProperty pass = MakePass(target, 0, model.Names());
            const std::size_t before = CountParses(log);
            ShaderOutput output;
            compiler.Compile(pass, output);
            EXPECT_EQ(CountParses(log) - before, model.Parse(target));
            ASSERT_EQ(output.code, model.CompileAfresh(target)) << i;
            ++requests;
        }
        }
        ASSERT_EQ(compiler.GetNodeNames(), model.Names());
    }
    EXPECT_GT(requests, 100U);
}

std::string Shown(const std::vector<NodeTextFault>& faults)
{
    std::string text;
    for (const NodeTextFault& fault : faults) {
        text += fault.file + ":" + std::to_string(fault.line) + ":" + std::to_string(fault.column) +
                " " + fault.node + ": " + fault.text + "\n";
    }
    return text;
}

TEST(Nodes, AreRefusedWithAPlaceAndAReason)
{
    const std::pair<const char*, const char*> rows[] = {
        {"", "t:1:1 : not valid JSON: Syntax error: value, object or array expected.\n"},
        {"{}", "t:1:1 : not a list of nodes (a JSON array)\n"},
        {"[\n {\"name\": \"a\" \"x\": 1}]",
         "t:2:15 : not valid JSON: Missing ',' or '}' in object declaration\n"},
        {"[{\"name\": \"kept\", \"content\": \"\"},\n3, {\"name\": \"a\", \"y\": []}]",
         "t:2:1 : not a node (a JSON object)\nt:2:23 a: a node's \"y\" must be a number\n"},
        {"\xEF\xBB\xBF[ // one\n {\"name\": 1, \"ref\": [\"a\", 2]}]",
         "t:2:11 : a node's \"name\" must be a string\n"
         "t:2:27 : a reference must be a string, the name of a node\n"},
        {"[{\"content\": {}, \"ref\": {\"a\": 1}}]",
         "t:1:14 : a node's \"content\" must be a string\n"
         "t:1:25 : a node's \"ref\" must be a list of names\n"},
    };
    MorlCompiler compiler(std::vector<NodeText>{{"t", R"([{"name": "kept", "content": "c"}])"}});
    for (const auto& [text, expected] : rows) {
        const NodeTextResult result = compiler.LoadNodes({"t", text});
        EXPECT_EQ(Shown(result.faults), expected) << text;
        EXPECT_TRUE(result.nodes.empty());
        EXPECT_EQ(compiler.FindNode("kept")->GetContent(), "c");
    }
    const std::string deep(300, '[');
    EXPECT_EQ(Shown(compiler.LoadNodes({"t", deep}).faults),
              "t:0:0 : not valid JSON: nested too deeply\n");
    try {
        const MorlCompiler refused(std::vector<NodeText>{{"good", "[]"}, {"bad", "[\n3]"}});
        ADD_FAILURE() << "accepted";
    } catch (const NodeTextError& error) {
        EXPECT_STREQ(error.what(), "bad:2:1: not a node (a JSON object)");
    }
}

TEST(Nodes, ComeFromAnyDirectory)
{
    const morl_test::TemporaryDirectory directory;
    morl_test::WriteNodeFiles(directory.path, R"([{"name": "there", "x": 2}])");
    std::filesystem::remove(directory.path / kNodeFiles[1]);
    const LogCapture log;
    const MorlCompiler compiler(directory.path.string());
    EXPECT_EQ(compiler.GetNodeNames(), std::vector<std::string>{"there"});
    EXPECT_EQ(log.errors, std::vector<std::string>{messages::kFileNotFound +
                                                   directory.path.string() + "/" + kNodeFiles[1]});
}

}  // namespace
