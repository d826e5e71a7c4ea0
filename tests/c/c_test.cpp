// SPDX-License-Identifier: MIT
// What hosts of the C interface can do wrong, and how long what they get is valid.
#include <gtest/gtest.h>
#include <morl/c/morl.h>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

namespace {

morl_text Text(std::string_view text)
{
    return {text.data(), text.size()};
}

std::string Shown(const morl_text& text)
{
    return {text.data, text.size};
}

class CInterface : public testing::Test {
protected:
    CInterface()
    {
        morl_set_log([](void*, std::int32_t, morl_text, morl_text) {}, nullptr);
        request.size = sizeof request;
        request.nodes = &name;
        request.node_count = 1;
        request.target = Text("glsl");
        node.size = sizeof node;
        node.name = name;
        node.content = Text("uniform float4 u;\nvoid main() { x = u }");
    }
    ~CInterface() override
    {
        morl_compiler_destroy(compiler);
        morl_set_log(nullptr, nullptr);
    }

    std::string Message() const { return Shown(morl_message(compiler)); }

    std::string Faults() const
    {
        std::size_t count = 0;
        const morl_fault* const faults = morl_faults(compiler, &count);
        std::string text;
        for (const morl_fault* f = faults; f != faults + count; ++f) {
            text += Shown(f->file) + ":" + std::to_string(f->line) + ":" +
                    std::to_string(f->column) + " " + Shown(f->text) + "\n";
        }
        return text;
    }

    morl_compiler* compiler = morl_compiler_create();
    morl_text name = Text("n");
    morl_node node = {};
    morl_request request = {};
    morl_result* result = nullptr;
};

TEST_F(CInterface, RefusesWhatHostsDoWrong)
{
    const morl_text broken = {nullptr, 3};
    const auto refuses = [&](morl_status status, const std::string& message) {
        EXPECT_EQ(status, MORL_INVALID_ARGUMENT) << message;
        EXPECT_EQ(Message(), message);
        EXPECT_EQ(result, nullptr);
    };
    refuses(morl_set_node(compiler, nullptr), "node is null");
    refuses(morl_load_nodes(compiler, name, broken), "text is null, but there should be 3");
    refuses(morl_compile(compiler, &request, nullptr), "result is null");
    node.content = broken;
    refuses(morl_set_node(compiler, &node), "node.content is null, but there should be 3");
    node.size = 8;
    refuses(morl_set_node(compiler, &node),
            "node.size is 8, and should be sizeof(morl_node): " + std::to_string(sizeof node));
    refuses(morl_get_node(compiler, name, &node),
            "node.size is 8, and should be sizeof(morl_node): " + std::to_string(sizeof node));
    request.stage = 2;
    refuses(morl_compile(compiler, &request, &result),
            "request.stage is 2, and should be MORL_VERTEX or MORL_FRAGMENT");
    request.stage = MORL_VERTEX;
    request.macro_count = 2;
    refuses(morl_compile(compiler, &request, &result),
            "request.macros is null, but there should be 2");
    request.size = 0;
    refuses(
        morl_compile(compiler, &request, &result),
        "request.size is 0, and should be sizeof(morl_request): " + std::to_string(sizeof request));
    EXPECT_EQ(morl_set_node(nullptr, &node), MORL_INVALID_ARGUMENT);
    EXPECT_EQ(Shown(morl_message(nullptr)), "the compiler is null");
    EXPECT_EQ(morl_faults(nullptr, nullptr), nullptr);
    EXPECT_EQ(morl_get_output(nullptr, nullptr), MORL_INVALID_ARGUMENT);
    morl_compiler_destroy(nullptr);
    morl_result_destroy(nullptr);
}

TEST_F(CInterface, SaysWhyTextsFilesAndRequestsAreRefused)
{
    EXPECT_EQ(morl_load_nodes(compiler, Text("pack"), Text("[{},\n 3, 4]")), MORL_NODES_REFUSED);
    EXPECT_EQ(Message(), "pack:2:2: not a node (a JSON object)");
    EXPECT_EQ(Faults(),
              "pack:2:2 not a node (a JSON object)\npack:2:5 not a node (a JSON object)\n");
    EXPECT_EQ(morl_load_node_file(compiler, Text("/no/file")), MORL_FILE_NOT_READ);
    EXPECT_EQ(Message(), "Can't Find File: /no/file");
    EXPECT_EQ(Faults(), "");
    for (const std::int32_t wantsReport : {0, 1}) {
        request.wants_report = wantsReport;
        request.target = Text("metal");
        EXPECT_EQ(morl_compile(compiler, &request, &result), MORL_REFUSED);
        EXPECT_EQ(result, nullptr);
        EXPECT_EQ(Message(), "Morl Compiler: unknown target: metal");
        EXPECT_EQ(
            Faults(),
            ":0:0 Morl Compiler: unknown target: metal\n:0:0 Morl Compiler: unknown node: n\n");
    }
    EXPECT_EQ(morl_remove_node(compiler, name), MORL_NOT_FOUND);
    EXPECT_EQ(Message(), "Morl Compiler: unknown node: n");
    EXPECT_EQ(morl_set_node(compiler, &node), MORL_OK);
    EXPECT_EQ(Faults(), "");
}

TEST_F(CInterface, GivesBackTheNodes)
{
    const morl_text references[] = {Text("n"), Text("m")};
    node.references = references;
    node.reference_count = 2;
    node.x = 1.5F;
    ASSERT_EQ(morl_set_node(compiler, &node), MORL_OK);
    morl_node got = {};
    got.size = sizeof got;
    ASSERT_EQ(morl_get_node(compiler, name, &got), MORL_OK);
    EXPECT_EQ(Shown(got.content), Shown(node.content));
    ASSERT_EQ(got.reference_count, 2U);
    EXPECT_EQ(Shown(got.references[1]), "m");
    EXPECT_EQ(got.x, 1.5F);
    const morl_text* names = nullptr;
    std::size_t count = 0;
    ASSERT_EQ(morl_get_node_names(compiler, &names, &count), MORL_OK);
    ASSERT_EQ(count, 1U);
    EXPECT_EQ(Shown(names[0]), "n");
}

// A host of another version passes a structure of another size; no byte behind it is touched.
TEST_F(CInterface, WorksWithHostsOfOtherVersions)
{
    ASSERT_EQ(morl_set_node(compiler, &node), MORL_OK);
    struct {
        morl_output output;
        char later[16];
    } larger = {};
    std::memset(larger.later, 7, sizeof larger.later);
    larger.output.size = sizeof larger;
    request.wants_report = 1;
    ASSERT_EQ(morl_compile(compiler, &request, &result), MORL_OK);
    // A result outlives its compiler.
    morl_compiler_destroy(compiler);
    compiler = nullptr;
    EXPECT_EQ(morl_get_output(result, &larger.output), MORL_OK);
    EXPECT_EQ(larger.output.size, sizeof larger);
    EXPECT_EQ(larger.later[0], 7);
    EXPECT_EQ(Shown(larger.output.uniforms[0]), "u");
    ASSERT_EQ(larger.output.fault_count, 2U);
    EXPECT_EQ(Shown(larger.output.faults[0].text), "miss ';':");
    larger.output.size = sizeof(morl_output) - 1;
    EXPECT_EQ(morl_get_output(result, &larger.output), MORL_INVALID_ARGUMENT);
    morl_result_destroy(result);
}

}  // namespace
