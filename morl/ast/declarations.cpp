// SPDX-License-Identifier: MIT
#include "morl/ast/declarations.h"

#include "morl/ast/internal/ownership.h"

namespace ns_ruke {

MorlRegister::~MorlRegister() = default;

MorlDeclare::~MorlDeclare()
{
    delete arraySize;
    delete registerBinding;
}

MorlMarcoIfDeclare::~MorlMarcoIfDeclare()
{
    delete condition;
    DeleteElements(declares);
    DeleteElements(elseDeclares);
}

MorlMarcoForDeclare::~MorlMarcoForDeclare()
{
    DeleteElements(declares);
}

}  // namespace ns_ruke
