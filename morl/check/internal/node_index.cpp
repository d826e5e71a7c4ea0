// SPDX-License-Identifier: MIT
#include "morl/check/internal/node_index.h"

#include "morl/ast/stage.h"
#include "morl/core/nearest.h"
#include "morl/parser/keyword_map.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace ns_ruke {
namespace {

bool StartsWord(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '$';
}

bool ContinuesWord(char c)
{
    return StartsWord(c) || (c >= '0' && c <= '9');
}

/// The words of a source that follow a type on its line, outside of comments.
std::vector<std::string> DeclaredNames(std::string_view source)
{
    const KeywordMap keywords = KeywordMap::Language();
    std::vector<std::string> names;
    bool isAfterType = false;
    for (std::size_t i = 0; i < source.size();) {
        const std::string_view start = source.substr(i, 2);
        if (start == "//" || start == "/*") {
            const std::string_view close = start == "//" ? "\n" : "*/";
            i = std::min(source.find(close, i + 2), source.size() - close.size()) + close.size();
            isAfterType = false;
        } else if (StartsWord(source[i])) {
            std::size_t end = i + 1;
            while (end < source.size() && ContinuesWord(source[end])) {
                ++end;
            }
            const std::string_view word = source.substr(i, end - i);
            const ENUM_TOKEN token = keywords.Find(word);
            if (isAfterType && token == TOKEN_NONE) {
                names.emplace_back(word);
            }
            isAfterType = KeywordMap::RowOf(token).wordClass == WordClass::Type;
            i = end;
        } else {
            isAfterType = isAfterType && (source[i] == ' ' || source[i] == '\t');
            ++i;
        }
    }
    return names;
}

/// Whether a node is for the other stage, to judge by the semantics in its source.
bool IsOfOtherStage(const std::string& source, int stage)
{
    static const char* const vertexWords[] = {"SV_Position", "POSITION",     "NORMAL",
                                              "TANGENT",     "BLENDINDICES", "BLENDWEIGHT"};
    if (stage == kVertexStage) {
        return source.find("tex2D") != std::string::npos ||
               source.find("discard") != std::string::npos;
    }
    return std::any_of(std::begin(vertexWords), std::end(vertexWords),
                       [&](const char* word) { return source.find(word) != std::string::npos; });
}

}  // namespace

NodeIndex::NodeIndex(const Nodes& nodes)
{
    for (const auto& [name, node] : nodes) {
        changed.insert(name);
    }
}

void NodeIndex::Update(const Nodes& nodes)
{
    for (const std::string& name : changed) {
        Forget(name);
        const auto node = nodes.find(name);
        if (node != nodes.end() && node->second != nullptr) {
            Add(name, *node->second);
        }
    }
    changed.clear();
}

void NodeIndex::Forget(const std::string& node)
{
    const auto known = declared.find(node);
    if (known == declared.end()) {
        return;
    }
    for (const std::string& name : known->second) {
        const auto entry = declaring.find(name);
        if (entry != declaring.end() && entry->second.erase(node) > 0 && entry->second.empty()) {
            declaring.erase(entry);
        }
    }
    declared.erase(known);
    byLength[node.size()].erase(node);
}

void NodeIndex::Add(const std::string& name, const MorlNode& node)
{
    const auto entry = declared.emplace(name, DeclaredNames(node.Content())).first;
    for (const std::string& declaredName : entry->second) {
        declaring[declaredName].insert(name);
    }
    byLength[name.size()].insert(name);
}

// Only names of nearly the same length can be similar; an abbreviation is sought among all that
// begin like it.
std::string NodeIndex::NearestNode(const Nodes& nodes, const std::string& wanted)
{
    Update(nodes);
    const std::size_t reach = wanted.size() / 3 + 1;
    std::vector<std::string_view> names;
    const auto last = byLength.upper_bound(wanted.size() + reach);
    for (auto group = byLength.lower_bound(wanted.size() - std::min(reach, wanted.size()));
         group != last; ++group) {
        names.insert(names.end(), group->second.begin(), group->second.end());
    }
    std::sort(names.begin(), names.end());
    const std::string nearest = NearestName(names, wanted);
    if (!nearest.empty()) {
        return nearest;
    }
    names.clear();
    for (auto group = byLength.upper_bound(wanted.size()); group != byLength.end(); ++group) {
        for (auto name = group->second.lower_bound(wanted);
             name != group->second.end() && name->compare(0, wanted.size(), wanted) == 0; ++name) {
            names.emplace_back(*name);
        }
    }
    return names.size() == 1 ? NearestName(names, wanted) : std::string();
}

std::string NodeIndex::FindDeclaring(const Nodes& nodes, const std::string& name, int stage,
                                     const std::vector<std::string>& excluded)
{
    Update(nodes);
    const auto found = declaring.find(name);
    if (found == declaring.end()) {
        return {};
    }
    const auto node =
        std::find_if(found->second.begin(), found->second.end(), [&](const std::string& candidate) {
            return std::find(excluded.begin(), excluded.end(), candidate) == excluded.end() &&
                   !IsOfOtherStage(nodes.at(candidate)->Content(), stage);
        });
    return node != found->second.end() ? *node : std::string();
}

}  // namespace ns_ruke
