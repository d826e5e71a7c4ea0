// SPDX-License-Identifier: MIT
// What hosts of the C interface can do wrong, and how long what they get is valid.
#include <gtest/gtest.h>
#include <atomic>
#include <cstddef>
#include <cstring>
#include <functional>
#include <morl/c/morl.hpp>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace {

using morl::Sized;

morl_text Text(std::string_view text)
{
    return morl::ToText(text);
}

std::string Shown(const morl_text& text)
{
    return std::string(morl::ToView(text));
}

constexpr morl_text kBroken = {nullptr, 3};
constexpr morl_text kEndless = {"x", static_cast<std::size_t>(-1)};

class CInterface : public testing::Test {
protected:
    CInterface()
    {
        morl_set_log([](void*, const morl_log_line*) {}, nullptr, nullptr, nullptr);
        request.nodes = &name;
        request.node_count = 1;
        request.target = Text("glsl");
        request.wants_report = 1;
        node.name = name;
        node.content = Text("uniform float4 u;\nvoid main() { x = u }");
    }
    ~CInterface() override
    {
        morl_compiler_destroy(compiler);
        morl_set_log(nullptr, nullptr, nullptr, nullptr);
    }

    std::string Message() const { return Shown(morl_message(compiler)); }

    std::string Faults() const
    {
        std::string text;
        auto f = Sized<morl_fault>();
        for (std::size_t i = 0; morl_get_call_fault(compiler, i, &f) == MORL_OK; ++i) {
            text += Shown(f.file) + ":" + std::to_string(f.line) + ":" + std::to_string(f.column) +
                    " " + Shown(f.text) + "\n";
        }
        return text;
    }

    morl_result* Compile()
    {
        morl_result* made = nullptr;
        EXPECT_EQ(morl_compile(compiler, &request, &made), MORL_OK) << Message();
        return made;
    }

    morl_compiler* compiler = morl_compiler_create();
    morl_text name = Text("n");
    morl_node node = Sized<morl_node>();
    morl_request request = Sized<morl_request>();
};

/// One mistake of a host, and what it is told.
struct Misuse {
    std::function<morl_status()> call;
    morl_status status;
    std::string message{};  ///< of the compiler; empty: the call has none
};

