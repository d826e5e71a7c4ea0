// SPDX-License-Identifier: MIT
#pragma once

#include "morl/core/export.h"
#include "morl/parser/token.h"

#include <cstddef>
#include <new>

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

    // Nodes are small, many, and die together. Each thread keeps a bounded number of freed ones for
    // the next tree, as otherwise a third of a request's time goes to the allocator. Not so under
    // the address sanitizer, which then sees every use of a freed node; and not those of a derived
    // class that is over-aligned.
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

    /// Gives the memory back that the calling thread keeps for further nodes: at most 1 MiB. A
    /// thread that ends does so by itself.
    static void ReleaseMemory() noexcept;
};

}  // namespace ns_ruke
