// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace morl_test {

// Linking support/allocation.cpp into a test replaces the global operator new, also for the
// library.

/// What was allocated since the last Reset. Counts all threads.
struct AllocationCounts {
    std::size_t calls = 0;  ///< how often operator new was called
    std::size_t live = 0;   ///< how many of these objects still live
    std::size_t bytes = 0;  ///< how many bytes these objects hold
    std::size_t peak = 0;   ///< the most bytes that they held at one time
};

/// Starts a new measurement. Older objects are not counted, not even when they are freed.
void ResetAllocations();

AllocationCounts Allocations();

/// Makes the n-th allocation from now on (counting from 1; 0: none) throw std::bad_alloc. Returns
/// whether the failure that was requested before has happened.
bool FailAllocation(std::size_t n);

}  // namespace morl_test