// None of these does any harm; the next call works as if they had not been made.
TEST_F(CInterface, RefusesWhatHostsDoWrong)
{
    ASSERT_EQ(morl_set_node(compiler, &node), MORL_OK);
    morl_result* const good = Compile();
    request.target = Text("hlsl");
    morl_result* const other = Compile();
    request.target = Text("glsl");
    request.wants_report = 0;
    morl_result* const plain = Compile();
    request.wants_report = 1;
    morl_program* program = nullptr;
    ASSERT_EQ(morl_link(good, good, &program), MORL_OK);

    // Handles of another kind.
    auto* const resultAsCompiler = reinterpret_cast<morl_compiler*>(good);
    auto* const programAsCompiler = reinterpret_cast<morl_compiler*>(program);
    auto* const compilerAsResult = reinterpret_cast<morl_result*>(compiler);
    auto* const resultAsProgram = reinterpret_cast<morl_program*>(good);

    const auto set = [this](const std::function<void(morl_node&)>& change) {
        return [this, change] {
            morl_node changed = node;
            change(changed);
            return morl_set_node(compiler, &changed);
        };
    };
    const auto ask = [this](const std::function<void(morl_request&)>& change) {
        return [this, change] {
            morl_request changed = request;
            change(changed);
            auto* result = reinterpret_cast<morl_result*>(this);
            const morl_status status = morl_compile(compiler, &changed, &result);
            EXPECT_EQ(result, nullptr);
            return status;
        };
    };
    const morl_text named[] = {name, kBroken};
    const morl_text unknown[] = {name, Text("nowhere")};
    const morl_value values[] = {{kBroken, 1, 0}};
    const morl_semantic semantics[] = {{name, kBroken}};
    const morl_text* names = nullptr;
    std::size_t count = 0;
    auto output = Sized<morl_output>();
    auto fault = Sized<morl_fault>();
    auto declare = Sized<morl_declare>();
    auto macro = Sized<morl_macro>();
    auto warning = Sized<morl_warning>();
    auto place = Sized<morl_place>();
    auto info = Sized<morl_program_info>();
    auto uniform = Sized<morl_program_uniform>();
    auto varying = Sized<morl_varying>();
    auto got = Sized<morl_node>();
    morl_output smaller = {};
    smaller.size = sizeof smaller - 1;
    morl_output endless = {};
    endless.size = static_cast<std::size_t>(-1);
    morl_program* linked = nullptr;
    const std::string nodeSize = " and should be sizeof(morl_node): " + std::to_string(sizeof node);
    const std::string requestSize =
        " and should be sizeof(morl_request): " + std::to_string(sizeof request);
    const std::string tooLong =
        " is 18446744073709551615: lists and texts need their own sizes, at most 2147483647";
    const std::string targets = " (the targets are hlsl, hlsl10, glsl, glsles)";
    const std::string stages = ", and should be MORL_VERTEX or MORL_FRAGMENT";
    constexpr morl_status kBad = MORL_INVALID_ARGUMENT;

    morl_text shown = {};

    const Misuse rows[] = {
        // Nodes.
        {[&] { return morl_set_node(nullptr, &node); }, kBad},
        {[&] { return morl_set_node(resultAsCompiler, &node); }, kBad},
        {[&] { return morl_set_node(programAsCompiler, &node); }, kBad},
        {[&] { return morl_set_node(compiler, nullptr); }, kBad, "node is null"},
        {set([](morl_node& n) { n.size = 0; }), kBad, "node.size is 0," + nodeSize},
        {set([](morl_node& n) { n.size = 8; }), kBad, "node.size is 8," + nodeSize},
        {set([](morl_node& n) { n.size = kEndless.size; }), kBad,
         "node.size is 18446744073709551615," + nodeSize},
        {set([](morl_node& n) { n.name = kBroken; }), kBad,
         "node.name is null, but should have 3 bytes"},
        {set([](morl_node& n) { n.name = kEndless; }), kBad, "the size of node.name" + tooLong},
        {set([](morl_node& n) { n.content = kBroken; }), kBad,
         "node.content is null, but should have 3 bytes"},
        {set([](morl_node& n) { n.content = kEndless; }), kBad,
         "the size of node.content" + tooLong},
        {set([](morl_node& n) { n.reference_count = 2; }), kBad,
         "node.references is null, but should have 2 elements"},
        {set([](morl_node& n) { n.reference_count = kEndless.size; }), kBad,
         "the size of node.references" + tooLong},
        {set([&](morl_node& n) {
             n.references = named;
             n.reference_count = 2;
         }),
         kBad, "node.references[1] is null, but should have 3 bytes"},
        {[&] { return morl_load_nodes(nullptr, name, name); }, kBad},
        {[&] { return morl_load_nodes(compiler, kBroken, name); }, kBad,
         "name is null, but should have 3 bytes"},
        {[&] { return morl_load_nodes(compiler, name, kBroken); }, kBad,
         "text is null, but should have 3 bytes"},
        {[&] { return morl_load_nodes(compiler, name, kEndless); }, kBad,
         "the size of text" + tooLong},
        {[&] { return morl_load_nodes(compiler, Text("t"), Text("{}")); }, MORL_NODES_REFUSED,
         "t:1:1: not a list of nodes (a JSON array)"},
        {[&] { return morl_load_nodes(compiler, Text("t"), Text("[{\"x\": \"1\"}]")); },
         MORL_NODES_REFUSED, "t:1:8: a node's \"x\" must be a number"},
        {[&] { return morl_load_source(nullptr, name, name, name); }, kBad},
        {[&] { return morl_load_source(compiler, name, kBroken, name); }, kBad,
         "name is null, but should have 3 bytes"},
        {[&] {
             return morl_load_source(compiler, Text("f"), Text("b"), Text("\n//! x\n//! at: 1"));
         },
         MORL_OK},
        {[&] {
             return morl_load_source(compiler, Text("f"), Text("b"), Text("//! at: 1\n//! a: b"));
         },
         MORL_NODES_REFUSED, "f:1:9: expected two numbers, as in '//! at: 320 40'"},
        {[&] { return morl_get_source(compiler, Text("nowhere"), 0, &shown); }, MORL_NOT_FOUND,
         "Morl Compiler: unknown node: nowhere"},
        {[&] { return morl_get_source(compiler, name, 0, nullptr); }, kBad, "source is null"},
        {[&] { return morl_source_to_nodes(compiler, Text("f"), name, Text("//! at: 1"), &shown); },
         MORL_NODES_REFUSED, "f:1:9: expected two numbers, as in '//! at: 320 40'"},
        {[&] { return morl_source_to_nodes(compiler, name, name, name, nullptr); }, kBad,
         "nodes is null"},
        {[&] { return morl_nodes_to_source(compiler, Text("f"), Text("[]"), 0, &shown); },
         MORL_NODES_REFUSED, "f:1:1: not a list of one node"},
        {[&] {
             return morl_nodes_to_source(compiler, Text("f"), Text("[{\"x\": []}]"), 0, &shown);
         },
         MORL_NODES_REFUSED, "f:1:8: a node's \"x\" must be a number"},
        {[&] { return morl_nodes_to_source(compiler, name, name, 0, nullptr); }, kBad,
         "source is null"},
        {[&] { return morl_load_node_file(nullptr, name); }, kBad},
        {[&] {
             return morl_load_node_file(compiler, {"a\0b", 3});
         },
         kBad, "path has a NUL in it"},
        {[&] { return morl_load_node_file(compiler, kBroken); }, kBad,
         "path is null, but should have 3 bytes"},
        {[&] { return morl_load_node_file(compiler, Text("/no/file")); }, MORL_FILE_NOT_READ,
         "cannot read /no/file: No such file or directory"},
        {[&] { return morl_load_node_file(compiler, Text("")); }, MORL_FILE_NOT_READ,
         "cannot read : No such file or directory"},
        {[&] { return morl_remove_node(compiler, Text("nowhere")); }, MORL_NOT_FOUND,
         "Morl Compiler: unknown node: nowhere"},
        {[&] { return morl_remove_node(compiler, kBroken); }, kBad,
         "name is null, but should have 3 bytes"},
        {[&] { return morl_get_node(compiler, Text("N"), &got); }, MORL_NOT_FOUND,
         "Morl Compiler: unknown node: N"},
        {[&] { return morl_get_node(compiler, name, nullptr); }, kBad, "node is null"},
        {[&] { return morl_get_node_names(compiler, nullptr, &count); }, kBad, "names is null"},
        {[&] { return morl_get_node_names(compiler, &names, nullptr); }, kBad, "count is null"},
        {[&] { return morl_get_loaded_nodes(compiler, nullptr, nullptr); }, kBad, "names is null"},
        // Requests.
        {[&] { return morl_compile(compiler, &request, nullptr); }, kBad, "result is null"},
        {[&] { return morl_compile(compiler, nullptr, reinterpret_cast<morl_result**>(&linked)); },
         kBad, "request is null"},
        {ask([](morl_request& r) { r.size = 0; }), kBad, "request.size is 0," + requestSize},
        {ask([](morl_request& r) { r.nodes = nullptr; }), kBad,
         "request.nodes is null, but should have 1 elements"},
        {ask([](morl_request& r) { r.node_count = kEndless.size; }), kBad,
         "the size of request.nodes" + tooLong},
        {ask([&](morl_request& r) {
             r.nodes = named;
             r.node_count = 2;
         }),
         kBad, "request.nodes[1] is null, but should have 3 bytes"},
        {ask([](morl_request& r) { r.macro_count = 2; }), kBad,
         "request.macros is null, but should have 2 elements"},
        {ask([&](morl_request& r) {
             r.macros = values;
             r.macro_count = 1;
         }),
         kBad, "request.macros[0] is null, but should have 3 bytes"},
        {ask([](morl_request& r) { r.sampler_count = 1; }), kBad,
         "request.samplers is null, but should have 1 elements"},
        {ask([](morl_request& r) { r.semantic_count = 1; }), kBad,
         "request.semantics is null, but should have 1 elements"},
        {ask([&](morl_request& r) {
             r.semantics = semantics;
             r.semantic_count = 1;
         }),
         kBad, "request.semantics[0] is null, but should have 3 bytes"},
        {ask([](morl_request& r) { r.stage = 2; }), kBad, "request.stage is 2" + stages},
        {ask([](morl_request& r) { r.stage = -1; }), kBad, "request.stage is -1" + stages},
        {ask([](morl_request& r) { r.reserved = 1; }), kBad,
         "request.reserved is not 0: set all that you do not use to 0"},
        {ask([](morl_request& r) { r.target = kBroken; }), kBad,
         "request.target is null, but should have 3 bytes"},
        {ask([](morl_request& r) { r.target = Text("GLSL"); }), MORL_REFUSED,
         "Morl Compiler: unknown target: GLSL" + targets},
        {ask([](morl_request& r) { r.target = {}; }), MORL_REFUSED,
         "Morl Compiler: unknown target: " + targets},
        {ask([&](morl_request& r) {
             r.nodes = unknown;
             r.node_count = 2;
         }),
         MORL_REFUSED, "Morl Compiler: unknown node: nowhere"},
        // Results and programs.
        {[&] { return morl_get_output(nullptr, &output); }, kBad},
        {[&] { return morl_get_output(compilerAsResult, &output); }, kBad},
        {[&] { return morl_get_output(good, nullptr); }, kBad},
        {[&] { return morl_get_output(good, &smaller); }, kBad},
        {[&] { return morl_get_output(good, &endless); }, kBad},
        {[&] { return morl_get_fault(compilerAsResult, 0, &fault); }, kBad},
        {[&] { return morl_get_fault(good, 7, &fault); }, MORL_NOT_FOUND},
        {[&] { return morl_get_fault(plain, 0, &fault); }, MORL_NOT_FOUND},
        {[&] { return morl_get_call_fault(compiler, kEndless.size, &fault); }, MORL_NOT_FOUND},
        {[&] { return morl_get_call_fault(resultAsCompiler, 0, &fault); }, kBad},
        {[&] { return morl_get_declare(good, 3, 0, &declare); }, kBad},
        {[&] { return morl_get_declare(good, MORL_UNIFORMS, 1, &declare); }, MORL_NOT_FOUND},
        {[&] { return morl_get_declare(good, MORL_INPUTS, 0, nullptr); }, kBad},
        {[&] { return morl_get_macro(good, 0, &macro); }, MORL_NOT_FOUND},
        {[&] { return morl_get_warning(good, 0, &warning); }, MORL_NOT_FOUND},
        {[&] { return morl_get_place(good, 0, &place); }, MORL_NOT_FOUND},
        {[&] { return morl_get_place(good, 1, &place); }, MORL_NOT_FOUND},
        {[&] { return morl_get_place(good, kEndless.size, &place); }, MORL_NOT_FOUND},
        {[&] { return morl_get_place(good, 2, nullptr); }, kBad},
        {[&] { return morl_link(good, nullptr, &linked); }, kBad},
        {[&] { return morl_link(good, compilerAsResult, &linked); }, kBad},
        {[&] { return morl_link(good, plain, &linked); }, kBad},
        {[&] { return morl_link(good, other, &linked); }, kBad},
        {[&] { return morl_link(good, good, nullptr); }, kBad},
        {[&] { return morl_get_program_info(resultAsProgram, &info); }, kBad},
        {[&] { return morl_get_program_uniform(program, 1, &uniform); }, MORL_NOT_FOUND},
        {[&] { return morl_get_varying(program, 0, &varying); }, MORL_NOT_FOUND},
        {[&] { return morl_get_program_warning(nullptr, 0, &warning); }, kBad},
        {[&] { return morl_compiler_destroy(resultAsCompiler); }, kBad},
        {[&] {
             morl_result_destroy(compilerAsResult);
             morl_result_destroy(nullptr);
             morl_program_destroy(resultAsProgram);
             morl_program_destroy(nullptr);
             return morl_compiler_destroy(nullptr);
         },
         MORL_OK},
    };
    std::size_t row = 0;
    for (const Misuse& misuse : rows) {
        EXPECT_EQ(misuse.call(), misuse.status) << "row " << row;
        if (!misuse.message.empty()) {
            EXPECT_EQ(Message(), misuse.message) << "row " << row;
        }
        EXPECT_EQ(linked, nullptr) << "row " << row;
        ++row;
    }
    EXPECT_EQ(Shown(morl_message(nullptr)), "this is no compiler");
    EXPECT_EQ(Shown(morl_message(resultAsCompiler)), "this is no compiler");
    EXPECT_EQ(Shown(morl_get_json(plain)), "");
    EXPECT_EQ(Shown(morl_get_json(compilerAsResult)), "");
    EXPECT_NE(morl_targets(nullptr), nullptr);
    EXPECT_EQ(Shown(Text(morl_status_text(-5))), "internal error");
    morl_program_destroy(program);
    morl_result* const again = Compile();
    ASSERT_EQ(morl_get_output(again, &output), MORL_OK);
    const std::string code = Shown(output.code);
    ASSERT_EQ(morl_get_output(good, &output), MORL_OK);
    EXPECT_EQ(Shown(output.code), code);
    for (morl_result* result : {good, other, plain, again}) {
        morl_result_destroy(result);
    }
}

