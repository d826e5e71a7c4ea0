// SPDX-License-Identifier: MIT
#include "nodes/node_merge.h"

#include "json_file.h"
#include "nodes/line_merge.h"
#include "nodes/node_document.h"

#include <map>
#include <optional>
#include <set>
#include <sstream>
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

/// Names as lines, none of which holds a line break.
std::string Lines(const std::vector<std::string>& names)
{
    std::string lines;
    for (const std::string& name : names) {
        lines += FormatJsonLine(name) + "\n";
    }
    return lines;
}

std::vector<std::string> Split(const std::string& lines)
{
    std::vector<std::string> names;
    std::istringstream stream(lines);
    for (std::string line; std::getline(stream, line);) {
        if (!line.empty()) {
            names.push_back(ParseJson(line).asString());
        }
    }
    return names;
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

std::vector<std::string> MergeReferences(const NodeSource& base, const NodeSource& ours,
                                         const NodeSource& theirs, bool& isConflict)
{
    const MergedLines merged =
        MergeLines(Lines(base.references), Lines(ours.references), Lines(theirs.references));
    if (!merged.isConflict) {
        return Split(merged.text);
    }
    isConflict = true;
    return ours.references;
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
NodeSource MergeNode(const NodeSource& base, const NodeSource& ours, const NodeSource& theirs,
                     bool& isConflict)
{
    NodeSource merged;
    bool isHeaderConflict = false;
    merged.references = MergeReferences(base, ours, theirs, isHeaderConflict);
    std::tie(merged.x, merged.y) = MergeValues(std::pair(base.x, base.y), std::pair(ours.x, ours.y),
                                               std::pair(theirs.x, theirs.y), isHeaderConflict);
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
            merged.nodes.push_back(std::move(node));
        }
        merged.conflicts.assign(conflicts.begin(), conflicts.end());
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
                NodeSource merged = MergeNode(old, *one, *other, isConflict);
                Keep(newName, std::move(merged), isConflict);
                return;
            }
        }
        // Removed by one side, or renamed by both.
        if (one && (other || one->name != name || !IsSameNode(*one, old))) {
            NodeSource left = *one;
            left.content = Marked(left.content, "");
            Keep(one->name, std::move(left), true);
        }
        if (other && (one || other->name != name || !IsSameNode(*other, old))) {
            NodeSource left = *other;
            left.content = Marked("", left.content);
            Keep(other->name, std::move(left), true);
        }
    }

    /// Keeps a node; two of one name are a conflict, unless they are alike.
    void Keep(const std::string& name, NodeSource node, bool isConflict = false)
    {
        const auto found = result.find(name);
        if (found != result.end() && !IsSameNode(found->second, node)) {
            node = MergeNode(NodeSource(), found->second, node, isConflict);
        }
        result[name] = std::move(node);
        if (isConflict) {
            conflicts.insert(name);
        }
    }

    Nodes base;
    Nodes ours;
    Nodes theirs;
    const std::map<std::string, std::string> ourNames;
    const std::map<std::string, std::string> theirNames;
    Nodes result;
    std::set<std::string> conflicts;
};

}  // namespace

MergedNodes MergeNodes(const std::vector<NodeSource>& base, const std::vector<NodeSource>& ours,
                       const std::vector<NodeSource>& theirs)
{
    return ListMerge(base, ours, theirs).Run();
}

}  // namespace morlc
