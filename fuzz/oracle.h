// SPDX-License-Identifier: MIT
#pragma once

#include <morl/morl.h>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <unordered_map>

namespace morl_fuzz {

/// Ends the process, so that the fuzzer keeps the input.
[[noreturn]] inline void Fail(const std::string& reason)
{
    std::fprintf(stderr, "oracle: %s\n", reason.c_str());
    std::abort();
}

/// Checks every error of a source as it is logged: its location lies in the text or just past its
/// end.
class LocationOracle {
public:
    /// @param sources by node name; must outlive the oracle.
    explicit LocationOracle(const std::unordered_map<std::string, std::string>& nodeSources)
        : sources(nodeSources)
    {
        previous = ns_ruke::TamberLogSystem::SetSink(
            [this](ns_ruke::LogLevel level, const std::string& /*category*/,
                   const std::string& message) { Check(ns_ruke::LogLine(level, message)); });
    }
    LocationOracle(const LocationOracle&) = delete;
    LocationOracle& operator=(const LocationOracle&) = delete;
    ~LocationOracle() { ns_ruke::TamberLogSystem::SetSink(previous); }

private:
    void Check(const ns_ruke::LogLine& log) const
    {
        const auto source = sources.find(log.node);
        if (log.line == 0 || source == sources.end()) {
            return;
        }
        const std::string& text = source->second;
        std::size_t start = 0;
        for (int line = 1; line < log.line; ++line) {
            start = text.find('\n', start);
            if (start == std::string::npos) {
                Fail("a line past the end: " + std::to_string(log.line));
            }
            ++start;
        }
        const std::size_t length = std::min(text.find('\n', start), text.size()) - start;
        if (log.column < 1 || static_cast<std::size_t>(log.column) > length + 1) {
            Fail("a column past the end of line " + std::to_string(log.line));
        }
    }

    const std::unordered_map<std::string, std::string>& sources;
    ns_ruke::LogSink previous;
};

}  // namespace morl_fuzz