#ifndef MORL_SANITIZED
// Reading freed memory is what hosts do; it must not look like a compiler. Sanitizers stop it.
TEST_F(CInterface, RecognisesHandlesThatAreDestroyed)
{
    morl_compiler* const destroyed = morl_compiler_create();
    morl_compiler_destroy(destroyed);
    EXPECT_EQ(morl_set_node(destroyed, &node), MORL_INVALID_ARGUMENT);
    EXPECT_EQ(morl_compiler_destroy(destroyed), MORL_INVALID_ARGUMENT);
}
#endif

TEST_F(CInterface, SaysWhyTextsFilesAndRequestsAreRefused)
{
    EXPECT_EQ(morl_load_nodes(compiler, Text("pack"), Text("[{},\n 3, 4]")), MORL_NODES_REFUSED);
    EXPECT_EQ(Message(), "pack:2:2: not a node (a JSON object)");
    EXPECT_EQ(Faults(),
              "pack:2:2 not a node (a JSON object)\npack:2:5 not a node (a JSON object)\n");
    EXPECT_EQ(morl_load_node_file(compiler, Text("/no/file")), MORL_FILE_NOT_READ);
    EXPECT_EQ(Faults(), "");
    for (const std::int32_t wantsReport : {0, 1}) {
        request.wants_report = wantsReport;
        request.target = Text("metal");
        auto* result = reinterpret_cast<morl_result*>(this);
        EXPECT_EQ(morl_compile(compiler, &request, &result), MORL_REFUSED);
        EXPECT_EQ(result, nullptr);
        const std::string start =
            "Morl Compiler: unknown target: metal (the targets are hlsl, hlsl10, glsl, glsles";
        EXPECT_EQ(Message().substr(0, start.size()), start);
        EXPECT_EQ(
            Faults(),
            ":0:0 Morl Compiler: unknown target: metal\n:0:0 Morl Compiler: unknown node: n\n");
    }
    EXPECT_EQ(morl_set_node(compiler, &node), MORL_OK);
    EXPECT_EQ(Faults(), "");
}

