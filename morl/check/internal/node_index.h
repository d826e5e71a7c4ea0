// SPDX-License-Identifier: MIT
#pragma once

#include "morl/compiler/morl_node.h"

#include <set>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace ns_ruke {

/// Finds nodes by what they are called and by what they declare, for suggestions. A change costs
/// what the changed node costs, and only when the next suggestion is sought.
class NodeIndex {
public:
    using Nodes = std::unordered_map<std::string, MorlNode*>;

    /// @param nodes all that there are, here and below
    explicit NodeIndex(const Nodes& nodes);

    /// The node has been added, or has changed.
    void Change(const std::string& name) { changed.insert(name); }
    void Remove(const std::string& name) { changed.insert(name); }

    /// The name of a node that is most like `wanted`; empty if none is similar.
    std::string NearestNode(const Nodes& nodes, const std::string& wanted);

    /// The first node in ascending order that declares a name and can take part in the stage.
    /// @param excluded names of nodes
    std::string FindDeclaring(const Nodes& nodes, const std::string& name, int stage,
                              const std::vector<std::string>& excluded);

private:
    void Update(const Nodes& nodes);
    void Forget(const std::string& node);
    void Add(const std::string& name, const MorlNode& node);

    using Pairs = std::set<std::pair<std::string, std::string>>;

    std::unordered_set<std::string> changed;                 ///< names of nodes
    std::set<std::pair<std::size_t, std::string>> byLength;  ///< names of nodes
    Pairs declaring;                                         ///< a declared name, then its node
    Pairs declared;                                          ///< a node, then a name it declares
};

}  // namespace ns_ruke
