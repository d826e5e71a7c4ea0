// SPDX-License-Identifier: MIT
// Nodes that come from memory and change while the compiler lives.
#include "support/graph.h"
#include "support/log_capture.h"

#include <gtest/gtest.h>
#include <utility>

namespace {

using namespace ns_ruke;
using morl_test::LogCapture;
using morl_test::MakePass;

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