TEST_F(CInterface, EndsRequestsAtTheirLimits)
{
    node.content = Text("void main() { #for N : 0 x_N = 1; #endfor }");
    ASSERT_EQ(morl_set_node(compiler, &node), MORL_OK);
    const morl_value macros[] = {{Text("N"), 100, 0}};
    request.macros = macros;
    request.macro_count = 1;
    const std::int32_t cancel = 1;
    const struct {
        std::size_t work;
        std::size_t bytes;
        const std::int32_t* cancel;
        morl_status status;
        const char* message;
        const char* faults;
    } rows[] = {
        {50, 0, nullptr, MORL_LIMIT_REACHED, "MorlLinker: the host's limit of work is reached: N",
         ":0:0 MorlLinker: the host's limit of work is reached: N\n"},
        {0, 50, nullptr, MORL_LIMIT_REACHED,
         "Morl Compiler: the host's limit of text is reached: 50",
         ":0:0 Morl Compiler: the host's limit of text is reached: 50\n"},
        {0, 0, &cancel, MORL_CANCELLED, "cancelled", ""},
    };
    for (const auto& row : rows) {
        request.most_loop_work = row.work;
        request.most_text_bytes = row.bytes;
        request.cancel = row.cancel;
        morl_result* result = nullptr;
        EXPECT_EQ(morl_compile(compiler, &request, &result), row.status);
        EXPECT_EQ(result, nullptr);
        EXPECT_EQ(Message(), row.message);
        EXPECT_EQ(Faults(), row.faults);
    }
}

