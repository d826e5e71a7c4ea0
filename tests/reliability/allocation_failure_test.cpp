// SPDX-License-Identifier: MIT
// Every allocation fails in turn: nothing leaks, nothing is freed twice, the output is either
// unchanged or complete, and the compiler stays usable.
#include "support/allocation.h"
#include "support/graph.h"
#include "support/log_capture.h"
#include "support/samples.h"

#include <gtest/gtest.h>
#include <morl/c/morl.h>
#include <new>

namespace {

using namespace ns_ruke;

/// Runs `attempt` with its first allocation failing, then its second, and so on, until none fails
/// any more. Each failure must surface as std::bad_alloc. After each attempt, `check` runs with
/// allocations working again. Returns how many failed.
template <class Attempt, class Check>
std::size_t FailInTurn(const Attempt& attempt, const Check& check)
{
    for (std::size_t n = 1;; ++n) {
        bool thrown = false;
        MorlUnit::ReleaseMemory();  // otherwise kept nodes stand in for allocations
        morl_test::FailAllocation(n);
        try {
            attempt();
        } catch (const std::bad_alloc&) {
            thrown = true;
        }
        const bool failed = morl_test::FailAllocation(0);
        EXPECT_EQ(thrown, failed) << n;
        check(failed);
        if (!failed) {
            return n - 1;
        }
    }
}

/// A sink that allocates nothing, so that only the compiler's own allocations are counted.
class SilentLog {
public:
    SilentLog()
        : previous(
              TamberLogSystem::SetSink([](LogLevel, const std::string&, const std::string&) {}))
    {
    }
    SilentLog(const SilentLog&) = delete;
    SilentLog& operator=(const SilentLog&) = delete;
    ~SilentLog() { TamberLogSystem::SetSink(std::move(previous)); }

private:
    LogSink previous;
};

constexpr char kSource[] =
    "uniform sampler2D someLongTextureName : SAUTO; uniform float4 list[4 + N]; in auto i : "
    "BLENDINDICES; out float2 someLongOutputName : TEXAUTO; out float4 oProjPos : SV_Position;"
    "#if A in float a; out float b : NORMAL; uniform float c; float f(float x) { y = x; } #else in "
    "float d; #endif #for N : 0 uniform float4 light_N; #if B float g() { } #endif #endfor\n"
    "// comment\n"
    "void main() { float4 someLongVariableName = tex2D(someLongTextureName, uv[1].xy) * -a;"
    "if (a) { b = 1; #if A c = someLongVariableName; #for N : 0 d_N = 1; #endfor #endif } $K = 1.5;"
    "#for N : 0 v.N += light_N * $K; #endfor if (a < b && !c) { discard; } else if (a) b = 1;\n"
    "for (int j = 0; j < 4; j++) { m = float4x4construct(a, b, c, (d)); }\n"
    "/* a */ float l[2]; :; x = max(; \n else if (q) { } y = 1 }";

TEST(AllocationFailure, DuringConstruction)
{
    const SilentLog silent;
    const morl_test::TemporaryDirectory directory;
    morl_test::WriteNodeFiles(
        directory.path, R"([{"name": "a", "content": "a content that is not short", "ref": ["x",
            "a reference that is not short"]}, {"name": "a"}, 3, null])");
    const morl_test::InDirectory inDirectory(directory.path);
    {
        const MorlCompiler first;
    }  // makes what exists once per process, before counting starts
    morl_test::ResetAllocations();
    const std::size_t failures = FailInTurn([] { const MorlCompiler compiler; },
                                            [](bool) {
                                                EXPECT_EQ(morl_test::Allocations().live, 0U);
                                                morl_test::ResetAllocations();
                                            });
    EXPECT_GT(failures, 30U);
}

