// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <functional>

namespace morlc {

/// How many threads to use.
/// @param jobs what the user wants; 0: one per processor
/// @param work how many pieces of work there are
std::size_t ThreadCount(std::size_t jobs, std::size_t work);

/// Runs `body` for the numbers from 0 to `count`, in their order for each thread. The calling
/// thread is thread 0.
/// @throws what a body throws first; the others end with the piece that they are at
void RunParallel(std::size_t threads, std::size_t count,
                 const std::function<void(std::size_t thread, std::size_t index)>& body);

}  // namespace morlc