TEST_F(CInterface, GivesBackTheLogInForce)
{
    int host = 0;
    const auto second = [](void*, const morl_log_line*) {};
    morl_log previous = nullptr;
    void* previousHost = nullptr;
    ASSERT_EQ(morl_set_log(second, &host, &previous, &previousHost), MORL_OK);
    EXPECT_NE(previous, nullptr);
    ASSERT_EQ(morl_set_log(nullptr, nullptr, &previous, &previousHost), MORL_OK);
    EXPECT_EQ(previous, static_cast<morl_log>(second));
    EXPECT_EQ(previousHost, &host);
    ASSERT_EQ(morl_set_log(nullptr, nullptr, &previous, &previousHost), MORL_OK);
    EXPECT_EQ(previous, nullptr);
}

TEST_F(CInterface, DescribesBothPassesAsOneProgram)
{
    node.content = Text(
        "uniform float4 tint; in float3 p : POSITION; out float4 o : SV_Position;\n"
        "out float2 uv : TEXAUTO; out float2 rest : TEXAUTO;\nvoid main() { o = tint; uv = p.xy; "
        "}");
    ASSERT_EQ(morl_set_node(compiler, &node), MORL_OK);
    request.target = Text("hlsl10");
    morl_result* const vertex = Compile();
    node.content = Text(
        "uniform float k; uniform float4 tint; in float2 uv : TEXAUTO; in float2 lost : TEXAUTO;\n"
        "out float4 c : COLOR1; void main() { c = tint * k; }");
    ASSERT_EQ(morl_set_node(compiler, &node), MORL_OK);
    request.stage = MORL_FRAGMENT;
    morl_result* const fragment = Compile();
    morl_program* program = nullptr;
    ASSERT_EQ(morl_link(vertex, fragment, &program), MORL_OK);
    std::string shown;
    auto uniform = Sized<morl_program_uniform>();
    for (std::size_t i = 0; morl_get_program_uniform(program, i, &uniform) == MORL_OK; ++i) {
        shown += Shown(uniform.name) + " " + std::to_string(uniform.vertex) + " " +
                 std::to_string(uniform.fragment) + "\n";
    }
    auto varying = Sized<morl_varying>();
    for (std::size_t i = 0; morl_get_varying(program, i, &varying) == MORL_OK; ++i) {
        shown += Shown(varying.name) + " " + std::to_string(varying.output) + " " +
                 std::to_string(varying.input) + "\n";
    }
    auto warning = Sized<morl_warning>();
    for (std::size_t i = 0; morl_get_program_warning(program, i, &warning) == MORL_OK; ++i) {
        shown += Shown(warning.check) + " " + Shown(warning.node) + ":" +
                 std::to_string(warning.line) + (warning.is_refused != 0 ? " refused" : "") + "\n";
    }
    EXPECT_EQ(shown,
              "tint 0 1\nk -1 0\nuv 1 0\nrest 2 -1\nlost -1 1\nunmatched-input n:1 refused\n");
    auto place = Sized<morl_place>();
    auto output = Sized<morl_output>();
    ASSERT_EQ(morl_get_output(fragment, &output), MORL_OK);
    EXPECT_EQ(output.constant_bytes, 32U);
    std::size_t line = 1;
    while (morl_get_place(fragment, line, &place) == MORL_NOT_FOUND) {
        ++line;
    }
    EXPECT_EQ(Shown(place.node) + std::to_string(place.line), "n1");
    // The text outlives nothing but its result, and is made once.
    const morl_text json = morl_get_json(fragment);
    EXPECT_EQ(json.data, morl_get_json(fragment).data);
    EXPECT_NE(Shown(json).find("\"offset\":16"), std::string::npos) << Shown(json);
    morl_program_destroy(program);
    morl_result_destroy(vertex);
    morl_result_destroy(fragment);
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
            EXPECT_EQ(line->compiler, caller.compiler);
            EXPECT_EQ(morl_remove_node(caller.compiler, line->node), MORL_BUSY);
            EXPECT_EQ(morl_compiler_destroy(caller.compiler), MORL_BUSY);
            auto fault = Sized<morl_fault>();
            EXPECT_EQ(morl_get_call_fault(caller.compiler, 0, &fault), MORL_BUSY);
            EXPECT_EQ(Shown(morl_message(caller.compiler)),
                      "another call for this compiler is under way");
            caller.refused += line->line == 2 && Shown(line->node) == "n" ? 1 : 0;
        },
        &host, nullptr, nullptr);
    morl_result_destroy(Compile());
    EXPECT_GT(host.refused, 0);
}

