// SPDX-License-Identifier: MIT
#include "passes.h"

namespace morlc {

using ns_ruke::PassProperty;

PassProperty MakePass(const PassOptions& options, const std::string& target, Stage stage,
                      const std::vector<std::string>& nodes)
{
    PassProperty pass;
    pass.nodeNames = nodes;
    pass.macros = options.macros;
    pass.target = target;
    pass.stage = static_cast<int>(stage);
    pass.samplerRegisters = options.samplers;
    return pass;
}

const std::vector<NodeName>& NodesOf(const ManifestShader& shader, Stage stage)
{
    return stage == Stage::Vertex ? shader.vertex : shader.fragment;
}

PassProperty MakePass(const ManifestShader& shader, const std::string& target, Stage stage,
                      const MacroValues& macros)
{
    PassProperty pass;
    for (const NodeName& node : NodesOf(shader, stage)) {
        pass.nodeNames.push_back(node.name);
    }
    pass.target = target;
    pass.stage = static_cast<int>(stage);
    pass.macros.insert(macros.begin(), macros.end());
    pass.samplerRegisters.insert(shader.samplers.begin(), shader.samplers.end());
    return pass;
}

}  // namespace morlc
