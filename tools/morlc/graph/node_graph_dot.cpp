// SPDX-License-Identifier: MIT
#include "graph/node_graph.h"
#include "text.h"

#include <algorithm>

namespace morlc {
namespace {

std::string Quoted(const std::string& text)
{
    std::string quoted = "\"";
    for (const char c : Printable(ValidUtf8(text))) {
        if (c == '"' || c == '\\') {
            quoted += '\\';
        }
        quoted += c;
    }
    return quoted + "\"";
}

/// Each panel is below the previous one; y coordinates in Graphviz point upwards.
std::string Position(const GraphNode& node, double top)
{
    return std::to_string(static_cast<long>(node.x)) + "," +
           std::to_string(static_cast<long>(-node.y - top));
}

}  // namespace

std::string NodeGraph::FormatDot() const
{
    std::string text =
        "digraph morl {\n"
        "  node [shape=box, style=\"rounded,filled\", fillcolor=white, fontname=sans];\n"
        "  edge [color=gray40];\n";
    double top = 0;
    const std::vector<std::string> files = Files();
    for (std::size_t panel = 0; panel < files.size(); ++panel) {
        text += "  subgraph cluster_" + std::to_string(panel) +
                " {\n    label=" + Quoted(files[panel]) + ";\n";
        double bottom = 0;
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            const GraphNode& node = nodes[i];
            if (node.file != files[panel]) {
                continue;
            }
            bottom = std::max(bottom, node.y);
            text += "    n" + std::to_string(i) + " [label=" + Quoted(node.name) + ", pos=\"" +
                    Position(node, top) + "\"";
            text += node.isMissing   ? ", color=red, fontcolor=red, style=\"rounded,dashed\""
                    : node.isInCycle ? ", color=red, penwidth=2"
                                     : "";
            text += "];\n";
        }
        text += "  }\n";
        top += bottom + 200;
    }
    for (const GraphEdge& edge : edges) {
        text += "  n" + std::to_string(edge.from) + " -> n" + std::to_string(edge.to);
        text += edge.isBroken    ? " [color=red, style=dashed]"
                : edge.isInCycle ? " [color=red, penwidth=2]"
                                 : "";
        text += ";\n";
    }
    return text + "}\n";
}

}  // namespace morlc
