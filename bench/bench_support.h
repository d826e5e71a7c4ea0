// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace morl_bench {

/// The four node-definition files, relative to the directory of the sample library, and their size.
std::vector<std::string> NodeFiles();
std::size_t FileBytes();

/// The bytes of source of all sample nodes.
std::size_t SourceBytes();

/// Compares requests and loading with what a user would otherwise run. Also counts the allocations
/// of requests and measures the memory of many parsed nodes. Prints the results.
void PrintComparison();

}  // namespace morl_bench
