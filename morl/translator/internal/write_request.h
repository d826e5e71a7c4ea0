// SPDX-License-Identifier: MIT
#pragma once

#include "morl/ast/program.h"
#include "morl/compiler/pass_property.h"
#include "morl/compiler/shader_output.h"

#include <string_view>

namespace ns_ruke {

struct TargetSpellings;
class WrittenLines;

/// What a target spells in its own way, or null if no target has exactly this name.
const TargetSpellings* FindSpellings(std::string_view target);

/// Writes a linked program as the shader that a request asks for. The result is that of the
/// target's translator, but nothing can be overridden, which saves the virtual calls and their
/// strings.
/// @param lines notes where the lines come from; null: nobody asked for it.
void WriteRequest(const TargetSpellings& target, const PassProperty& pass, MorlProgram& program,
                  WrittenLines* lines, ShaderOutput& output);

}  // namespace ns_ruke
