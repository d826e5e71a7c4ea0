// SPDX-License-Identifier: MIT
#include "pictures/probes.h"

#include "support/document.h"
#include "support/graph.h"
#include "support/log_capture.h"

#include <json/json.h>
#include <algorithm>
#include <iterator>
#include <memory>
#include <sstream>
#include <stdexcept>

namespace morl_test {
namespace {

constexpr char kLocals[] =
    "float3 a = float3(0.2, 0.5, 0.3); float3 b = float3(0.6, 0.1, 0.4);"
    "float3 c = float3(0.3, 0.4, 0.8); float4 v = float4(n, 1.0);"
    "float4 w = float4(0.9, 0.6, 0.3, 0.8); float s = 0.5; float pick = 1.0;"
    "float4 result = float4(0.0, 0.0, 0.0, 1.0);\n";

/// The node that a pass consists of: what it declares, the statements of the probe between locals
/// and result, and what it hands on.
std::string VertexNode(const std::string& declares, const std::string& statements)
{
    return "uniform float4x4 world; uniform float4x4 worldViewProj; in float3 position : POSITION;"
           "in float3 normal : NORMAL; in float2 uv : TEXCOORD0; out float4 oProjPos : SV_Position;"
           "out float3 oNormal : TEXAUTO; out float2 oUV : TEXAUTO; out float4 oResult : "
           "TEXAUTO;\n" +
           declares + "\nvoid main() { float3 n = normalize(normal);" + kLocals + statements +
           "\noProjPos = mul(float4(position, 1.0), worldViewProj); oNormal = normal; oUV = uv;"
           "oResult = result; }";
}

std::string FragmentNode(const std::string& declares, const std::string& statements,
                         const std::string& output)
{
    return "uniform float4x4 world; in float3 oNormal : TEXAUTO; in float2 oUV : TEXAUTO;"
           "in float4 oResult : TEXAUTO; out float4 oColor : " +
           output + ";\n" + declares + "\nvoid main() { float3 n = normalize(oNormal);" + kLocals +
           statements + "\noColor = float4(result.xyz * 0.5 + float3(0.5, 0.5, 0.5), 1.0); }";
}

/// What a target makes of a probe's wrong line. Of HLSL, Microsoft's compiler says whether it is
/// refused, and the one here what it draws.
std::string Verdict(pictures::Painter& painter, const Probe& probe, const std::string& target,
                    const pictures::Image* expected)
{
    const SampleTexts texts = CompileProbe(probe, target, false);
    const auto& refusing = probe.refusedByDirect3d;
    if (std::find(refusing.begin(), refusing.end(), target) != refusing.end()) {
        return "refused";
    }
    try {
        if (expected == nullptr) {
            painter.Link(target, texts);
            return "accepted";
        }
        return LooksSame(painter.Draw(target, texts), *expected) ? "yes" : "other picture";
    } catch (const pictures::Refused&) {
        return ns_ruke::FindTargetInfo(target)->Has(ns_ruke::kHlsl) ? "accepted" : "refused";
    }
}

}  // namespace

std::vector<Probe> ReadProbes()
{
    std::istringstream text(
        ReadText(std::filesystem::path(MORL_SOURCE_DIR) / "tests/pictures/probes.json"));
    Json::Value root;
    text >> root;
    std::vector<Probe> probes;
    for (const Json::Value& entry : root) {
        Probe probe;
        probe.row = entry["row"].asString();
        probe.check = entry["check"].asString();
        probe.rule = entry["rule"].asString();
        probe.isInVertexPass = entry["stage"].asString() == "vertex";
        probe.wrong = entry["wrong"].asString();
        probe.right = entry["right"].asString();
        probe.output = entry.get("output", "COLOR0").asString();
        probe.webGl = entry["webgl"].asString();
        for (const Json::Value& target : entry["direct3d"]) {
            probe.refusedByDirect3d.push_back(target.asString());
        }
        probe.declare = entry["declare"].asString();
        probe.rightDeclare = entry.get("rightDeclare", probe.declare).asString();
        probes.push_back(probe);
    }
    return probes;
}

std::vector<NodeSource> NodesOfProbe(const Probe& probe, bool isRight)
{
    const std::string& statements = isRight ? probe.right : probe.wrong;
    const std::string& declares = isRight ? probe.rightDeclare : probe.declare;
    const bool inVertex = probe.isInVertexPass;
    return {{"vertex", inVertex ? VertexNode(declares, statements) : VertexNode("", ""), {}},
            {"fragment",
             inVertex ? FragmentNode("", "result = oResult;", "COLOR0")
                      : FragmentNode(declares, statements, isRight ? "COLOR0" : probe.output),
             {}}};
}

namespace {

/// The graph of a probe's line.
std::unique_ptr<ns_ruke::MorlCompiler> MakeProbeCompiler(const Probe& probe, bool isRight)
{
    return MakeCompiler(NodesOfProbe(probe, isRight));
}

SampleRequest MakeProbeRequest(const std::string& target)
{
    SampleRequest request;
    request.vertex = MakePass(target, ns_ruke::kVertexStage, {"vertex"});
    request.fragment = MakePass(target, ns_ruke::kFragmentStage, {"fragment"});
    request.fragment.macros["COMPARE"] = target == "hlsl10" ? 1 : 0;
    return request;
}

/// The text of the warning that the line gives, in the first target that it concerns, with what to
/// do instead.
/// @throws std::runtime_error if there is none, or one for the right line
std::string WarningOf(const Probe& probe)
{
    std::string text;
    for (const std::string& target : ns_ruke::MorlTargets()) {
        if (!probe.right.empty() && !CheckProbe(probe, target, true).empty()) {
            throw std::runtime_error(target + " warns of " + probe.right);
        }
        for (const ns_ruke::ReportWarning& warning : CheckProbe(probe, target, false)) {
            // The matrix helpers are wrong in more than one way.
            text = text.empty() && warning.check == probe.check ? warning.text : text;
        }
    }
    if (text.empty()) {
        throw std::runtime_error(probe.check + " does not find " + probe.wrong);
    }
    return text;
}

void ExpectRowsOfAllChecks(const std::vector<Probe>& probes)
{
    for (const ns_ruke::CheckInfo& check : ns_ruke::MorlChecks()) {
        const bool hasRow = std::any_of(probes.begin(), probes.end(), [&](const Probe& probe) {
            return probe.check == check.name;
        });
        if (check.group == "targets" && !hasRow) {
            throw std::runtime_error("no line for the check " + std::string(check.name));
        }
    }
}

/// A row of the table: the verdicts on the line, and the warning.
std::string Row(pictures::Painter& painter, const Probe& probe)
{
    std::vector<pictures::Image> right;
    std::vector<std::string> cells = {probe.row};
    for (const std::string& target : ns_ruke::MorlTargets()) {
        if (!probe.right.empty()) {
            right.push_back(painter.Draw(target, CompileProbe(probe, target, true)));
            if (!LooksSame(right.front(), right.back())) {
                throw std::runtime_error("drawn differently in " + target + ": " + probe.right);
            }
        }
        cells.push_back(Verdict(painter, probe, target, right.empty() ? nullptr : &right.front()));
    }
    cells.insert(cells.end(), {probe.webGl, "`" + probe.check + "`: " + WarningOf(probe)});
    return TableRow(cells);
}

}  // namespace

std::vector<ns_ruke::ReportWarning> CheckProbe(const Probe& probe, const std::string& target,
                                               bool isRight)
{
    const LogCapture log;
    const auto compiler = MakeProbeCompiler(probe, isRight);
    SampleRequest request = MakeProbeRequest(target);
    std::vector<ns_ruke::ReportWarning> all;
    for (ns_ruke::PassProperty* pass : {&request.vertex, &request.fragment}) {
        ns_ruke::ShaderOutput output;
        ns_ruke::PassReport report;
        std::vector<ns_ruke::ReportWarning> warnings;
        compiler->CompileReported(*pass, output, report, warnings);
        request.fragment.semantics.insert(output.semantics.begin(), output.semantics.end());
        std::copy_if(warnings.begin(), warnings.end(), std::back_inserter(all),
                     [](const auto& warning) { return warning.check != "unused-macro"; });
    }
    return all;
}

SampleTexts CompileProbe(const Probe& probe, const std::string& target, bool isRight)
{
    const LogCapture log;
    const auto compiler = MakeProbeCompiler(probe, isRight);
    const SampleTexts texts = CompileSample(*compiler, MakeProbeRequest(target));
    // hlsl10 misses an argument for the comparison, which is what a probe is about.
    if (!log.errors.empty() && log.errors.front() != "Morl Compiler: not enough arguments: tex2D") {
        throw std::logic_error(log.errors.front() + ": " + probe.wrong);
    }
    return texts;
}

std::string ProbeTable()
{
    pictures::Painter painter;
    std::vector<std::string> head = {"in a node"};
    for (const std::string& target : ns_ruke::MorlTargets()) {
        head.push_back("`" + target + "`");
    }
    head.insert(head.end(), {"WebGL", "warning"});
    std::string table = TableRow(head) + TableRow(std::vector<std::string>(head.size(), "---"));
    const std::vector<Probe> probes = ReadProbes();
    ExpectRowsOfAllChecks(probes);
    for (const Probe& probe : probes) {
        table += Row(painter, probe);
    }
    return table;
}

std::string RuleTable()
{
    std::string table =
        TableRow({"rule", "works everywhere", "does not"}) + TableRow({"---", "---", "---"});
    for (const Probe& probe : ReadProbes()) {
        if (!probe.rule.empty()) {
            table += TableRow({probe.rule, "`" + probe.right + "`", "`" + probe.wrong + "`"});
        }
    }
    return table;
}

}  // namespace morl_test
