// SPDX-License-Identifier: MIT
// What hosts of the C interface can do wrong, and how long what they get is valid.
#include <gtest/gtest.h>
#include <morl/c/morl.h>
#include <cstddef>
#include <cstring>
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
        morl_set_log([](void*, const morl_log_line*) {}, nullptr);
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
    const morl_text endless = {"x", static_cast<std::size_t>(-1)};
    const auto refuses = [&](morl_status status, const std::string& message) {
        EXPECT_EQ(status, MORL_INVALID_ARGUMENT) << message;
        EXPECT_EQ(Message(), message);
    };
    const auto refusesRequest = [&](const std::string& message) {
        result = reinterpret_cast<morl_result*>(this);
        refuses(morl_compile(compiler, &request, &result), message);
        EXPECT_EQ(result, nullptr);
    };
    refuses(morl_set_node(compiler, nullptr), "node is null");
    refuses(morl_load_nodes(compiler, name, broken), "text is null, but should have 3 bytes");
    refuses(morl_load_nodes(compiler, name, endless),
            "the size of text is 18446744073709551615: lists and texts need their own sizes, there "
            "is no end mark");
    refuses(morl_load_node_file(compiler, {"a\0b", 3}), "path has a NUL in it");
    refuses(morl_compile(compiler, &request, nullptr), "result is null");
    const std::string size = std::to_string(sizeof node);
    node.size = 8;
    refuses(morl_set_node(compiler, &node),
            "node.size is 8, and should be sizeof(morl_node): " + size);
    refuses(morl_get_node(compiler, name, &node),
            "node.size is 8, and should be sizeof(morl_node): " + size);
    const morl_text named[] = {name, broken};
    request.nodes = named;
    request.node_count = 2;
    refusesRequest("request.nodes[1] is null, but should have 3 bytes");
    request.node_count = 1;
    request.stage = 2;
    refusesRequest("request.stage is 2, and should be MORL_VERTEX or MORL_FRAGMENT");
    request.stage = MORL_VERTEX;
    request.macro_count = 2;
    refusesRequest("request.macros is null, but should have 2 elements");
    request.size = 0;
    refusesRequest("request.size is 0, and should be sizeof(morl_request): " +
                   std::to_string(sizeof request));
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
    EXPECT_EQ(Message(), "cannot read /no/file: No such file or directory");
    EXPECT_EQ(Faults(), "");
    for (const std::int32_t wantsReport : {0, 1}) {
        request.wants_report = wantsReport;
        request.target = Text("metal");
        result = reinterpret_cast<morl_result*>(this);
        EXPECT_EQ(morl_compile(compiler, &request, &result), MORL_REFUSED);
        EXPECT_EQ(result, nullptr);
        const std::string start =
            "Morl Compiler: unknown target: metal (the targets are hlsl, hlsl10, glsl, glsles";
        EXPECT_EQ(Message().substr(0, start.size()), start);
        EXPECT_EQ(
            Faults(),
            ":0:0 Morl Compiler: unknown target: metal\n:0:0 Morl Compiler: unknown node: n\n");
    }
    EXPECT_EQ(morl_remove_node(compiler, name), MORL_NOT_FOUND);
    EXPECT_EQ(Message(), "Morl Compiler: unknown node: n");
    EXPECT_EQ(morl_set_node(compiler, &node), MORL_OK);
    EXPECT_EQ(Faults(), "");
}

TEST_F(CInterface, TakesNoCallFromItsOwnLog)
{
    ASSERT_EQ(morl_set_node(compiler, &node), MORL_OK);
    struct Host {
        morl_compiler* compiler;
        int refused = 0;
    } host = {compiler};
    morl_set_log(
        [](void* passed, const morl_log_line* line) {
            Host& caller = *static_cast<Host*>(passed);
            EXPECT_EQ(morl_remove_node(caller.compiler, line->node), MORL_INVALID_ARGUMENT);
            morl_compiler_destroy(caller.compiler);
            EXPECT_EQ(Shown(morl_message(caller.compiler)),
                      "the compiler is in use: its log must not call it");
            caller.refused += line->line == 2 && Shown(line->node) == "n" ? 1 : 0;
        },
        &host);
    EXPECT_EQ(morl_compile(compiler, &request, &result), MORL_OK);
    EXPECT_GT(host.refused, 0);
    morl_result_destroy(result);
}

// Hosts of all versions have been compiled with these layouts.
static_assert(sizeof(void*) != 8 ||
              (sizeof(morl_text) == 16 && sizeof(morl_value) == 24 && sizeof(morl_semantic) == 32 &&
               sizeof(morl_fault) == 64 && sizeof(morl_line) == 8 && sizeof(morl_declare) == 96 &&
               sizeof(morl_macro) == 24 && sizeof(morl_warning) == 56 &&
               offsetof(morl_node, y) == 60 && offsetof(morl_request, wants_warnings) == 96 &&
               offsetof(morl_output, warning_count) == 192 && offsetof(morl_log_line, text) == 72));
static_assert(MORL_INVALID_ARGUMENT == 1 && MORL_OUT_OF_MEMORY == 2 && MORL_FILE_NOT_READ == 3 &&
              MORL_NODES_REFUSED == 4 && MORL_REFUSED == 5 && MORL_NOT_FOUND == 6 &&
              MORL_FAILED == 7 && MORL_ERROR == 1 && MORL_FRAGMENT == 1);

// A host of another version passes a structure of another size; no byte after it is touched.
TEST_F(CInterface, WorksWithHostsOfOtherVersions)
{
    ASSERT_EQ(morl_set_node(compiler, &node), MORL_OK);
    struct {
        morl_output output;
        char later[16];
        char behind[16];
    } larger = {};
    std::memset(larger.later, 7, sizeof larger.later);
    std::memset(larger.behind, 7, sizeof larger.behind);
    larger.output.size = offsetof(decltype(larger), behind);
    request.wants_report = 1;
    ASSERT_EQ(morl_compile(compiler, &request, &result), MORL_OK);
    // A result outlives its compiler.
    morl_compiler_destroy(compiler);
    compiler = nullptr;
    EXPECT_EQ(morl_get_output(result, &larger.output), MORL_OK);
    EXPECT_EQ(larger.output.size, offsetof(decltype(larger), behind));
    EXPECT_EQ(larger.later[15], 0);  // what this library does not know is empty
    EXPECT_EQ(larger.behind[0], 7);
    EXPECT_EQ(Shown(larger.output.uniforms[0]), "u");
    ASSERT_EQ(larger.output.fault_count, 2U);
    EXPECT_EQ(Shown(larger.output.faults[0].text), "miss ';':");
    larger.output.size = sizeof(morl_output) - 1;
    EXPECT_EQ(morl_get_output(result, &larger.output), MORL_INVALID_ARGUMENT);
    morl_result_destroy(result);
}

}  // namespace