void FailDuringARequest(const std::string& target, bool withReport)
{
    const auto compile = [withReport](MorlCompiler& compiler, PassProperty& pass,
                                      ShaderOutput& output) {
        PassReport report;
        std::vector<ReportWarning> warnings;
        if (withReport) {
            compiler.CompileReported(pass, output, report, warnings);
        } else {
            compiler.Compile(pass, output);
        }
    };
    PassProperty pass = morl_test::MakePass(target, 0, {"first", "second"});
    pass.macros = {{"A", 1}, {"N", 2}};
    const auto makeCompiler = [] {
        return morl_test::MakeCompiler(
            {{"first", kSource, {"second"}}, {"second", "void main() { x = 1; }", {}}});
    };
    ShaderOutput whole;
    whole.semantics = {{"kept", "text"}};
    whole.uniformNames = {"kept"};
    const ShaderOutput before = whole;
    compile(*makeCompiler(), pass, whole);

    std::size_t failures = 0;
    MorlUnit::ReleaseMemory();
    morl_test::ResetAllocations();
    {
        const auto compiler = makeCompiler();
        failures = FailInTurn(
            [&] {
                ShaderOutput output = before;
                try {
                    compile(*compiler, pass, output);
                } catch (...) {
                    EXPECT_EQ(output.code, before.code);
                    EXPECT_EQ(output.semantics, before.semantics);
                    EXPECT_EQ(output.uniformNames, before.uniformNames);
                    throw;
                }
                EXPECT_EQ(output.code, whole.code);
                EXPECT_EQ(output.semantics, whole.semantics);
                EXPECT_EQ(output.uniformNames, whole.uniformNames);
            },
            [](bool) {});
    }
    MorlUnit::ReleaseMemory();
    EXPECT_EQ(morl_test::Allocations().live, 0U) << target;
    EXPECT_GT(failures, 100U);
}

TEST(AllocationFailure, DuringARequest)
{
    const SilentLog silent;
    for (const std::string& target : MorlTargets()) {
        FailDuringARequest(target, false);
        FailDuringARequest(target, true);
    }
}

// With new nodes every time, so that parsing fails at each of its allocations, too.
TEST(AllocationFailure, DuringAFirstRequest)
{
    const SilentLog silent;
    PassProperty pass = morl_test::MakePass("hlsl", 0, {"node"});
    std::unique_ptr<MorlCompiler> compiler = morl_test::MakeCompiler({{"node", kSource, {}}});
    ShaderOutput whole;
    compiler->Compile(pass, whole);
    compiler.reset();
    std::size_t failures = 0;
    for (bool failed = true; failed;) {
        compiler = morl_test::MakeCompiler({{"node", kSource, {}}});
        MorlUnit::ReleaseMemory();
        morl_test::ResetAllocations();
        {
            ShaderOutput output;
            MorlUnit::ReleaseMemory();
            morl_test::FailAllocation(failures + 1);
            try {
                compiler->Compile(pass, output);
            } catch (const std::bad_alloc&) {
                EXPECT_EQ(output.code, "");
            }
            failed = morl_test::FailAllocation(0);
            failures += failed ? 1 : 0;
            compiler->Compile(pass, output);
            EXPECT_EQ(output.code, whole.code) << failures;
            compiler.reset();
        }
        MorlUnit::ReleaseMemory();
        EXPECT_EQ(morl_test::Allocations().live, 0U) << failures;
    }
    EXPECT_GT(failures, 120U);
}

// Nothing is thrown across the C interface; each failure is a status.
TEST(AllocationFailure, InTheCInterface)
{
    const SilentLog log;
    const morl_text name = {"n", 1};
    const morl_text text = {"[{\"name\": \"n\", \"content\": \"uniform float4 u;\"}]", 45};
    std::size_t failures = 0;
    const auto fails = [&failures](morl_status status) {
        failures += status == MORL_OUT_OF_MEMORY ? 1 : 0;
        return status != MORL_OK;
    };
    const auto use = [&] {
        std::size_t count = 0;
        morl_targets(&count);
        morl_compiler* compiler = morl_compiler_create();
        morl_node node = {};
        node.size = sizeof node;
        const morl_text* names = nullptr;
        morl_request request = {};
        request.size = sizeof request;
        request.nodes = &name;
        request.node_count = 1;
        request.target = {"glsl", 4};
        request.wants_report = request.wants_warnings = 1;
        morl_result* result = nullptr;
        if (compiler == nullptr || fails(morl_load_nodes(compiler, name, text)) ||
            fails(morl_get_node_names(compiler, &names, &count)) ||
            fails(morl_get_node(compiler, name, &node)) || fails(morl_set_node(compiler, &node)) ||
            fails(morl_compile(compiler, &request, &result))) {
            EXPECT_EQ(result, nullptr);
        } else {
            morl_program* program = nullptr;
            fails(morl_link(result, result, &program));
            morl_program_destroy(program);
            failures += morl_get_json(result).size == 0 ? 1 : 0;
        }
        morl_result_destroy(result);
        morl_compiler_destroy(compiler);
    };
    use();  // makes what exists once per process
    morl_test::ResetAllocations();
    for (std::size_t n = 1;; ++n) {
        morl_release_memory();
        morl_test::FailAllocation(n);
        use();
        if (!morl_test::FailAllocation(0)) {
            break;
        }
    }
    morl_release_memory();
    EXPECT_EQ(morl_test::Allocations().live, 0U);
    EXPECT_GT(failures, 50U);
}

}  // namespace
