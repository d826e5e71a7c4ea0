// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstddef>
#include <mutex>
#include <string>

namespace morlc {

/// A line on a terminal that is rewritten in place, and erased at the end. Shown only on a
/// terminal. Several threads may advance it.
class Progress {
public:
    /// @param newUnit what is counted, such as "variants"
    Progress(std::size_t newTotal, std::string newUnit, bool quiet);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress();

    void Advance(std::size_t count);

private:
    void Clear();

    std::mutex mutex;
    std::size_t total;
    std::string unit;
    bool isShown;
    std::size_t done = 0;
    std::chrono::steady_clock::time_point last;  ///< when it was shown; unset if it is not visible
};

}  // namespace morlc
