// SPDX-License-Identifier: MIT
// Runs sources of up to a megabyte, nested as deeply as possible, through a whole request on a
// small stack.
#include "support/allocation.h"
#include "support/graph.h"
#include "support/log_capture.h"

#include <gtest/gtest.h>
#include <pthread.h>

namespace {

using namespace ns_ruke;
using morl_test::CompileSource;

#ifdef MORL_SANITIZED
/// The sanitizers pad every frame.
constexpr std::size_t kStack = 3 * 512 * 1024;
#else
constexpr std::size_t kStack = 512 * 1024;
#endif

#if defined(MORL_SANITIZED) || defined(_WIN32)
/// Still far deeper than the stack would bear; a megabyte takes minutes under sanitizers and Wine.
constexpr std::size_t kSource = 128 * 1024;
#else
constexpr std::size_t kSource = 1024 * 1024;
#endif

/// Runs a function on a thread with this stack, in bytes.
void RunOnStack(std::size_t stack, const std::function<void()>& function)
{
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, stack), 0);
    pthread_t thread;
    const auto run = [](void* argument) -> void* {
        (*static_cast<const std::function<void()>*>(argument))();
        return nullptr;
    };
    ASSERT_EQ(
        pthread_create(&thread, &attributes, run, const_cast<std::function<void()>*>(&function)),
        0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
}

std::string Repeat(const std::string& text, std::size_t count)
{
    std::string repeated;
    repeated.reserve(text.size() * count);
    for (std::size_t i = 0; i < count; ++i) {
        repeated += text;
    }
    return repeated;
}

/// A pattern to nest: `open` and `close` are repeated around `middle`, between `head` and `tail`.
struct Nest {
    const char* name;
    const char* head;
    const char* open;
    const char* middle;
    const char* close;
    const char* tail;
};

const Nest kNests[] = {
    {"parentheses", "void main() { x = ", "(", "1", ")", "; }"},
    {"calls", "void main() { x = ", "max(", "1", ")", "; }"},
    {"second arguments", "void main() { x = ", "max(1,a+-b*", "1", ")", "; }"},
    {"sampling", "void main() { x = ", "tex2D(", "s", ",u)", "; }"},
    {"transposing", "void main() { x = ", "float4x4construct(", "1", ",a,b,c)", "; }"},
    {"indexes", "void main() { x = ", "a[", "1", "]", "; }"},
    {"index chains", "void main() { x = a", "[1]", "", "", "; }"},
    {"sums", "void main() { x = ", "a+", "1", "", "; }"},
    {"rising operators", "void main() { x = ", "a&&b<c+d*e.f.", "g", "", "; }"},
    {"minuses", "void main() { x = ", "- ", "1", "", "; }"},
    {"operands", "void main() { x = ", "a+max(b,", "1", ")", "; }"},
    {"mixtures", "void main() { x = ", "a+max(b,(c[", "1", "]))", "; }"},
    {"ifs", "void main() { ", "if(a){", "x = 1;", "}", "}"},
    {"else ifs", "void main() { ", "if(a){}else ", "x = 1;", "", "}"},
    {"elses with comments", "void main() { ", "if(a){//\n}//\nelse ", "if(a){}", "", "}"},
    {"fors", "void main() { ", "for(i=0;i<1;i++){", "x = 1;", "}", "}"},
    {"for heads", "void main() { ", "for(", "x = 1;", ";i<1;i++){}", "}"},
    {"statement #ifs", "void main() { ", "#if A ", "x = 1;", " #endif", "}"},
    {"statement #fors", "void main() { ", "#for N : 0 ", "x = 1;", " #endfor", "}"},
    {"program #ifs", "", "#if A ", "in float a;float f(){}", " #endif", ""},
    {"program #fors", "", "#for N : 0 ", "in float a;float f(){}", " #endfor", ""},
    {"#if conditions", "", "#if (", "A", "", "\nin float a;\n#endif"},
    {"array sizes", "uniform float a", "[a[", "1", "]]", ";"},
    {"braces", "void main() ", "{", "", "}", ""},
};

