// SPDX-License-Identifier: MIT
#include "parallel.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace morlc {
namespace {

/// Joins its threads when it is destroyed.
struct Threads {
    Threads() = default;
    Threads(const Threads&) = delete;
    Threads& operator=(const Threads&) = delete;
    ~Threads()
    {
        for (std::thread& thread : list) {
            thread.join();
        }
    }

    std::vector<std::thread> list;
};

}  // namespace

std::size_t ThreadCount(std::size_t jobs, std::size_t work)
{
    const std::size_t wanted = jobs > 0 ? jobs : std::max(std::thread::hardware_concurrency(), 1U);
    return std::clamp<std::size_t>(work, 1, wanted);
}

void RunParallel(std::size_t threads, std::size_t count,
                 const std::function<void(std::size_t thread, std::size_t index)>& body)
{
    std::atomic<std::size_t> next{0};
    std::mutex mutex;
    std::exception_ptr failure;
    const auto work = [&](std::size_t thread) {
        try {
            for (std::size_t i = next++; i < count; i = next++) {
                body(thread, i);
            }
        } catch (...) {
            const std::lock_guard<std::mutex> lock(mutex);
            failure = failure ? failure : std::current_exception();
            next = count;
        }
    };
    {
        Threads others;
        for (std::size_t thread = 1; thread < threads; ++thread) {
            others.list.emplace_back(work, thread);
        }
        work(0);
    }
    if (failure) {
        std::rethrow_exception(failure);
    }
}

}  // namespace morlc
