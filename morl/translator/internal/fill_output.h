// SPDX-License-Identifier: MIT
#pragma once

#include "morl/ast/declarations.h"
#include "morl/compiler/shader_output.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace ns_ruke {

/// Stores the results of a request. If an exception passes through, `output` is unchanged.
/// References to entries of its table of semantics stay valid.
/// @param assigned the texture coordinates that the pass assigned, by declaration name.
void FillOutput(std::string code, const std::vector<MorlDeclare*>& uniforms,
                std::unordered_map<std::string, std::string> assigned, ShaderOutput& output);

}  // namespace ns_ruke