// Other threads are refused as well, as long as a call is under way.
TEST_F(CInterface, TakesOneCallAtATime)
{
    ASSERT_EQ(morl_set_node(compiler, &node), MORL_OK);
    struct Host {
        std::atomic<bool> isInside{false};
        std::atomic<bool> ends{false};
    } host;
    morl_set_log(
        [](void* passed, const morl_log_line* /*line*/) {
            Host& waiting = *static_cast<Host*>(passed);
            waiting.isInside = true;
            while (!waiting.ends) {
                std::this_thread::yield();
            }
        },
        &host, nullptr, nullptr);
    std::thread thread([this] { morl_result_destroy(Compile()); });
    while (!host.isInside) {
        std::this_thread::yield();
    }
    EXPECT_EQ(morl_remove_node(compiler, name), MORL_BUSY);
    EXPECT_EQ(morl_compiler_destroy(compiler), MORL_BUSY);
    host.ends = true;
    thread.join();
    EXPECT_EQ(morl_remove_node(compiler, name), MORL_OK);
}

// Hosts of all 2.x versions are compiled with these layouts. Structures that begin with their size
// may grow; then this is where they have ended in 2.0.
static_assert(
    sizeof(void*) != 8 ||
    (sizeof(morl_text) == 16 && sizeof(morl_value) == 24 && sizeof(morl_semantic) == 32 &&
     sizeof(morl_line) == 8 && offsetof(morl_fault, hint) == 72 && offsetof(morl_node, y) == 60 &&
     offsetof(morl_request, cancel) == 120 && offsetof(morl_place, reserved) == 28 &&
     offsetof(morl_declare, repeated_by_count) == 152 && offsetof(morl_macro, is_set) == 28 &&
     offsetof(morl_warning, column) == 60 && offsetof(morl_output, constant_bytes) == 152 &&
     offsetof(morl_program_uniform, fragment) == 28 && offsetof(morl_varying, input) == 28 &&
     offsetof(morl_program_info, warning_count) == 24 && offsetof(morl_log_line, compiler) == 88));
