// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace ns_ruke {

class MorlNode;
struct MorlDeclare;

/// Where one node's elements end in each list of a linked program.
struct LinkOrigin {
    const MorlNode* node;
    std::size_t inputs;
    std::size_t outputs;
    std::size_t uniforms;
    std::size_t sentences;
};

/// A place in the source of a node.
struct LinkPlace {
    int node;              ///< its index in LinkReport::origins
    std::uint32_t offset;  ///< in bytes
};

/// A declaration that does not count, because an earlier one has the same name.
struct LinkRepetition {
    const MorlDeclare* declare;
    int node;  ///< its index in LinkReport::origins
};

/// What a linker notes for the report of a request.
struct LinkReport {
    std::vector<LinkOrigin> origins;  ///< in the order in which the nodes were merged
    /// The macros that conditions and loops have asked for, with the place of the first one.
    std::map<std::string, LinkPlace> usedMacros;
    std::vector<LinkRepetition> repetitions;
};

}  // namespace ns_ruke
