// SPDX-License-Identifier: MIT
#include "passes.h"

#include <algorithm>
#include <iterator>

namespace morlc {

using ns_ruke::PassProperty;

PassProperty MakePass(const PassOptions& options, const std::string& target, int stage,
                      const std::vector<std::string>& nodes)
{
    PassProperty pass;
    pass.nodeNames = nodes;
    pass.macros = options.macros;
    pass.target = target;
    pass.stage = stage;
    pass.samplerRegisters = options.samplers;
    return pass;
}

PassProperty MakePass(const ManifestShader& shader, const std::string& target, int stage,
                      const std::vector<std::string>& nodes, const MacroValues& macros)
{
    PassProperty pass;
    pass.nodeNames = nodes;
    pass.target = target;
    pass.stage = stage;
    pass.macros.insert(macros.begin(), macros.end());
    pass.samplerRegisters.insert(shader.samplers.begin(), shader.samplers.end());
    return pass;
}

std::vector<std::string> NamesOf(const std::vector<NodeName>& nodes)
{
    std::vector<std::string> names;
    names.reserve(nodes.size());
    std::transform(nodes.begin(), nodes.end(), std::back_inserter(names),
                   [](const NodeName& node) { return node.name; });
    return names;
}

}  // namespace morlc
