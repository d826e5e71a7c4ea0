// SPDX-License-Identifier: MIT
#include "morl/ast/internal/unit_memory.h"

#include <array>
#include <new>

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define MORL_PLAIN_UNITS
#endif
#endif
// MinGW's runtime frees a thread's own data before the destructors of that data have run.
#if defined(__SANITIZE_ADDRESS__) || defined(__MINGW32__)
#define MORL_PLAIN_UNITS
#endif

namespace ns_ruke {
namespace {

#ifdef MORL_PLAIN_UNITS
constexpr bool kKeepsUnits = false;
#else
constexpr bool kKeepsUnits = true;
#endif

/// Every unit begins with a pointer, so sizes are multiples of one. Larger units than these
/// (programs) are rare.
constexpr std::size_t kStep = sizeof(void*);
constexpr std::size_t kSizes = 33;

/// A thread that has this many bytes of one size keeps no more of it.
constexpr std::size_t kMostKept = std::size_t{64} * 1024;

/// A freed unit, as an element of a list.
struct KeptUnit {
    KeptUnit* next;
};

/// The freed units of one size, each still a separate allocation.
struct FreeList {
    KeptUnit* first = nullptr;
    std::size_t bytes = 0;
};

/// The freed units of one thread.
struct UnitMemory {
    std::array<FreeList, kSizes> lists;
    std::size_t limit = 0;  ///< bytes to keep per size
};

// These keep nothing, so threads can share them.
UnitMemory noneYet = {{}, 0};    ///< of a thread that has freed no unit
UnitMemory noneAgain = {{}, 0};  ///< of a thread that is ending, or that got no memory for lists

/// A pointer is all that a library loaded at run time needs of a thread's static storage.
thread_local UnitMemory* memory = &noneYet;

void Release(UnitMemory& units) noexcept
{
    for (FreeList& list : units.lists) {
        while (list.first != nullptr) {
            KeptUnit* unit = list.first;
            list.first = unit->next;
            ::operator delete(unit);
        }
        list.bytes = 0;
    }
}

/// Frees what a thread keeps when the thread ends.
struct MemoryGuard {
    MemoryGuard() = default;
    MemoryGuard(const MemoryGuard&) = delete;
    MemoryGuard& operator=(const MemoryGuard&) = delete;
    ~MemoryGuard()
    {
        UnitMemory* const units = memory;
        memory = &noneAgain;
        if (units != &noneAgain) {
            Release(*units);
            delete units;
        }
    }
};

/// Called when a thread frees its first unit.
void Open() noexcept
{
    memory = &noneAgain;
    if (auto* units = new (std::nothrow) UnitMemory{{}, kMostKept}) {
        thread_local const MemoryGuard guard;
        static_cast<void>(guard);
        memory = units;
    }
}

}  // namespace

void* TakeUnitMemory(std::size_t size)
{
    const std::size_t index = size / kStep;
    if (index >= kSizes || memory->lists[index].first == nullptr) {
        return ::operator new(size);
    }
    FreeList& list = memory->lists[index];
    KeptUnit* unit = list.first;
    list.first = unit->next;
    list.bytes -= size;
    return unit;
}

void FreeUnit(MorlUnit* unit) noexcept
{
    const std::size_t size = unit->size.bytes;
    if (size == 0 || !kKeepsUnits || size / kStep >= kSizes) {
        delete unit;
        return;
    }
    unit->~MorlUnit();
    FreeList& list = memory->lists[size / kStep];
    if (list.bytes >= memory->limit) {
        ::operator delete(unit);
        if (memory == &noneYet) {
            Open();
        }
        return;
    }
    list.first = ::new (unit) KeptUnit{list.first};
    list.bytes += size;
}

void MorlUnit::ReleaseMemory() noexcept
{
    if (memory != &noneYet && memory != &noneAgain) {
        Release(*memory);
    }
}

}  // namespace ns_ruke
