// SPDX-License-Identifier: MIT
#pragma once

#include "morl/ast/declarations.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace ns_ruke {

/// Where a declaration stands among those of its stage, so that the outputs of a vertex stage and
/// the inputs of a fragment stage are declared in one order. Automatic texture coordinates follow
/// the fixed semantics; in the fragment stage by their number in `inputSemantics`, where a name
/// that is absent is entered with an empty text. What has no place gets 999.
int RegisterIndex(const MorlDeclare* declare, int stage,
                  std::unordered_map<std::string, std::string>& inputSemantics);

/// Sorts by RegisterIndex; declarations of the same index keep their order.
void SortByRegisterIndex(std::vector<MorlDeclare*>& declares, int stage,
                         std::unordered_map<std::string, std::string>& inputSemantics);

}  // namespace ns_ruke
