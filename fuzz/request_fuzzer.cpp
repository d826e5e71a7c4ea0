// SPDX-License-Identifier: MIT
// Whole requests: several nodes, every target in turn on one compiler, with reused records. No
// request may affect the next: a second round must give the same texts.
#include "graph_directory.h"
#include "request_input.h"

#include <json/json.h>
#include <cstdint>
#include <map>

namespace {

using ns_ruke::MorlCompiler;
using ns_ruke::PassProperty;
using ns_ruke::ShaderOutput;

/// Bytes that are not UTF-8 pass through unchanged, because the reader accepts them, too.
std::string Quote(const std::string& text)
{
    std::string quoted = "\"";
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            quoted += '\\';
        }
        if (byte >= 0x20) {
            quoted += c;
        } else {
            constexpr char kDigits[] = "0123456789abcdef";
            quoted += std::string("\\u00") + kDigits[byte / 16] + kDigits[byte % 16];
        }
    }
    return quoted + "\"";
}

std::string NodeFile(const morl_fuzz::RequestInput& request)
{
    std::string text = "[";
    for (std::size_t i = 0; i < request.nodes.size(); ++i) {
        text += (i > 0 ? "," : "") + std::string("{\"name\":\"n") + std::to_string(i) +
                "\",\"content\":" + Quote(request.nodes[i].source) + ",\"ref\":[";
        const std::vector<std::string>& references = request.nodes[i].references;
        for (std::size_t j = 0; j < references.size(); ++j) {
            text += (j > 0 ? "," : "") + Quote(references[j]);
        }
        text += "]}";
    }
    return text + "]";
}

PassProperty MakePass(const morl_fuzz::RequestInput& request)
{
    PassProperty pass;
    for (std::size_t i = 0; i < request.nodes.size(); ++i) {
        pass.nodeNames.push_back("n" + std::to_string(i));
    }
    pass.macros.insert(request.macros.begin(), request.macros.end());
    pass.semantics.insert(request.semantics.begin(), request.semantics.end());
    pass.stage = request.stage;
    return pass;
}

/// Reports and warnings do not change the text.
void Compile(MorlCompiler& compiler, PassProperty& pass, ShaderOutput& output, bool withWarnings)
{
    if (!withWarnings) {
        compiler.Compile(pass, output);
        return;
    }
    ns_ruke::PassReport report;
    std::vector<ns_ruke::ReportWarning> warnings;
    compiler.CompileReported(pass, output, report, warnings);
    ns_ruke::CheckStages(report, report, pass.target, warnings);
}

/// A request with an unknown node or target changes nothing.
void CheckRefusal(MorlCompiler& compiler, PassProperty pass, ShaderOutput& output)
{
    const ShaderOutput before = output;
    pass.nodeNames.insert(pass.nodeNames.begin(), {"unknown", "unknown"});
    compiler.Compile(pass, output);
    pass.target = "unknown";
    compiler.Compile(pass, output);
    if (output.code != before.code || output.semantics != before.semantics ||
        output.uniformNames != before.uniformNames) {
        morl_fuzz::Fail("a refused request changed the output");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const morl_fuzz::GraphDirectory directory;
    const morl_fuzz::RequestInput request = morl_fuzz::ReadRequest(std::string(data, data + size));
    directory.Write(ns_ruke::kNodeFiles[0], NodeFile(request));
    std::unordered_map<std::string, std::string> sources;
    for (std::size_t i = 0; i < request.nodes.size(); ++i) {
        sources["n" + std::to_string(i)] = request.nodes[i].source;
    }
    const morl_fuzz::LocationOracle oracle(sources);
    MorlCompiler compiler;
    PassProperty pass = MakePass(request);
    ShaderOutput output;
    std::map<std::string, std::string> texts;
    for (int round = 0; round < 2; ++round) {
        for (const std::string& target : ns_ruke::MorlTargets()) {
            pass.target = target;
            Compile(compiler, pass, output, round > 0);
            std::string& text = texts[target];
            if (round > 0 && text != output.code) {
                morl_fuzz::Fail("two rounds gave two texts for " + target);
            }
            text = output.code;
        }
    }
    CheckRefusal(compiler, pass, output);
    return 0;
}
