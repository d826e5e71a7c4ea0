// SPDX-License-Identifier: MIT
#include "morl/ast/unit.h"

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

/// Nodes are kept by size, in steps of 16 bytes up to 256. Larger ones (programs) are rare.
constexpr std::size_t kStep = 16;
constexpr std::size_t kSizes = 16;

/// A thread that has this many bytes of one size keeps no more of it.
constexpr std::size_t kMostKept = std::size_t{64} * 1024;

/// A freed node, as an element of a list.
struct FreeUnit {
    FreeUnit* next;
};

/// The freed nodes of one size, each still an allocation of its own.
struct FreeList {
    FreeUnit* first = nullptr;
    std::size_t bytes = 0;
};

/// The freed nodes of one thread. Plain data, so that accessing it needs no initialisation.
struct UnitMemory {
    std::array<FreeList, kSizes> lists;
    std::size_t limit = 0;  ///< bytes to keep per size; 0 before and after the life of the guard
    bool closed = false;    ///< the guard is gone
};

thread_local UnitMemory memory;

/// Frees what a thread keeps when the thread ends.
struct MemoryGuard {
    MemoryGuard() { memory.limit = kMostKept; }
    MemoryGuard(const MemoryGuard&) = delete;
    MemoryGuard& operator=(const MemoryGuard&) = delete;
    ~MemoryGuard()
    {
        memory.limit = 0;
        memory.closed = true;
        MorlUnit::ReleaseMemory();
    }
};

/// Creates the guard, when a thread frees its first node.
void Guard()
{
    thread_local const MemoryGuard guard;
    static_cast<void>(guard);
}

std::size_t ListOf(std::size_t size)
{
    return (size - 1) / kStep;
}

/// The size to allocate. If nodes are kept, it is rounded up so that the memory fits every node of
/// its list.
std::size_t RoundUp(std::size_t size)
{
    return kKeepsUnits ? (ListOf(size) + 1) * kStep : size;
}

/// The memory of a node that was freed before; null when there is none.
void* TakeKept(std::size_t size)
{
    const std::size_t index = ListOf(size);
    if (index >= kSizes || memory.lists[index].first == nullptr) {
        return nullptr;
    }
    FreeList& list = memory.lists[index];
    FreeUnit* unit = list.first;
    list.first = unit->next;
    list.bytes -= RoundUp(size);
    return unit;
}

}  // namespace

void* MorlUnit::operator new(std::size_t size)
{
    void* unit = TakeKept(size);
    return unit != nullptr ? unit : ::operator new(RoundUp(size));
}

void* MorlUnit::operator new(std::size_t size, const std::nothrow_t& tag) noexcept
{
    void* unit = TakeKept(size);
    return unit != nullptr ? unit : ::operator new(RoundUp(size), tag);
}

void* MorlUnit::operator new(std::size_t size, std::align_val_t alignment)
{
    return ::operator new(size, alignment);
}

void* MorlUnit::operator new(std::size_t size, std::align_val_t alignment,
                             const std::nothrow_t& tag) noexcept
{
    return ::operator new(size, alignment, tag);
}

void MorlUnit::operator delete(void* unit, std::size_t size) noexcept
{
    const std::size_t index = ListOf(size);
    if (!kKeepsUnits || index >= kSizes) {
        ::operator delete(unit);
        return;
    }
    FreeList& list = memory.lists[index];
    if (list.bytes >= memory.limit) {
        ::operator delete(unit);
        if (memory.limit == 0 && !memory.closed) {
            Guard();
        }
        return;
    }
    list.first = new (unit) FreeUnit{list.first};
    list.bytes += RoundUp(size);
}

// Called when a constructor throws inside a nothrow new expression; the size is unknown.
void MorlUnit::operator delete(void* unit, const std::nothrow_t& /*tag*/) noexcept
{
    ::operator delete(unit);
}

void MorlUnit::operator delete(void* unit, std::size_t /*size*/,
                               std::align_val_t alignment) noexcept
{
    ::operator delete(unit, alignment);
}

void MorlUnit::operator delete(void* unit, std::align_val_t alignment,
                               const std::nothrow_t& /*tag*/) noexcept
{
    ::operator delete(unit, alignment);
}

void MorlUnit::ReleaseMemory() noexcept
{
    for (FreeList& list : memory.lists) {
        while (list.first != nullptr) {
            FreeUnit* unit = list.first;
            list.first = unit->next;
            ::operator delete(unit);
        }
        list.bytes = 0;
    }
}

}  // namespace ns_ruke
