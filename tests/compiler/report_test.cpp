// SPDX-License-Identifier: MIT
// What a request reports besides its output.
#include "support/graph.h"
#include "support/log_capture.h"
#include "support/random_graph.h"
#include "support/samples.h"

#include <gtest/gtest.h>
#include <sstream>

namespace {

using namespace ns_ruke;
using morl_test::LogCapture;
using morl_test::MakePass;
using Strings = std::vector<std::string>;

std::vector<std::string> Lines(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

/// The name of a node of a report; empty for none.
std::string NameOf(const PassReport& report, int node)
{
    return node >= 0 ? report.nodes.at(static_cast<std::size_t>(node)) : "";
}

std::string LineOf(const MorlCompiler& compiler, const PassReport& report, const ReportLine& line)
{
    return Lines(compiler.FindNode(NameOf(report, line.node))->GetContent())
        .at(static_cast<std::size_t>(line.line) - 1);
}

/// Both passes of a sample with their reports.
struct Reported {
    PassProperty pass;
    ShaderOutput output;
    PassReport report;
};

std::vector<Reported> CompileReported(MorlCompiler& compiler,
                                      const morl_test::SampleRequest& request)
{
    std::vector<Reported> results = {{request.vertex, {}, {}}, {request.fragment, {}, {}}};
    compiler.CompileReported(results[0].pass, results[0].output, results[0].report);
    results[1].pass.semantics = results[0].output.semantics;
    compiler.CompileReported(results[1].pass, results[1].output, results[1].report);
    return results;
}

/// Whether a line is the frame of a shader, which no node has a part in.
bool IsFrame(const std::string& line)
{
    const auto begins = [&](const char* start) { return line.rfind(start, 0) == 0; };
    return line == "}" || line == "};" || line == "\treturn output;" || begins("#version") ||
           begins("precision") || begins("struct ") || begins("float4 oDummyProj") ||
           line.find(" main(") != std::string::npos ||
           line.find("_OUTPUT output;") != std::string::npos;
}

/// Whether a written line may be from a line of a source: the end of a block from the end of a
/// block or of its only statement, anything else from a line with one of its words.
bool MayBeFrom(const std::string& written, const std::string& source)
{
    if (written.find_first_not_of("\t} ") == std::string::npos) {
        return source.find_first_of("};") != std::string::npos;
    }
    std::istringstream words(written);
    for (std::string word; words >> word;) {
        const std::size_t end = word.find_first_of(".,;([)]");
        std::string name = word.substr(0, end);
        // Locals have the names of declarations, after "ret" or "i".
        name.erase(0, name.rfind("ret", 0) == 0 ? 3 : name.rfind("ib", 0) == 0 ? 1 : 0);
        if (name.size() > 1 && source.find(name) != std::string::npos) {
            return true;
        }
    }
    return source.find_first_of("=/{") != std::string::npos;
}

void CheckLines(const MorlCompiler& compiler, const Reported& result)
{
    const std::vector<std::string> lines = Lines(result.output.code);
    ASSERT_EQ(lines.size(), result.report.lines.size());
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const ReportLine& line = result.report.lines[i];
        EXPECT_EQ(line.node < 0, IsFrame(lines[i])) << lines[i];
        if (line.node >= 0) {
            EXPECT_TRUE(MayBeFrom(lines[i], LineOf(compiler, result.report, line)))
                << lines[i] << "\n"
                << LineOf(compiler, result.report, line);
        }
    }
}

/// Puts blank lines in front of a node, and expects exactly its lines to move. Returns how many do.
std::size_t CheckMoved(MorlCompiler& compiler, const morl_test::SampleRequest& request,
                       const std::vector<Reported>& before, const std::string& name, int blanks)
{
    const MorlNode& node = *compiler.FindNode(name);
    const std::string content = node.GetContent();
    const std::vector<std::string> references = node.GetReference();
    compiler.SetNode(name, std::string(static_cast<std::size_t>(blanks), '\n') + content,
                     references);
    const std::vector<Reported> after = CompileReported(compiler, request);
    compiler.SetNode(name, content, references);
    std::size_t moved = 0;
    for (std::size_t pass = 0; pass < after.size(); ++pass) {
        EXPECT_EQ(after[pass].output.code, before[pass].output.code);
        for (std::size_t i = 0; i < after[pass].report.lines.size(); ++i) {
            const ReportLine& old = before[pass].report.lines[i];
            const ReportLine& line = after[pass].report.lines[i];
            EXPECT_EQ(line.node, old.node);
            const bool isMoved = NameOf(after[pass].report, line.node) == name;
            EXPECT_EQ(line.line, old.line + (isMoved ? blanks : 0));
            moved += isMoved ? 1 : 0;
        }
    }
    return moved;
}

TEST(Report, TracesEveryLineOfTheSamples)
{
    const LogCapture log;
    const auto compiler = morl_test::MakeSampleCompiler();
    std::size_t moved = 0;
    for (const morl_test::SampleRequest& request : morl_test::RichestSamples()) {
        const std::vector<Reported> results = CompileReported(*compiler, request);
        for (const Reported& result : results) {
            CheckLines(*compiler, result);
        }
        moved += CheckMoved(*compiler, request, results, request.fragment.nodeNames.back(), 3);
    }
    EXPECT_GT(moved, 100U);
}

TEST(Report, TracesEveryLineOfGeneratedPrograms)
{
    const LogCapture log;
    for (unsigned seed = 0; seed < 300; ++seed) {
        const morl_test::RandomGraph graph(seed);
        MorlCompiler compiler(std::vector<NodeText>{});
        for (const morl_test::NodeSource& node : graph.nodes) {
            compiler.SetNode(node.name, node.content, node.references);
        }
        const std::string target = MorlTargets()[seed % MorlTargets().size()];
        morl_test::SampleRequest request = {"", target, "", MakePass(target, 0, graph.vertexNodes),
                                            MakePass(target, 1, graph.fragmentNodes)};
        request.vertex.macros = request.fragment.macros = graph.macros;
        const std::vector<Reported> results = CompileReported(compiler, request);
        for (const Reported& result : results) {
            CheckLines(compiler, result);
        }
        for (const morl_test::NodeSource& node : graph.nodes) {
            EXPECT_GT(CheckMoved(compiler, request, results, node.name, 1 + seed % 5), 0U);
        }
        ASSERT_FALSE(HasFailure()) << "seed " << seed;
    }
    EXPECT_TRUE(log.errors.empty());
}

std::string ShownLines(const PassReport& report)
{
    std::string text;
    for (const ReportLine& line : report.lines) {
        text += line.node < 0 ? "- " : NameOf(report, line.node) + std::to_string(line.line) + " ";
    }
    return text;
}

TEST(Report, TracesBlocksCommentsAndLoops)
{
    MorlCompiler compiler(std::vector<NodeText>{});
    compiler.SetNode("a",
                     "uniform float u; uniform\nfloat w[4];\n#for N : 0\nuniform float l_N;\n"
                     "#endfor\nvoid main() {\n/* one\ntwo */\nif (u > 1) {\nx = 1;\n}\nelse\n{\n"
                     "y = 2; z = 3;\n}\n#for N : 0\nfor (i = 0; i < N; i++)\n{ x += l_N;\n}\n"
                     "#endfor\nif (u) x = 4;\n}");
    compiler.SetNode("b", "void main() {\n\n// end\n}");
    PassProperty pass = MakePass("glsl", 0, {"b", "a"});
    pass.macros = {{"N", 2}};
    ShaderOutput output;
    PassReport report;
    const LogCapture log;
    compiler.CompileReported(pass, output, report);
    EXPECT_EQ(ShownLines(report),
              "- a1 a1 a4 a4 - b3 a7 a8 a9 a10 a11 a12 a14 a14 a15 "
              "a17 a18 a19 a17 a18 a19 a21 a21 a21 - ")
        << output.code;
}

std::string Shown(const PassReport& report, const std::vector<ReportDeclare>& declares)
{
    std::ostringstream text;
    for (const ReportDeclare& d : declares) {
        text << NameOf(report, d.node) << ":" << d.line << " " << d.type << "/" << d.writtenType
             << " " << d.name << "[" << d.arraySize << "=" << d.elements << "] " << d.semantic
             << " " << d.number << " | type " << static_cast<int>(d.baseType) << " " << d.rows
             << "x" << d.columns << ", " << d.bytes << " bytes at " << d.offset << ", semantic "
             << static_cast<int>(d.semanticKind) << "." << d.semanticIndex
             << (d.isUsed ? ", used" : "");
        for (const int node : d.repeatedBy) {
            text << ", also " << NameOf(report, node);
        }
        text << "\n";
    }
    return text.str();
}

TEST(Report, DescribesWhatAPassBinds)
{
    MorlCompiler compiler(std::vector<NodeText>{});
    compiler.SetNode("a",
                     "uniform sampler2D map : SAUTO;\nuniform float4 bones[3 * N];\n"
                     "uniform float k[4];\n#if FOG\nin auto i : BLENDINDICES;\n#endif\n"
                     "#for LIGHTS : 0 uniform float l;\n#endfor\nin float2 uv : TEXCOORD1;\n"
                     "void main() { oUv = uv * bones[1].xy; }");
    compiler.SetNode("b",
                     "out float2 oUv : TEXAUTO;\nout float3 oN : NORMAL;\nin float2 uv : TEXCOORD1;"
                     "uniform float k[4];",
                     {"a"});
    PassProperty pass = MakePass("hlsl10", 0, {"b", "a"});
    pass.macros = {{"FOG", 1}, {"OTHER", 2}, {"N", 3}};
    pass.samplerRegisters = {{"map", 5}};
    ShaderOutput output;
    PassReport report;
    const LogCapture log;
    compiler.CompileReported(pass, output, report);
    EXPECT_EQ(
        Shown(report, report.uniforms),
        "a:1 sampler2D/Texture2D map[=0] SAUTO 5 | type 6 0x0, 0 bytes at -1, semantic 10.5\n"
        "a:2 float4/float4 bones[3*N=9]  -1 | type 1 4x1, 144 bytes at 0, semantic 0.0, used\n"
        "a:3 float/float k[4=4]  -1 | type 1 1x1, 16 bytes at 144, semantic 0.0, also b\n");
    EXPECT_EQ(report.constantBytes, 208);
    EXPECT_EQ(
        Shown(report, report.inputs),
        "a:5 auto/uint4 i[=0] BLENDINDICES -1 | type 3 4x1, 16 bytes at -1, semantic 5.0\n"
        "a:9 float2/float2 uv[=0] TEXCOORD1 -1 | type 1 2x1, 8 bytes at -1, semantic 7.1, used, "
        "also b\n");
    EXPECT_EQ(
        Shown(report, report.outputs),
        "b:2 float3/float3 oN[=0] NORMAL -1 | type 1 3x1, 12 bytes at -1, semantic 2.0\n"
        "b:1 float2/float2 oUv[=0] TEXAUTO 0 | type 1 2x1, 8 bytes at -1, semantic 7.0, used\n");
    std::string macros;
    for (const ReportMacro& macro : report.macros) {
        macros += macro.name + "=" + std::to_string(macro.value) + (macro.isSet ? " " : "? ");
    }
    EXPECT_EQ(macros, "FOG=1 LIGHTS=0? ");
    EXPECT_EQ(report.unusedMacros, (std::vector<std::string>{"N", "OTHER"}));
}

// A host that compiles the fragment pass alone, or forgets what the vertex pass has assigned.
TEST(Report, WarnsOfTexcoordsThatNobodyAssigned)
{
    MorlCompiler compiler(std::vector<NodeText>{});
    compiler.SetNode("n",
                     "in float2 uv : TEXAUTO; out float4 c : COLOR0;\n"
                     "void main() { c = float4(uv, uv); }");
    const auto warnings = [&](const std::string& target, const Strings& semantics) {
        PassProperty pass = MakePass(target, 1, {"n"});
        for (const std::string& name : semantics) {
            pass.semantics[name] = "TEXCOORD0";
        }
        ShaderOutput output;
        PassReport report;
        std::vector<ReportWarning> found;
        compiler.CompileReported(pass, output, report, found);
        std::string text;
        for (const ReportWarning& warning : found) {
            text += warning.node + ":" + std::to_string(warning.line) + " " + warning.text +
                    " [-W " + std::string(warning.check) + "]\n";
        }
        return text;
    };
    const LogCapture log;
    EXPECT_EQ(warnings("hlsl", {}),
              "n:1 'uv' has no texture coordinate: none was assigned by a vertex pass; compile the "
              "vertex pass first, and pass on the semantics that it assigns "
              "[-W unassigned-texcoord]\n");
    EXPECT_EQ(warnings("glsl", {}), "");
    EXPECT_EQ(warnings("hlsl", {"uv"}), "");
}

// The places that Microsoft's compiler gave these declarations.
TEST(Report, LaysOutConstantsLikeDirect3D)
{
    MorlCompiler compiler(std::vector<NodeText>{});
    compiler.SetNode(
        "n",
        "uniform float a; uniform float2 b; uniform float2 c; uniform float3 d;"
        "uniform float e; uniform int2 f; uniform float3x3 g; uniform float h;"
        "uniform float4x3 i; uniform float j; uniform float3x4 k; uniform float2 l[3];"
        "uniform float m; uniform float2x4 o[2]; uniform float2 p; uniform sampler2D q;"
        "uniform float4x4 r; uniform float3 s[1]; uniform float t;");
    PassProperty pass = MakePass("hlsl10", 1, {"n"});
    ShaderOutput output;
    PassReport report;
    const LogCapture log;
    compiler.CompileReported(pass, output, report);
    std::string places;
    for (const ReportDeclare& uniform : report.uniforms) {
        places += uniform.name + std::to_string(uniform.offset) + " ";
    }
    EXPECT_EQ(places,
              "a0 b4 c16 d32 e44 f48 g64 h108 i112 j160 k176 l240 m280 o288 p408 q-1 r416 s480 "
              "t492 ");
    EXPECT_EQ(report.constantBytes, 496);
    pass.target = "hlsl";
    compiler.CompileReported(pass, output, report);
    EXPECT_EQ(report.uniforms[1].offset, -1);
    // Where a size is absurd, it is not told, and no place after it; nor where the sum is.
    pass.target = "hlsl10";
    pass.macros = {{"N", 2000}};
    for (const char* absurd :
         {"uniform float4 b[2147483647];", "#for N : 0 uniform float4x4 b_N[65536];\n#endfor "}) {
        compiler.SetNode("n", std::string("uniform float a; ") + absurd + "uniform float4 c;");
        compiler.CompileReported(pass, output, report);
        EXPECT_EQ(report.uniforms[0].offset, 0);
        EXPECT_EQ(report.uniforms.back().offset, -1);
        EXPECT_EQ(report.constantBytes, 0);
    }
    EXPECT_EQ(report.uniforms[1].bytes, 4194304);
}

TEST(Report, HasTheFaultsOfAllNodesThatTookPart)
{
    MorlCompiler compiler(std::vector<NodeText>{});
    compiler.SetNode("a", "void main() {\n  x = ;\n}");
    compiler.SetNode("b", "out float c;", {"d"});
    compiler.SetNode("d", "out float c;", {"b"});
    PassProperty first = MakePass("glsl", 0, {"a"});
    ShaderOutput output;
    {
        const LogCapture log;
        compiler.Compile(first, output);
    }
    PassProperty pass = MakePass("glsl", 0, {"b", "d", "a"});
    PassReport report;
    const LogCapture log;
    compiler.CompileReported(pass, output, report);
    EXPECT_EQ(log.errors, std::vector<std::string>{"MorlLinker: reference cycle: b, d"});
    std::string faults;
    for (const ReportFault& fault : report.faults) {
        faults += fault.node + ":" + std::to_string(fault.line) + ":" +
                  std::to_string(fault.column) + " " + fault.text + "\n";
    }
    EXPECT_EQ(faults, "a:2:8 expression error:\n:0:0 MorlLinker: reference cycle: b, d\n");
    pass.nodeNames = {"nowhere"};
    compiler.CompileReported(pass, output, report);
    ASSERT_EQ(report.faults.size(), 1U);
    EXPECT_TRUE(report.lines.empty());
}

/// The faults of a source, as reports have them.
std::string FaultsOf(const std::string& content)
{
    MorlCompiler compiler{std::vector<NodeText>()};
    compiler.SetNode("n", content);
    PassProperty pass = MakePass("glsl", 1, {"n"});
    ShaderOutput output;
    PassReport report;
    compiler.CompileReported(pass, output, report, ReportParts::Faults);
    std::string faults;
    for (const ReportFault& fault : report.faults) {
        faults += std::to_string(fault.line) + ":" + std::to_string(fault.column) + " " +
                  fault.text + "\n";
    }
    return faults;
}

TEST(Report, PlacesEveryMissingSemicolonWhereItIsMissing)
{
    const LogCapture log;
    const auto compiler = morl_test::MakeSampleCompiler();
    int count = 0;
    for (const std::string& name : compiler->GetNodeNames()) {
        const std::string content = compiler->FindNode(name)->GetContent();
        const TextLines lines(content);
        for (std::size_t i = content.find(';'); i != std::string::npos;
             i = content.find(';', i + 1)) {
            const TextPlace place = lines.PlaceOf(i);
            const std::size_t start = lines.Starts()[static_cast<std::size_t>(place.line) - 1];
            if (content.substr(start, i - start).find("//") != std::string::npos) {
                continue;
            }
            const std::string faults = FaultsOf(std::string(content).erase(i, 1));
            const std::string expected =
                std::to_string(place.line) + ":" + std::to_string(place.column) + " ";
            EXPECT_EQ(faults.find(expected), 0U) << name << " " << expected << "\n" << faults;
            EXPECT_EQ(faults.find('\n') + 1, faults.size()) << name << "\n" << faults;
            ++count;
        }
    }
    EXPECT_GT(count, 150);
}

TEST(Report, LeavesOutWhatOnlyFollows)
{
    const LogCapture log;
    const std::pair<const char*, const char*> rows[] = {
        // Several parts, behind comments and blank lines.
        {"uniform float4 u // a;\n\nout float4 o : COLOR0 /* ; */\nvoid main() {\no = u\n\n}",
         "1:17 invalid end of line :\n3:22 miss ';':\n5:6 miss ';':\n"},
        {"void main() {\nif (a > b {\nx = 1;\n}\n}", "2:10 miss ')':\n"},
        {"void main() {\nx = 1;", "2:7 miss '}':\n"},
        // A part that would not help stays where the parser noticed.
        {"void main() {\nx = sqrt(y);\n}", "2:9 miss ';':\n"},
        {"void main() {\nx = y z;\nw = ;\nv = 1\n}",
         "2:7 miss ';':\n3:6 expression error:\n4:6 miss ';':\n"},
    };
    for (const auto& [content, faults] : rows) {
        EXPECT_EQ(FaultsOf(content), faults) << content;
    }
    // What the log says stays as it was.
    const LogCapture own;
    FaultsOf("void main() {\nx = y\n}");
    EXPECT_EQ(own.errors.size(), 2U);
}

}  // namespace
