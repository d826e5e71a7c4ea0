// SPDX-License-Identifier: MIT
#include "morl/ast/functions.h"

#include "morl/ast/internal/ownership.h"

namespace ns_ruke {

MorlFunction::~MorlFunction()
{
    DeleteElements(parameters);
    DeleteElements(sentences);
}

MorlMarcoIfFunction::~MorlMarcoIfFunction()
{
    DeleteElements(functions);
    DeleteElements(elseFunctions);
}

MorlMarcoForFunction::~MorlMarcoForFunction()
{
    DeleteElements(functions);
}

}  // namespace ns_ruke
