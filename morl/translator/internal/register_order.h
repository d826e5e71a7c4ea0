// SPDX-License-Identifier: MIT
#pragma once

#include "morl/ast/program.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace ns_ruke {

/// Where a declaration stands among those of its stage, so that the outputs of a vertex stage and
/// the inputs of a fragment stage are declared in one order. Automatic texture coordinates follow
/// the fixed semantics; in the fragment stage by their number in `inputSemantics`, where a name
/// that is absent is entered with an empty text. What has no place gets 999.
/// @param program tells the stage; only read for automatic texture coordinates.
int RegisterIndex(const MorlDeclare* declare, const MorlProgram* program,
                  std::unordered_map<std::string, std::string>& inputSemantics);

/// Sorts by RegisterIndex; declarations of the same index keep their order.
void SortByRegisterIndex(std::vector<MorlDeclare*>& declares, const MorlProgram* program,
                         std::unordered_map<std::string, std::string>& inputSemantics);

}  // namespace ns_ruke