std::string Nested(const Nest& nest, std::size_t depth)
{
    return nest.head + Repeat(nest.open, depth) + nest.middle + Repeat(nest.close, depth) +
           nest.tail;
}

/// One request in every target. Returns the first code.
std::string CompileEverywhere(const std::string& source)
{
    std::string first;
    const auto compiler = morl_test::MakeCompiler({{"node", source, {}}});
    for (const std::string& target : MorlTargets()) {
        PassProperty pass = morl_test::MakePass(target, 0, {"node"});
        pass.macros = {{"A", 1}, {"N", 1}};
        ShaderOutput output;
        compiler->Compile(pass, output);
        first = first.empty() ? output.code : first;
    }
    return first;
}

TEST(Nesting, IsBoundedOnASmallStack)
{
    for (const Nest& nest : kNests) {
        const std::size_t unit = std::string(nest.open).size() + std::string(nest.close).size();
        const std::string whole = Nested(nest, kSource / unit);
        const std::string sources[] = {
            whole,
            whole.substr(0, whole.size() / 2),                              // never closed
            Repeat(Nested(nest, 150) + "\n", kSource / (150 * unit + 40)),  // many within the bound
            Repeat(Nested(nest, 400) + "\n", kSource / (400 * unit + 40)),
        };
        for (const std::string& source : sources) {
            const morl_test::LogCapture log;
            morl_test::ResetAllocations();
            RunOnStack(kStack, [&source] { CompileEverywhere(source); });
            // The messages do not count: they belong to the host.
            std::size_t messages = 0;
            for (const std::string& message : log.errors) {
                messages += message.size() + 2 * sizeof(std::string);
            }
            EXPECT_LT(morl_test::Allocations().peak,
                      64 * source.size() + 32 * 1024 * 1024 + messages)
                << nest.name << " " << source.size();
        }
    }
}

TEST(Nesting, AdmitsWhatShadersNeed)
{
    for (const Nest& nest : kNests) {
        const std::string name = nest.name;
        const bool chain = name == "sums" || name == "index chains" || name == "minuses";
        const bool malformed =
            name == "braces" || name == "for heads" || name == "#if conditions" ||
            name == "second arguments" || name == "rising operators" || name == "sampling" ||
            name == "transposing" || name == "elses with comments" || name == "array sizes";
        if (malformed) {
            continue;
        }
        const morl_test::LogCapture log;
        const std::string source = Nested(nest, chain ? 400 : 200);
        std::string code;
        RunOnStack(kStack, [&source, &code] { code = CompileEverywhere(source); });
        EXPECT_EQ(log.errors, std::vector<std::string>{}) << name;
        EXPECT_NE(code, "") << name;
    }
}

// One construct, one message, on one line or on thousands; what follows it is read as usual.
TEST(Nesting, IsReportedOncePerConstruct)
{
    for (const Nest& nest : kNests) {
        const std::string name = nest.name;
        if (name == "braces" || name == "for heads" || name == "array sizes" ||
            name == "#if conditions" || name == "elses with comments") {
            continue;  // mistakes of another kind
        }
        for (const char* separator : {"", "\n"}) {
            Nest spread = nest;
            const std::string open = nest.open + std::string(separator);
            const std::string close = separator + std::string(nest.close);
            spread.open = open.c_str();
            spread.close = close.c_str();
            const morl_test::LogCapture log;
            CompileSource(Nested(spread, 2000), "glsl", 0);
            std::size_t messages = 0;
            for (const LogLine& line : log.lines) {
                messages += line.text == "nesting too deep:" ? 1 : 0;
            }
            EXPECT_EQ(messages, 1U) << name;
            EXPECT_LE(log.errors.size(), 3U) << name << (*separator != 0 ? ", spread" : "");
        }
    }
    const morl_test::LogCapture log;
    const std::string code = CompileSource(
        "void main() {\n\tx = " + Repeat("(", 2000) + Repeat(")", 2000) + ";\n\ty = 1;\n}", "glsl",
        0);
    EXPECT_EQ(log.errors,
              std::vector<std::string>{"Morl Compiler(line:2,ch:1284): nesting too deep:"});
    EXPECT_NE(code.find("y = 1;"), std::string::npos);
}

}  // namespace
