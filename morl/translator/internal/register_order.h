// SPDX-License-Identifier: MIT
#pragma once

#include "morl/translator/internal/answers.h"

#include <string_view>

namespace ns_ruke {

/// The number in an automatic texture coordinate, such as 2 of "TEXCOORD2"; -1: there is none.
int TexcoordNumber(std::string_view semantic);

/// The rank of a declaration within its stage, so that the outputs of a vertex stage and the inputs
/// of a fragment stage are declared in the same order. The stage is only read for automatic texture
/// coordinates; only those of the fragment stage have numbers. Everything else gets 999.
int RegisterIndex(const Answers& answers, const MorlDeclare* declare);

/// The declarations in the order of their register indexes; those of equal rank keep their order.
Declares InRegisterOrder(const Answers& answers, const Declares& declares);

/// The same in one stage; in others the declarations as they are.
/// @param sorted room for the result
inline const Declares& OrderedIn(int stage, const Answers& answers, const Declares& declares,
                                 Declares& sorted)
{
    if (answers.Stage() != stage) {
        return declares;
    }
    sorted = InRegisterOrder(answers, declares);
    return sorted;
}

}  // namespace ns_ruke
