// SPDX-License-Identifier: MIT
#pragma once

namespace ns_ruke {

/// The stages that a program can be written for, as PassProperty::stage and MorlProgram::stage hold
/// them. Any other value is passed through and counts as neither.
constexpr int kVertexStage = 0;
constexpr int kFragmentStage = 1;

}  // namespace ns_ruke
