// SPDX-License-Identifier: MIT
#pragma once

#include "morl/check/internal/warning_list.h"

#include <string>
#include <string_view>
#include <unordered_map>

namespace ns_ruke {

/// A statement that begins with this name, and of which the parser of the node made nothing; null
/// if there is none.
const MorlLostCode* FindDropped(const MorlNode& node, std::string_view name);

/// Finds what a node loses on its way into a shader.
/// @param index of the node in the link's list
/// @param macros those of the request
void CheckLostCode(const MorlNode& node, int index,
                   const std::unordered_map<std::string, int>& macros, WarningList& warnings);

}  // namespace ns_ruke
