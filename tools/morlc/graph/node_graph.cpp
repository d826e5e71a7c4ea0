// SPDX-License-Identifier: MIT
#include "graph/node_graph.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace morlc {
namespace {

/// Finds the strongly connected components of a graph. Works without recursion, as chains of
/// references may be of any length.
class Components {
public:
    Components(std::size_t nodeCount, const std::vector<GraphEdge>& edges)
        : successors(nodeCount), predecessors(nodeCount), component(nodeCount, kNone)
    {
        for (const GraphEdge& edge : edges) {
            successors[edge.from].push_back(edge.to);
            predecessors[edge.to].push_back(edge.from);
        }
        // Kosaraju's algorithm: taking the nodes in the reverse order of finishing yields the
        // components of the reversed graph one after the other.
        const std::vector<std::size_t> order = FinishOrder();
        for (auto node = order.rbegin(); node != order.rend(); ++node) {
            if (component[*node] == kNone) {
                Fill(*node);
            }
        }
    }

    std::size_t Of(std::size_t node) const { return component[node]; }

private:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);
    using Lists = std::vector<std::vector<std::size_t>>;

    std::vector<std::size_t> FinishOrder() const
    {
        std::vector<std::size_t> order;
        std::vector<bool> entered(successors.size());
        for (std::size_t root = 0; root < successors.size(); ++root) {
            // Pairs of a node and how many of its successors have been looked at.
            std::vector<std::pair<std::size_t, std::size_t>> path;
            if (!entered[root]) {
                entered[root] = true;
                path.emplace_back(root, 0);
            }
            while (!path.empty()) {
                auto& [node, next] = path.back();
                if (next == successors[node].size()) {
                    order.push_back(node);
                    path.pop_back();
                    continue;
                }
                const std::size_t successor = successors[node][next++];
                if (!entered[successor]) {
                    entered[successor] = true;
                    path.emplace_back(successor, 0);
                }
            }
        }
        return order;
    }

    void Fill(std::size_t root)
    {
        std::vector<std::size_t> open = {root};
        component[root] = root;
        while (!open.empty()) {
            const std::size_t node = open.back();
            open.pop_back();
            for (const std::size_t predecessor : predecessors[node]) {
                if (component[predecessor] == kNone) {
                    component[predecessor] = root;
                    open.push_back(predecessor);
                }
            }
        }
    }

    Lists successors;
    Lists predecessors;
    std::vector<std::size_t> component;
};

/// Clamp wild coordinates, and replace NaN and infinity, so that one node cannot ruin the picture.
double OnCanvas(float position)
{
    constexpr double kMaxExtent = 20000;
    const auto value = static_cast<double>(position);
    return std::isfinite(value) ? std::clamp(value, -kMaxExtent, kMaxExtent) : 0.0;
}

}  // namespace

NodeGraph::NodeGraph(const ns_ruke::MorlCompiler& compiler, const NodeOrigins& origins)
{
    for (const std::string& name : compiler.GetNodeNames()) {
        const ns_ruke::MorlNode* const node = compiler.FindNode(name);
        GraphNode drawn;
        drawn.name = name;
        drawn.file = origins.NodeFileOf(name);
        drawn.x = OnCanvas(node->GetX());
        drawn.y = OnCanvas(node->GetY());
        nodes.push_back(drawn);
    }
    AddEdges(compiler);
    MarkCycles();
}

std::vector<std::string> NodeGraph::Files() const
{
    std::set<std::string> files;
    for (const GraphNode& node : nodes) {
        files.insert(node.file);
    }
    return {files.begin(), files.end()};
}

void NodeGraph::AddEdges(const ns_ruke::MorlCompiler& compiler)
{
    std::unordered_map<std::string, std::size_t> places;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        places[nodes[i].name] = i;
    }
    const std::size_t count = nodes.size();
    for (std::size_t i = 0; i < count; ++i) {
        std::set<std::string> seen;
        for (const std::string& reference : compiler.FindNode(nodes[i].name)->GetReference()) {
            if (!seen.insert(reference).second) {
                continue;
            }
            const auto place = places.find(reference);
            if (place == places.end()) {
                AddMissing(i, reference);
            } else {
                edges.push_back({i, place->second});
            }
        }
    }
}

// A missing node is drawn to the left of the node that refers to it, where the real one would
// usually be.
void NodeGraph::AddMissing(std::size_t from, const std::string& name)
{
    GraphNode missing = nodes[from];
    missing.name = name;
    missing.x -= 240;
    missing.y += 60;
    missing.isMissing = true;
    edges.push_back({from, nodes.size(), true});
    nodes.push_back(missing);
}

void NodeGraph::MarkCycles()
{
    const Components components(nodes.size(), edges);
    for (GraphEdge& edge : edges) {
        edge.isInCycle = components.Of(edge.from) == components.Of(edge.to);
        if (edge.isInCycle) {
            nodes[edge.from].isInCycle = true;
            nodes[edge.to].isInCycle = true;
        }
    }
}

}  // namespace morlc
