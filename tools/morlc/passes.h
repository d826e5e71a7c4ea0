// SPDX-License-Identifier: MIT
#pragma once

#include "build/manifest.h"
#include "options.h"

#include <morl/morl.h>
#include <string>
#include <vector>

namespace morlc {

/// The request for one pass of what the options of a command name.
ns_ruke::PassProperty MakePass(const PassOptions& options, const std::string& target, Stage stage,
                               const std::vector<std::string>& nodes);

/// The nodes of one pass of a shader of a manifest.
const std::vector<NodeName>& NodesOf(const ManifestShader& shader, Stage stage);

/// The request for that pass.
/// @param macros those of the variant: see ManifestShader::Macros
ns_ruke::PassProperty MakePass(const ManifestShader& shader, const std::string& target, Stage stage,
                               const MacroValues& macros);

}  // namespace morlc