static_assert(MORL_INVALID_ARGUMENT == 1 && MORL_OUT_OF_MEMORY == 2 && MORL_FILE_NOT_READ == 3 &&
              MORL_NODES_REFUSED == 4 && MORL_REFUSED == 5 && MORL_NOT_FOUND == 6 &&
              MORL_FAILED == 7 && MORL_BUSY == 8 && MORL_LIMIT_REACHED == 9 &&
              MORL_CANCELLED == 10 && MORL_ERROR == 1 && MORL_FRAGMENT == 1 && MORL_OUTPUTS == 2);

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
    morl_result* const result = Compile();
    // A result outlives its compiler.
    morl_compiler_destroy(compiler);
    compiler = nullptr;
    EXPECT_EQ(morl_get_output(result, &larger.output), MORL_OK);
    EXPECT_EQ(larger.output.size, offsetof(decltype(larger), behind));
    EXPECT_EQ(larger.later[15], 0);  // what this library does not know is empty
    EXPECT_EQ(larger.behind[0], 7);
    EXPECT_EQ(Shown(larger.output.uniforms[0]), "u");
    ASSERT_EQ(larger.output.fault_count, 1U);
    auto fault = Sized<morl_fault>();
    EXPECT_EQ(morl_get_fault(result, 0, &fault), MORL_OK);
    EXPECT_EQ(Shown(fault.text), "miss ';':");
    morl_result_destroy(result);
}

}  // namespace
