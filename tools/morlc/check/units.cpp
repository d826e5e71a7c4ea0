// SPDX-License-Identifier: MIT
#include "check/units.h"

#include "build/variants.h"
#include "passes.h"

#include <algorithm>

namespace morlc {

std::vector<Unit> UnitsOf(const PassOptions& options, const std::vector<std::string>& targets)
{
    std::vector<Unit> units;
    for (const std::string& target : targets) {
        Unit& unit = units.emplace_back();
        unit.context.target = target;
        if (options.BothPasses()) {
            unit.vertex = MakePass(options, target, Stage::Vertex, options.vertexNodes);
            unit.fragment = MakePass(options, target, Stage::Fragment, options.fragmentNodes);
        } else {
            const bool isVertex = options.stage == Stage::Vertex;
            (isVertex ? unit.vertex : unit.fragment) =
                MakePass(options, target, options.stage, options.nodes);
        }
    }
    return units;
}

std::vector<Unit> UnitsOf(const Manifest& manifest, const std::vector<std::string>& shaders,
                          const std::vector<std::string>& targets)
{
    std::vector<Unit> units;
    for (const Variant& variant : ListVariants(manifest, shaders)) {
        if (std::find(targets.begin(), targets.end(), variant.target) == targets.end()) {
            continue;
        }
        const ManifestShader& shader = manifest.shaders[variant.shader];
        const std::string name = shader.VariantName(variant.number);
        Unit& unit = units.emplace_back();
        unit.context = {variant.target, shader.name, variant.target + "/" + name};
        unit.shader = variant.shader;
        const MacroValues macros = shader.Macros(variant.number, variant.target);
        if (!shader.vertex.empty()) {
            unit.vertex = MakePass(shader, variant.target, Stage::Vertex, macros);
        }
        if (!shader.fragment.empty()) {
            unit.fragment = MakePass(shader, variant.target, Stage::Fragment, macros);
        }
    }
    return units;
}

}  // namespace morlc
