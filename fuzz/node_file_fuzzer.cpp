// SPDX-License-Identifier: MIT
// Any bytes as a node-definition file.
#include "graph_directory.h"

#include <json/json.h>
#include <cstdint>

namespace {

/// Checks that a loaded node can be rebuilt from what its accessors return.
void CheckNode(const ns_ruke::MorlNode& node, const std::string& name)
{
    ns_ruke::MorlNode copy;
    copy.SetName(node.GetName());
    copy.SetPosition(node.GetX(), node.GetY());
    copy.SetContent(node.GetContent());
    for (const std::string& reference : node.GetReference()) {
        copy.AddReference(reference);
    }
    const bool parsed = !node.NeedCompile("glsl") && node.NeedCompile("hlsl");
    if (node.GetName() != name || !parsed || node.Program() == nullptr ||
        copy.GetReference() != node.GetReference()) {
        morl_fuzz::Fail("a node is not what was loaded");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const morl_fuzz::GraphDirectory directory;
    directory.Write(ns_ruke::kNodeFiles[0], std::string(data, data + size));
    const std::unordered_map<std::string, std::string> sources;
    const morl_fuzz::LocationOracle silent(sources);
    try {
        ns_ruke::MorlCompiler compiler;
        ns_ruke::PassProperty pass;
        pass.nodeNames = compiler.GetNodeNames();
        pass.target = "glsl";
        pass.stage = 0;
        ns_ruke::ShaderOutput output;
        compiler.Compile(pass, output);
        if (output.code.empty()) {
            morl_fuzz::Fail("a request for loaded nodes was refused");
        }
        for (const std::string& name : pass.nodeNames) {
            CheckNode(*compiler.FindNode(name), name);
        }
    } catch (const Json::Exception&) {
        // Values of a wrong type, and files that nest too deeply, raise the reader's own errors.
    }
    return 0;
}
