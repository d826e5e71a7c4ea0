// SPDX-License-Identifier: MIT
#include "morl/ast/ownership.h"
#include "morl/core/graphics_log.h"
#include "morl/core/limits.h"
#include "morl/linker/morl_linker.h"

#include <memory>

namespace ns_ruke {

// The first declaration of a name wins. The offered name is compared before substitution, with
// names after substitution: inside a `#for` every copy is added, however often the group is
// offered.
void MorlLinker::MergeDeclare(std::vector<MorlDeclare*>& declares, MorlDeclare* declare,
                              bool reportConflict)
{
    work += kVisitWork;
    if (!declareIndex.Contains(declares, declare->name)) {
        work += kMergeWork;
        AppendOwned(declares, std::unique_ptr<MorlDeclare>(CopyDeclare(declare)));
    } else if (reportConflict) {
        LogGraphicsError("MorlLinker: declare " + declare->name + " conflicts!");
    }
}

}  // namespace ns_ruke
