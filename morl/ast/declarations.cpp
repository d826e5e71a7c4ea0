// SPDX-License-Identifier: MIT
#include "morl/ast/declarations.h"

#include "morl/ast/internal/ownership.h"

namespace ns_ruke {

MorlDeclare::~MorlDeclare()
{
    DeleteUnit(arraySize);
    DeleteUnit(registerBinding);
}

MorlMarcoIfDeclare::~MorlMarcoIfDeclare()
{
    if (condition != sharedCondition.get()) {
        DeleteUnit(condition);
    }
    DeleteElements(declares);
    DeleteElements(elseDeclares);
}

MorlMarcoForDeclare::~MorlMarcoForDeclare()
{
    DeleteElements(declares);
}

}  // namespace ns_ruke
