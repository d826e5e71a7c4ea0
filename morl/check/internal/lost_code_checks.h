// SPDX-License-Identifier: MIT
#pragma once

#include "morl/check/internal/warning_list.h"

#include <string>
#include <unordered_map>

namespace ns_ruke {

/// Finds what a node loses on its way into a shader.
/// @param index of the node in the link's list
/// @param macros those of the request
void CheckLostCode(const MorlNode& node, int index,
                   const std::unordered_map<std::string, int>& macros, WarningList& warnings);

}  // namespace ns_ruke
