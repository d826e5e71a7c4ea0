// SPDX-License-Identifier: MIT
#pragma once

#include "morl/core/export.h"
#include "morl/parser/token.h"

namespace ns_ruke {

/// The base of every node of the syntax tree.
///
/// A parent owns its children: they are held by raw pointers and deleted by the parent's
/// destructor. Copying a node is shallow, so that a copy and its original share their children and
/// must never both be destroyed; deep copies are made by MorlLinker alone. The nodes carry no
/// behaviour: code that walks a tree reads `unitType` and casts.
struct MORL_API MorlUnit {
    ENUM_TOKEN unitType;  ///< the kind of the node; left unset by this constructor

    MorlUnit() = default;
    MorlUnit(const MorlUnit&) = default;
    MorlUnit& operator=(const MorlUnit&) = default;
    virtual ~MorlUnit();
};

}  // namespace ns_ruke
