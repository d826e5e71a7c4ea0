// SPDX-License-Identifier: MIT
#include "support/graph.h"
#include "support/log_capture.h"

#include <gtest/gtest.h>
#include <json/json.h>

namespace {

using namespace ns_ruke;
using morl_test::InDirectory;
using morl_test::LogCapture;
using morl_test::TemporaryDirectory;
using Strings = std::vector<std::string>;

std::unique_ptr<MorlCompiler> Load(const std::string& text)
{
    const TemporaryDirectory directory;
    morl_test::WriteNodeFiles(directory.path, text);
    const InDirectory inDirectory(directory.path);
    return std::make_unique<MorlCompiler>();
}

TEST(NodeFile, ReadsNodes)
{
    const auto compiler = Load(R"([ // nodes
        {"ref": ["b", "c", "b"], "name": "a", "x": 10, "y": 2.5, "content": "in float x;",
         "other": [1]} /* the first */,
        {"name": "b", "x": true, "content": null},
        {"name": "c", "ref": null}, null,
        {"name": true, "content": false, "ref": [ /* none */ ]}, // "the last, \" one"
        {"name": "e//", "ref": [ // one
            "\"/*" /**/, "*/" ]}
    ])");
    EXPECT_EQ(compiler->GetNodeNames(), (Strings{"", "a", "b", "c", "e//", "true"}));
    const MorlNode* a = compiler->FindNode("a");
    EXPECT_EQ(a->GetName(), "a");
    EXPECT_EQ(a->GetX(), 10.0F);
    EXPECT_EQ(a->GetY(), 2.5F);
    EXPECT_EQ(a->GetContent(), "in float x;");
    EXPECT_EQ(a->GetReference(), (Strings{"b", "c", "b"}));
    EXPECT_EQ(a->GetProgram(), nullptr);
    EXPECT_EQ(compiler->FindNode("b")->GetX(), 1.0F);
    EXPECT_EQ(compiler->FindNode("b")->GetContent(), "");
    EXPECT_EQ(compiler->FindNode("c")->GetReference(), Strings{});
    EXPECT_EQ(compiler->FindNode("true")->GetContent(), "false");
    EXPECT_EQ(compiler->FindNode("e//")->GetReference(), (Strings{"\"/*", "*/"}));
    EXPECT_EQ(compiler->FindNode("d"), nullptr);
}

TEST(NodeFile, EndsCommentsAtAnyLineBreak)
{
    for (const char* text : {"[ // x\r{\"name\": \"a\"}]", "[ // x\r\n{\"name\": \"a\"}]",
                             "[{\"name\": \"a\"}] what follows is not looked at"}) {
        EXPECT_EQ(Load(text)->GetNodeNames(), Strings{"a"}) << text;
    }
}

TEST(NodeFile, LoadsNothingFromOtherDocuments)
{
    for (const char* text :
         {"[]", "[ // none\n]", "[/*", "", "{\"name\": \"a\"}", "null", "3", "[", "[,]", "{",
          "[{\"name\": \"a\"}, x]", "[{\"name\": \"a\"}", "\"", "/"}) {
        const LogCapture log;
        EXPECT_EQ(Load(text)->GetNodeNames(), Strings{}) << text;
        EXPECT_EQ(log.errors, Strings{}) << text;
    }
}

TEST(NodeFile, SkipsElementsThatAreNoObjects)
{
    const LogCapture log;
    const auto compiler = Load(R"([1, "x", [], {"name": "a"}])");
    EXPECT_EQ(compiler->GetNodeNames(), Strings{"a"});
    EXPECT_EQ(log.errors, Strings(3,
                                  "Morl Compiler: node definition is not an object: "
                                  "morl/vertex_shader.morl"));
}

TEST(NodeFile, RaisesForWrongTypes)
{
    for (const char* members :
         {R"("name": 3)", R"("name": [])", R"("name": {})", R"("content": 3.5)", R"("ref": [3])",
          R"("ref": [[]])", R"("x": "1")", R"("y": [])", R"("x": {})", R"("ref": {"a": "b"})"}) {
        EXPECT_THROW(Load("[{\"name\": \"kept\"}, {" + std::string(members) + "}]"),
                     Json::LogicError)
            << members;
    }
    try {
        Load(R"([{"name": 3}])");
    } catch (const Json::LogicError& error) {
        EXPECT_STREQ(error.what(), "Type is not convertible to string");
    }
}

TEST(NodeFile, KeepsTheLaterOfTwoDefinitions)
{
    const TemporaryDirectory directory;
    morl_test::WriteNodeFiles(directory.path,
                              R"([{"name": "a", "content": "1"}, {"name": "a", "content": "2"},
                            {"name": "b", "content": "3"}])");
    morl_test::WriteText(directory.path / "morl/special_output.morl",
                         R"([{"name": "b", "content": "4"}])");
    const InDirectory inDirectory(directory.path);
    const MorlCompiler compiler;
    EXPECT_EQ(compiler.FindNode("a")->GetContent(), "2");
    EXPECT_EQ(compiler.FindNode("b")->GetContent(), "4");
}

TEST(NodeFile, ReportsFilesThatCannotBeRead)
{
    const TemporaryDirectory directory;
    morl_test::WriteNodeFiles(directory.path, "[]");
    std::filesystem::remove(directory.path / "morl/vertex_shader.morl");
    std::filesystem::remove(directory.path / "morl/post_effect.morl");
    std::filesystem::create_directory(directory.path / "morl/post_effect.morl");
    const InDirectory inDirectory(directory.path);
    const LogCapture log;
    const MorlCompiler compiler;
    EXPECT_EQ(log.errors, (Strings{"Can't Find File: morl/vertex_shader.morl",
                                   "Can't Find File: morl/post_effect.morl"}));
}

TEST(Node, ParsesAgainForAnotherTargetOnly)
{
    MorlParser parser;
    MorlNode node;
    EXPECT_TRUE(node.NeedCompile(""));
    node.SetContent("in float a;");
    node.Compile(&parser, "glsl");
    EXPECT_FALSE(node.NeedCompile("glsl"));
    EXPECT_TRUE(node.NeedCompile("GLSL"));
    node.SetContent("in float b;");
    EXPECT_FALSE(node.NeedCompile("glsl"));
    EXPECT_EQ(node.GetProgram()->inputs[0]->name, "a");
}

}  // namespace
