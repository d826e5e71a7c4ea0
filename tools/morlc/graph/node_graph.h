// SPDX-License-Identifier: MIT
#pragma once

#include "nodes/node_origins.h"

#include <morl/morl.h>
#include <cstddef>
#include <string>
#include <vector>

namespace morlc {

/// A node of the picture.
struct GraphNode {
    std::string name;
    std::string file;  ///< the node file that it belongs to
    double x = 0;      ///< where the author put it on the canvas of its file, in the canvas's units
    double y = 0;
    bool isMissing = false;  ///< it is referred to, but there is no such node
    bool isInCycle = false;
};

/// A reference, from the node that makes it.
struct GraphEdge {
    std::size_t from = 0;
    std::size_t to = 0;
    bool isBroken = false;   ///< `to` is missing
    bool isInCycle = false;  ///< it is part of a cycle of references
};

/// The nodes and their references. Each file has its own canvas.
struct NodeGraph {
    std::vector<GraphNode> nodes;  ///< in ascending order of the names; missing ones at the end
    std::vector<GraphEdge> edges;

    NodeGraph(const ns_ruke::MorlCompiler& compiler, const NodeOrigins& origins);

    /// The files, in ascending order.
    std::vector<std::string> Files() const;

    /// For the tools of Graphviz: a panel per file, boxes for the nodes at their own places (in
    /// points, as "neato -n2" reads them), arrows from each node to those that it refers to. Broken
    /// references and cycles are red.
    std::string FormatDot() const;

private:
    void AddEdges(const ns_ruke::MorlCompiler& compiler);
    void AddMissing(std::size_t from, const std::string& name);
    void MarkCycles();
};

}  // namespace morlc
