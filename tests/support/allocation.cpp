// SPDX-License-Identifier: MIT
#include "support/allocation.h"

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <mutex>
#include <new>

namespace {

/// Stands before every object and keeps its alignment.
struct alignas(std::max_align_t) Header {
    std::size_t size;
    std::size_t measurement;  ///< the measurement in which the object was made
};

std::mutex mutex;
morl_test::AllocationCounts counts;
std::size_t measurement = 0;
std::size_t failAfter = 0;
bool hasFailed = false;

void* Allocate(std::size_t size)
{
    const std::lock_guard<std::mutex> lock(mutex);
    if (failAfter > 0 && --failAfter == 0) {
        hasFailed = true;
        return nullptr;
    }
    auto* header = static_cast<Header*>(std::malloc(sizeof(Header) + size));
    if (header == nullptr) {
        return nullptr;
    }
    header->size = size;
    header->measurement = measurement;
    ++counts.calls;
    ++counts.live;
    counts.bytes += size;
    counts.peak = counts.bytes > counts.peak ? counts.bytes : counts.peak;
    return header + 1;
}

void Free(void* object)
{
    if (object == nullptr) {
        return;
    }
    Header* header = static_cast<Header*>(object) - 1;
    const std::lock_guard<std::mutex> lock(mutex);
    if (header->measurement == measurement) {
        --counts.live;
        counts.bytes -= header->size;
    }
    std::free(header);
}

}  // namespace

namespace morl_test {

void ResetAllocations()
{
    const std::lock_guard<std::mutex> lock(mutex);
    counts = {};
    ++measurement;
}

AllocationCounts Allocations()
{
    const std::lock_guard<std::mutex> lock(mutex);
    return counts;
}

bool FailAllocation(std::size_t n)
{
    const std::lock_guard<std::mutex> lock(mutex);
    const bool failed = hasFailed;
    failAfter = n;
    hasFailed = false;
    return failed;
}

}  // namespace morl_test

void* operator new(std::size_t size)
{
    if (void* object = Allocate(size)) {
        return object;
    }
    throw std::bad_alloc();
}

void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept
{
    return Allocate(size);
}

void operator delete(void* object) noexcept
{
    Free(object);
}

void operator delete(void* object, std::size_t /*size*/) noexcept
{
    Free(object);
}

void operator delete(void* object, const std::nothrow_t& /*tag*/) noexcept
{
    Free(object);
}
