// SPDX-License-Identifier: MIT
#pragma once

#include "morl/core/export.h"
#include "morl/parser/token.h"

#include <cstdint>
// MinGW's g++ must know std::type_info before it exports the first class: otherwise it also exports
// the type information of the standard library's classes.
#include <typeinfo>

namespace ns_ruke {

/// The size of a unit that the parser or the linker has made, in bytes; 0 for units that hosts
/// make. When the library frees such a unit, the thread keeps its memory for the next tree. A copy
/// of a unit is the host's own, so this is not copied.
struct MorlUnitSize {
    MorlUnitSize() = default;
    MorlUnitSize(const MorlUnitSize& /*other*/) noexcept {}
    MorlUnitSize& operator=(const MorlUnitSize& /*other*/) noexcept { return *this; }

    std::uint16_t bytes = 0;
};

/// The base of every node of the syntax tree.
///
/// A parent owns its children: they are held by raw pointers and deleted by the parent's
/// destructor. Copying a node is shallow: the copy and its original share their children, so they
/// must never both be destroyed. Only MorlLinker makes deep copies. Nodes have no behaviour: code
/// that walks a tree reads `unitType` and casts.
// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init)
struct MORL_API MorlUnit {
    ENUM_TOKEN unitType;  ///< the kind of the node; left unset by this constructor
    /// Where in the parsed text its first token begins, or the operator of an operation; in bytes.
    /// Copies keep it. See MorlNode::PlaceOf.
    std::uint32_t offset = 0;
    MorlUnitSize size;

    MorlUnit() = default;  // NOLINT(cppcoreguidelines-pro-type-member-init)
    MorlUnit(const MorlUnit&) = default;
    MorlUnit& operator=(const MorlUnit&) = default;
    virtual ~MorlUnit();

    /// Frees the memory that the calling thread keeps for new units, about 1 MiB at most. A thread
    /// does this by itself when it ends.
    static void ReleaseMemory() noexcept;
};

}  // namespace ns_ruke
