// SPDX-License-Identifier: MIT
#include "nodes/node_merge.h"

#include "nodes/line_merge.h"
#include "nodes/node_document.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <optional>
#include <set>
#include <tuple>
#include <utility>

namespace morlc {
namespace {

using ns_ruke::NodeSource;
using Nodes = std::map<std::string, NodeSource>;  ///< by name in their own list

Nodes ByName(const std::vector<NodeSource>& list)
{
    Nodes nodes;
    for (const NodeSource& node : list) {
        nodes.emplace(node.name, node);
    }
    return nodes;
}

/// The names that one side has given to nodes of the base, by their old names. Where several have
/// the same content, nobody knows which is which.
std::map<std::string, std::string> FindRenamed(const Nodes& base, const Nodes& side)
{
    std::multimap<std::string_view, std::string_view> gone;
    for (const auto& [name, node] : base) {
        if (side.count(name) == 0 && !node.content.empty()) {
            gone.emplace(node.content, name);
        }
    }
    std::multimap<std::string_view, std::string_view> come;
    for (const auto& [name, node] : side) {
        if (base.count(name) == 0) {
            come.emplace(node.content, name);
        }
    }
    std::map<std::string, std::string> renamed;
    for (const auto& [content, name] : gone) {
        if (gone.count(content) == 1 && come.count(content) == 1) {
            renamed.emplace(name, come.find(content)->second);
        }
    }
    return renamed;
}

/// Takes what one side has changed.
/// @param isConflict becomes true if both have, and not alike
template <class Value>
Value MergeValues(const Value& base, const Value& ours, const Value& theirs, bool& isConflict)
{
    isConflict = isConflict || (ours != base && theirs != base && ours != theirs);
    return ours != base ? ours : theirs;
}

/// What is left of two texts that nobody can merge.
std::string Marked(const std::string& ours, const std::string& theirs)
{
    return "<<<<<<< ours\n" + ours + "\n=======\n" + theirs + "\n>>>>>>> theirs\n";
}

/// git merges lines of text only.
MergedLines MergeContents(const std::string& base, const std::string& ours,
                          const std::string& theirs)
{
    const bool areText = (base + ours + theirs).find('\0') == std::string::npos;
    if (areText || ours == base || theirs == base || ours == theirs) {
        return MergeLines(base, ours, theirs);
    }
    return {Marked(ours, theirs), true};
}

using Names = std::vector<std::string>;

bool Has(const Names& names, const std::string& name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

/// What both lists have, in the order of the first.
Names InBoth(const Names& one, const Names& other)
{
    Names both;
    std::copy_if(one.begin(), one.end(), std::back_inserter(both),
                 [&](const std::string& name) { return Has(other, name); });
    return both;
}

bool AreInOneOrder(const Names& first, const Names& second)
{
    return InBoth(first, second) == InBoth(second, first);
}

/// Does to a list what an edit has done to another: names that it has removed go, those that it has
/// added stand behind the same name as there, and behind those that were added there already.
Names Repeated(Names names, const Names& before, const Names& after)
{
    const auto isRemoved = [&](const std::string& name) {
        return Has(before, name) && !Has(after, name);
    };
    auto place = names.begin();
    for (const std::string& name : after) {
        if (const auto found = std::find(names.begin(), names.end(), name); found != names.end()) {
            place = found + 1;
        } else if (!Has(before, name)) {
            place = std::find_if(place, names.end(),
                                 [&](const std::string& next) { return Has(before, next); });
            place = names.insert(place, name) + 1;
        }
    }
    names.erase(std::remove_if(names.begin(), names.end(), isRemoved), names.end());
    return names;
}

/// Both may add and remove names, and one may order them anew.
Names MergeReferences(const Names& base, const Names& ours, const Names& theirs, bool& isConflict)
{
    const bool isOrderOurs = AreInOneOrder(base, theirs) || AreInOneOrder(ours, theirs);
    if (isOrderOurs) {
        return Repeated(ours, base, theirs);
    }
    if (AreInOneOrder(base, ours)) {
        return Repeated(theirs, base, ours);
    }
    isConflict = true;
    return ours;
}

using Members = std::vector<std::pair<std::string, std::string>>;

Members MergeMembers(const NodeSource& base, const NodeSource& ours, const NodeSource& theirs,
                     bool& isConflict)
{
    using Map = std::map<std::string, std::string>;
    const auto valueIn = [](const Map& map, const std::string& name) {
        const auto found = map.find(name);
        return found != map.end() ? found->second : "";
    };
    const Map old(base.members.begin(), base.members.end());
    const Map one(ours.members.begin(), ours.members.end());
    const Map other(theirs.members.begin(), theirs.members.end());
    std::set<std::string> names;
    for (const Map* map : {&old, &one, &other}) {
        for (const auto& [name, json] : *map) {
            names.insert(name);
        }
    }
    Members merged;
    for (const std::string& name : names) {
        const std::string json =
            MergeValues(valueIn(old, name), valueIn(one, name), valueIn(other, name), isConflict);
        if (!json.empty()) {
            merged.emplace_back(name, json);
        }
    }
    return merged;
}

/// All of a source but its content.
std::string HeaderOf(NodeSource node)
{
    node.content.clear();
    node.hasName = false;
    std::string header = ns_ruke::WriteNodeSource(node);
    if (!header.empty()) {
        header.pop_back();
    }
    return header;
}

/// Merges one node.
/// @param isConflict becomes true if both sides have changed the same; the content then says so
/// @param isMovedTwice becomes true if both have moved it; a position is no work, so ours stays
NodeSource MergeNode(const NodeSource& base, const NodeSource& ours, const NodeSource& theirs,
                     bool& isConflict, bool& isMovedTwice)
{
    NodeSource merged;
    bool isHeaderConflict = false;
    merged.references =
        MergeReferences(base.references, ours.references, theirs.references, isHeaderConflict);
    std::tie(merged.x, merged.y) = MergeValues(std::pair(base.x, base.y), std::pair(ours.x, ours.y),
                                               std::pair(theirs.x, theirs.y), isMovedTwice);
    merged.members = MergeMembers(base, ours, theirs, isHeaderConflict);
    const MergedLines content = MergeContents(base.content, ours.content, theirs.content);
    // What a node's object says cannot hold marks, so the content holds them.
    merged.content =
        (isHeaderConflict ? Marked(HeaderOf(ours), HeaderOf(theirs)) : "") + content.text;
    isConflict = isConflict || isHeaderConflict || content.isConflict;
    return merged;
}

/// Merges lists of nodes.
class ListMerge {
public:
    ListMerge(const std::vector<NodeSource>& newBase, const std::vector<NodeSource>& newOurs,
              const std::vector<NodeSource>& newTheirs)
        : base(ByName(newBase)),
          ours(ByName(newOurs)),
          theirs(ByName(newTheirs)),
          ourNames(FindRenamed(base, ours)),
          theirNames(FindRenamed(base, theirs))
    {
    }

    MergedNodes Run()
    {
        for (const auto& [name, node] : base) {
            MergeOld(name, node, Take(ours, ourNames, name), Take(theirs, theirNames, name));
        }
        // What is left is new.
        for (const auto& [name, node] : ours) {
            Keep(name, node);
        }
        for (const auto& [name, node] : theirs) {
            Keep(name, node);
        }
        MergedNodes merged;
        for (auto& [name, node] : result) {
            node.hasName = true;
            node.name = name;
            FollowRenames(node.references);
        }
        for (auto& [name, node] : result) {
            merged.nodes.push_back(std::move(node));
        }
        for (const auto& [name, text] : conflicts) {
            merged.conflicts.push_back(text);
        }
        merged.moved.assign(moved.begin(), moved.end());
        return merged;
    }

private:
    /// Takes what a side has made of a node of the base; nothing if it has removed it.
    static std::optional<NodeSource> Take(Nodes& side,
                                          const std::map<std::string, std::string>& renamed,
                                          const std::string& name)
    {
        const auto other = renamed.find(name);
        const auto found = side.find(other != renamed.end() ? other->second : name);
        if (found == side.end()) {
            return std::nullopt;
        }
        NodeSource node = std::move(found->second);
        side.erase(found);
        return node;
    }

    void MergeOld(const std::string& name, const NodeSource& old,
                  const std::optional<NodeSource>& one, const std::optional<NodeSource>& other)
    {
        bool isConflict = false;
        if (one && other) {
            const std::string newName = MergeValues(name, one->name, other->name, isConflict);
            if (!isConflict) {
                NodeSource merged = MergeTwo(newName, old, *one, *other, isConflict);
                Keep(newName, std::move(merged), isConflict ? BothChanged(newName) : "");
                return;
            }
        }
        // Removed by one side, or renamed by both.
        const std::string twice = "node '" + name + "' has two new names";
        if (one && (other || one->name != name || !IsSameNode(*one, old))) {
            NodeSource left = *one;
            left.content = Marked(left.content, "");
            Keep(one->name, std::move(left),
                 other ? twice : "theirs has removed node '" + name + "', which ours has changed");
        }
        if (other && (one || other->name != name || !IsSameNode(*other, old))) {
            NodeSource left = *other;
            left.content = Marked("", left.content);
            Keep(other->name, std::move(left),
                 one ? twice : "ours has removed node '" + name + "', which theirs has changed");
        }
    }

    static std::string BothChanged(const std::string& name)
    {
        return "both have changed node '" + name + "'";
    }

    /// One side may refer anew to a node that the other has renamed.
    void FollowRenames(Names& references) const
    {
        for (const auto* renamed : {&ourNames, &theirNames}) {
            for (const auto& [old, name] : *renamed) {
                const auto found = std::find(references.begin(), references.end(), old);
                if (found == references.end() || result.count(old) > 0 || result.count(name) == 0) {
                    continue;
                }
                if (Has(references, name)) {
                    references.erase(found);
                } else {
                    *found = name;
                }
            }
        }
    }

    NodeSource MergeTwo(const std::string& name, const NodeSource& old, const NodeSource& one,
                        const NodeSource& other, bool& isConflict)
    {
        bool isMovedTwice = false;
        NodeSource merged = MergeNode(old, one, other, isConflict, isMovedTwice);
        if (isMovedTwice) {
            moved.insert(name);
        }
        return merged;
    }

    /// Keeps a node; two of one name are a conflict, unless they are alike.
    /// @param conflict what nobody can merge, in words; empty if it is merged
    void Keep(const std::string& name, NodeSource node, std::string conflict = {})
    {
        const auto found = result.find(name);
        if (found != result.end() && !IsSameNode(found->second, node)) {
            bool isConflict = false;
            node = MergeTwo(name, NodeSource(), found->second, node, isConflict);
            conflict = isConflict ? BothChanged(name) : conflict;
        }
        result[name] = std::move(node);
        if (!conflict.empty()) {
            conflicts[name] = std::move(conflict);
        }
    }

    Nodes base;
    Nodes ours;
    Nodes theirs;
    const std::map<std::string, std::string> ourNames;
    const std::map<std::string, std::string> theirNames;
    Nodes result;
    std::map<std::string, std::string> conflicts;  ///< in words, by the name of the node
    std::set<std::string> moved;
};

}  // namespace

MergedNodes MergeNodes(const std::vector<NodeSource>& base, const std::vector<NodeSource>& ours,
                       const std::vector<NodeSource>& theirs)
{
    return ListMerge(base, ours, theirs).Run();
}

}  // namespace morlc
