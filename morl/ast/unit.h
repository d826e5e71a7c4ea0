// SPDX-License-Identifier: MIT
#pragma once

#include "morl/core/export.h"
#include "morl/parser/token.h"

#include <cstddef>
#include <cstdint>
#include <new>

namespace ns_ruke {

/// The base of every node of the syntax tree.
///
/// A parent owns its children: they are held by raw pointers and deleted by the parent's
/// destructor. Copying a node is shallow: the copy and its original share their children, so they
/// must never both be destroyed. Only MorlLinker makes deep copies. Nodes have no behaviour: code
/// that walks a tree reads `unitType` and casts.
struct MORL_API MorlUnit {
    ENUM_TOKEN unitType;  ///< the kind of the node; left unset by this constructor
    /// Where in the parsed text its first token begins, or the operator of an operation; in bytes.
    /// Copies keep it. See MorlNode::PlaceOf.
    std::uint32_t offset = 0;

    MorlUnit() = default;
    MorlUnit(const MorlUnit&) = default;
    MorlUnit& operator=(const MorlUnit&) = default;
    virtual ~MorlUnit();

    // Nodes are small and numerous and die together. Each thread keeps a bounded amount of freed
    // nodes for the next tree; otherwise the allocator takes a third of a request's time. Nodes of
    // over-aligned derived classes are not kept, and none are under the address sanitizer, so that
    // it sees every use of a freed node.
    static void* operator new(std::size_t size);
    static void* operator new(std::size_t size, const std::nothrow_t& tag) noexcept;
    static void* operator new(std::size_t size, std::align_val_t alignment);
    static void* operator new(std::size_t size, std::align_val_t alignment,
                              const std::nothrow_t& tag) noexcept;
    static void* operator new(std::size_t /*size*/, void* place) noexcept { return place; }
    static void operator delete(void* unit, std::size_t size) noexcept;
    static void operator delete(void* unit, const std::nothrow_t& tag) noexcept;
    static void operator delete(void* unit, std::size_t size, std::align_val_t alignment) noexcept;
    static void operator delete(void* unit, std::align_val_t alignment,
                                const std::nothrow_t& tag) noexcept;
    static void operator delete(void* /*unit*/, void* /*place*/) noexcept {}

    /// Frees the memory that the calling thread keeps for new nodes, about 1 MiB at most. A thread
    /// does this by itself when it ends.
    static void ReleaseMemory() noexcept;
};

}  // namespace ns_ruke
