// SPDX-License-Identifier: MIT
#pragma once

#include "morl/ast/unit.h"

#include <cstddef>
#include <memory>
#include <new>

namespace ns_ruke {

/// Memory for a unit of this size: that of a freed one, if the thread has kept one.
[[nodiscard]] void* TakeUnitMemory(std::size_t size);

/// Makes a unit whose memory is kept when it is freed. Constructors of units do not throw.
template <class Unit>
[[nodiscard]] std::unique_ptr<Unit> MakeUnit()
{
    std::unique_ptr<Unit> unit(::new (TakeUnitMemory(sizeof(Unit))) Unit);
    unit->size.bytes = sizeof(Unit);
    return unit;
}

/// Deletes a unit. Units are small and numerous and die together, so the memory of what MakeUnit
/// has made is kept: otherwise the allocator takes a third of a request's time. Every unit is an
/// separate allocation, so hosts can delete any of them.
void FreeUnit(MorlUnit* unit) noexcept;

inline void DeleteUnit(MorlUnit* unit) noexcept
{
    if (unit != nullptr) {
        FreeUnit(unit);
    }
}

}  // namespace ns_ruke
