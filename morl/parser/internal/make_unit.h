// SPDX-License-Identifier: MIT
#pragma once

#include "morl/ast/internal/unit_memory.h"
#include "morl/parser/morl_parser.h"

#include <memory>

namespace ns_ruke {

/// Makes a unit of the tree that begins with the last token.
template <class Unit>
std::unique_ptr<Unit> MorlParser::Make()
{
    ++unitsMade;
    auto unit = MakeUnit<Unit>();
    unit->offset = tokenStart;
    return unit;
}

}  // namespace ns_ruke
