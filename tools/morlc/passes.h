// SPDX-License-Identifier: MIT
#pragma once

#include "build/manifest.h"
#include "options.h"

#include <morl/morl.h>
#include <string>
#include <vector>

namespace morlc {

/// The request for one pass of what the options of a command name.
ns_ruke::PassProperty MakePass(const PassOptions& options, const std::string& target, int stage,
                               const std::vector<std::string>& nodes);

/// The request for one pass of a shader of a manifest.
/// @param macros those of the variant: see ManifestShader::Macros
ns_ruke::PassProperty MakePass(const ManifestShader& shader, const std::string& target, int stage,
                               const std::vector<std::string>& nodes, const MacroValues& macros);

/// The names of the nodes of a manifest's pass.
std::vector<std::string> NamesOf(const std::vector<NodeName>& nodes);

}  // namespace morlc
