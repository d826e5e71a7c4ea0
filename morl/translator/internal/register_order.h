// SPDX-License-Identifier: MIT
#pragma once

#include "morl/ast/program.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace ns_ruke {

/// The rank of a declaration within its stage, so that the outputs of a vertex stage and the inputs
/// of a fragment stage are declared in the same order. Automatic texture coordinates come after the
/// ranked semantics; in the fragment stage they are ordered by their number in `inputSemantics`, to
/// which a missing name is added with an empty text. All other declarations get 999.
/// @param program tells the stage; only read for automatic texture coordinates.
int RegisterIndex(const MorlDeclare* declare, const MorlProgram* program,
                  std::unordered_map<std::string, std::string>& inputSemantics);

/// Sorts by RegisterIndex; declarations of the same index keep their order.
void SortByRegisterIndex(std::vector<MorlDeclare*>& declares, const MorlProgram* program,
                         std::unordered_map<std::string, std::string>& inputSemantics);

}  // namespace ns_ruke
