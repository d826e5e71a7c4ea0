// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

namespace ns_ruke {

/// What ends a request early, in addition to the bounds of limits.h. An editor that compiles with
/// every key stroke is well served by 200,000 units of work: most shaders take a hundredth of that.
struct RequestLimits {
    /// The most work in `#for` loops, in the units of kMaxLinkWork; 0: no limit. What loops do not
    /// repeat is linear in the sources, and does not count.
    std::size_t loopWork = 0;

    /// The most bytes of text; 0: no limit.
    std::size_t textBytes = 0;

    /// Any thread may set it to another value than 0, which ends the request. Asked before each
    /// node is parsed and at each iteration of a `#for`: what follows takes moments. Null: nobody
    /// can. Belongs to the host, and must outlive the request.
    const std::atomic<std::int32_t>* cancel = nullptr;

    bool IsCancelled() const
    {
        return cancel != nullptr && cancel->load(std::memory_order_relaxed) != 0;
    }
};

/// How a request has ended. Only a written one has changed its output.
enum class RequestEnd : std::uint8_t {
    Written,
    Refused,      ///< an unknown node or target
    TooMuchWork,  ///< RequestLimits::loopWork
    TooMuchText,  ///< RequestLimits::textBytes
    Cancelled,    ///< RequestLimits::cancel
};

}  // namespace ns_ruke
