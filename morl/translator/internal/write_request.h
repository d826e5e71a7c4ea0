// SPDX-License-Identifier: MIT
#pragma once

#include "morl/ast/program.h"
#include "morl/compiler/pass_property.h"
#include "morl/compiler/shader_output.h"

namespace ns_ruke {

struct TargetRecord;
class WrittenLines;

/// Writes a linked program as the shader that a request asks for. The result is that of the
/// target's translator, but nothing can be overridden, which saves the virtual calls and their
/// strings.
/// @param lines notes where the lines come from; null: nobody asked for it.
/// @return false if the text became longer than the request allows; the output is then unchanged.
[[nodiscard]] bool WriteRequest(const TargetRecord& target, const PassProperty& pass,
                                MorlProgram& program, WrittenLines* lines, ShaderOutput& output);

}  // namespace ns_ruke
