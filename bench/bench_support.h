// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace morl_bench {

/// What the process has allocated with operator new. The benchmarks replace it to count.
struct Allocations {
    std::size_t calls = 0;
    std::size_t bytes = 0;

    static Allocations Now();

    Allocations operator-(const Allocations& earlier) const
    {
        return {calls - earlier.calls, bytes - earlier.bytes};
    }
};

/// The four node-definition files, relative to the directory of the sample library, and their size.
std::vector<std::string> NodeFiles();
std::size_t FileBytes();

/// The bytes of source of all sample nodes.
std::size_t SourceBytes();

/// Compares cold and warm requests for "glsl" with a compiler front end that parses their output,
/// and loading with the JSON reader alone. Also measures the allocations of requests and the memory
/// of many parsed nodes. Prints the results.
void PrintComparison();

}  // namespace morl_bench
