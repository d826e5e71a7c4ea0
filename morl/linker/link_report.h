// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <vector>

namespace ns_ruke {

class MorlNode;

/// Which node the elements of a linked program are from: those before these numbers, and not before
/// those of the node merged earlier.
struct LinkOrigin {
    const MorlNode* node;
    std::size_t inputs;
    std::size_t outputs;
    std::size_t uniforms;
    std::size_t sentences;
};

/// What a linker notes for the report of a request.
struct LinkReport {
    std::vector<LinkOrigin> origins;   ///< in the order in which the nodes were merged
    std::set<std::string> usedMacros;  ///< those that conditions and loops have asked for
};

}  // namespace ns_ruke
