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

TEST(Nodes, HavePlacesInTheirTexts)
{
    const std::string text =
        "[{},\n {\"name\": \"n\", \"content\": \"a\\n\\u00e9x\\ud83d\\ude00\\\"\xC3\xA9z\"}]";
    MorlCompiler compiler{std::vector<NodeText>()};
    const NodeTextResult result = compiler.LoadNodes({"t", text});
    ASSERT_EQ(result.contents.size(), 2U);
    const TextLines lines(text);
    const auto at = [&](std::size_t node, int line, int column) {
        const TextPlace place = PlaceInNodeText(text, result.contents[node], {line, column});
        const std::size_t start = lines.Starts()[static_cast<std::size_t>(place.line) - 1];
        return text.substr(start + static_cast<std::size_t>(place.column) - 1);
    };
    const std::tuple<int, int, const char*> rows[] = {
        {1, 1, "a\\"}, {1, 2, "\\n"},     {1, 9, "\\n"},     {2, 1, "\\u00e9"}, {2, 2, "\\u00e9"},
        {2, 3, "x"},   {2, 4, "\\ud83d"}, {2, 7, "\\ud83d"}, {2, 8, "\\\""},    {2, 9, "\xC3\xA9"},
        {2, 11, "z"},  {2, 12, "\"}]"},   {3, 1, "\"}]"},
    };
    for (const auto& [line, column, rest] : rows) {
        EXPECT_EQ(at(1, line, column).find(rest), 0U) << line << ":" << column;
    }
    EXPECT_EQ(at(0, 2, 2).find("{},"), 0U);
}

/// What a source reads as, with its faults.
std::string Shown(std::string_view text)
{
    std::vector<NodeSourceFault> faults;
    const NodeSource source = ReadNodeSource(text, faults);
    std::string shown;
    for (const NodeSourceFault& fault : faults) {
        shown += std::to_string(fault.line) + ":" + std::to_string(fault.column) +
                 (fault.isWarning ? " warning: " : " ") + fault.text + "\n";
    }
    if (!shown.empty()) {
        return shown;
    }
    shown = source.hasName ? "name '" + source.name + "' " : "";
    for (const std::string& reference : source.references) {
        shown += "ref '" + reference + "' ";
    }
    for (const auto& [name, json] : source.members) {
        shown += name + "=" + json + " ";
    }
    return shown + std::to_string(source.contentLine) + " '" + source.content + "'";
}

TEST(Nodes, AreReadFromSources)
{
    const std::pair<std::string, const char*> rows[] = {
        {"", "1 ''"},
        {"\n", "1 ''"},
        {"a\n\n", "1 'a\n'"},
        {"//! ref: a, \"b, \\\"c\\u0041\"\n//!ref:d e \nx",
         "ref 'a' ref 'b, \"cA' ref 'd e' 3 'x'"},
        {"//! ref:\n//!\n//! x\n", "3 '//! x'"},
        {"//! name: \"\"\n//! \"k\" : {\"a\": [1, null]}\n", "name '' k={\"a\":[1,null]} 3 ''"},
        {"\xEF\xBB\xBF//! name: n\r\n//!\r\na\r\r\nb\r\n", "name 'n' 3 'a\r\nb'"},
        {"a\nb\r\n", "1 'a\nb\r'"},
        {"//! see below\n",
         "1:5 a line of the header reads '//! WORD: VALUE'; a line '//!' before this one ends the "
         "header\n"},
        {"//! at: 1 2\n//! rfe: a\n//! at: 1 2\n",
         "2:5 warning: unknown word in the header: 'rfe' (did you mean 'ref'?)\n"
         "3:5 the header has this already\n"},
        {"//! at: 1\n//! at: 1 2 3\n//! at: \"1\" 2\n//! name: a, b\n",
         "1:9 expected two numbers, as in '//! at: 320 40'\n"
         "2:9 expected two numbers, as in '//! at: 320 40'\n"
         "3:9 expected two numbers, as in '//! at: 320 40'\n"
         "4:11 expected one name; with a comma or quotes, as a JSON string\n"},
        {"//! ref: a,\n//! ref: \"a\n//! ref: , b\n//! ref: \"a\" b",
         "1:11 expected names, separated by commas\n2:10 expected names, separated by commas\n"
         "3:10 expected names, separated by commas\n4:14 expected names, separated by commas\n"},
        {"//! \"k\": 1 2\n//! \"k\" 1\n//! \"x\": 1\n//! \"a\": 1\n//! \"a\": 1",
         "1:5 expected a JSON string, ':' and a JSON value on this line\n"
         "2:5 expected a JSON string, ':' and a JSON value on this line\n"
         "3:5 the header has words of its own for this: 'name', 'ref' and 'at'; the content "
         "follows "
         "it\n5:5 the header has this already\n"},
    };
    for (const auto& [text, expected] : rows) {
        EXPECT_EQ(Shown(text), expected) << text;
    }
    EXPECT_NE(Shown("//! \"k\": " + std::string(5000, '[')), "");
}

