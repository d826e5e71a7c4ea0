// SPDX-License-Identifier: MIT
#include "progress.h"

#include "platform.h"

#include <cstdio>
#include <utility>

namespace morlc {

using Clock = std::chrono::steady_clock;

Progress::Progress(std::size_t newTotal, std::string newUnit, bool quiet)
    : total(newTotal), unit(std::move(newUnit)), isShown(!quiet && HasTerminal())
{
}

Progress::~Progress()
{
    Clear();
}

void Progress::Advance(std::size_t count)
{
    constexpr std::chrono::milliseconds kInterval(50);
    const std::lock_guard<std::mutex> lock(mutex);
    done += count;
    const Clock::time_point now = Clock::now();
    if (done == total) {
        Clear();
    } else if (isShown && now - last >= kInterval) {
        last = now;
        std::fprintf(stderr, "\r[%zu/%zu] %s", done, total, unit.c_str());
        std::fflush(stderr);
    }
}

void Progress::Clear()
{
    if (isShown && last != Clock::time_point()) {
        std::fputs("\r\x1b[K", stderr);
        last = Clock::time_point();
    }
}

}  // namespace morlc
