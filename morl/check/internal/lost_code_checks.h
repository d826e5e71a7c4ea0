// SPDX-License-Identifier: MIT
#pragma once

#include "morl/check/internal/warning_list.h"

namespace ns_ruke {

/// Finds what a node loses on its way into a shader.
/// @param index of the node in the link's list
void CheckLostCode(const MorlNode& node, int index, WarningList& warnings);

}  // namespace ns_ruke