TEST(Nodes, AreWrittenAsSources)
{
    NodeSource node;
    node.name = "unused";
    node.content = "//! no header";
    EXPECT_EQ(WriteNodeSource(node), "//!\n//! no header\n");
    node.hasName = true;
    node.name = "a/b";
    node.references = {"plain name", "a,b", " a", "", "a\nb", "\xC3\xA9\xFF"};
    node.x = 0.1;
    node.y = -3e300;
    node.members = {{"at", "[1]"}};
    node.content = "c\r";
    EXPECT_EQ(WriteNodeSource(node),
              "//! name: a/b\n//! ref: plain name, \"a,b\", \" a\", \"\", \"a\\nb\", \xC3\xA9\xFF\n"
              "//! at: 0.1 -3e+300\n//! \"at\": [1]\nc\r\n");
    // What would be misread without a header, or is odd, comes back all the same. (The fuzzer looks
    // for more.)
    for (const char* content :
         {"", "\n", "a\r\n", "a\r", "\xEF\xBB\xBF", "//!", "//!\n", "\r\n\r\n"}) {
        for (const double x : {0.0, -0.0, 1.5, 1e15, 0x1p53, 5e-324, 1.7976931348623157e308}) {
            NodeSource written;
            written.x = x;
            written.content = content;
            std::vector<NodeSourceFault> faults;
            const NodeSource read = ReadNodeSource(WriteNodeSource(written), faults);
            EXPECT_TRUE(faults.empty());
            EXPECT_EQ(read.content, content);
            EXPECT_EQ(read.x, x);
        }
    }
}

TEST(Nodes, AreWrittenAsOneText)
{
    EXPECT_EQ(WriteNodeText({}), "[]\n");
    std::vector<NodeTextFault> faults;
    const std::string text =
        R"([{"content": "b\n", "name": "b", "ref": ["a", true], "x": 0.1, "k": {"z": 1, "a": [2.50]}}, {}, null])";
    EXPECT_EQ(WriteNodeText(ReadNodeText({"t", text}, faults)), R"([
  {
    "name": "",
    "x": 0,
    "y": 0,
    "ref": [],
    "content": ""
  },
  {
    "name": "",
    "x": 0,
    "y": 0,
    "ref": [],
    "content": ""
  },
  {
    "name": "b",
    "x": 0.1,
    "y": 0,
    "ref": ["a", "true"],
    "k": {"a":[2.5],"z":1},
    "content": "b\n"
  }
]
)");
    EXPECT_TRUE(ReadNodeText({"t", R"([{"name": "a"}, {"name": 1}])"}, faults).empty());
    ASSERT_EQ(faults.size(), 1U);
    EXPECT_EQ(faults[0].column, 26);
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
