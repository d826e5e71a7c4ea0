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

/// How much deeper in brackets what follows a character is. Parentheses count twice, so that those
/// outside of blocks are inner ones, too.
int DepthOf(char c)
{
    switch (c) {
    case '{':
        return 1;
    case '}':
        return -1;
    case '(':
        return 2;
    case ')':
        return -2;
    default:
        return 0;
    }
}

/// The words of a source that follow a type on its line, outside of comments, parentheses and inner
/// blocks: what other nodes can use.
std::vector<std::string> DeclaredNames(std::string_view source)
{
    const KeywordMap keywords = KeywordMap::Language();
    std::vector<std::string> names;
    bool isAfterType = false;
    int depth = 0;
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
            if (isAfterType && token == TOKEN_NONE && depth <= 1) {
                names.emplace_back(word);
            }
            isAfterType = KeywordMap::RowOf(token).wordClass == WordClass::Type;
            i = end;
        } else {
            isAfterType = isAfterType && (source[i] == ' ' || source[i] == '\t');
            depth += DepthOf(source[i]);
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
    auto entry = declared.lower_bound({node, {}});
    while (entry != declared.end() && entry->first == node) {
        declaring.erase({entry->second, node});
        entry = declared.erase(entry);
    }
    byLength.erase({node.size(), node});
}

void NodeIndex::Add(const std::string& name, const MorlNode& node)
{
    for (const std::string& declaredName : DeclaredNames(node.Content())) {
        declared.emplace(name, declaredName);
        declaring.emplace(declaredName, name);
    }
    byLength.emplace(name.size(), name);
}

// Only names of nearly the same length can be similar; an abbreviation is sought among all that
// begin like it.
std::string NodeIndex::NearestNode(const Nodes& nodes, const std::string& wanted)
{
    Update(nodes);
    const std::size_t reach = wanted.size() / 3 + 1;
    std::vector<std::string_view> names;
    const std::size_t shortest = wanted.size() - std::min(reach, wanted.size());
    for (auto name = byLength.lower_bound({shortest, {}});
         name != byLength.end() && name->first <= wanted.size() + reach; ++name) {
        names.emplace_back(name->second);
    }
    std::sort(names.begin(), names.end());
    std::string nearest = NearestName(names, wanted);
    if (!nearest.empty()) {
        return nearest;
    }
    names.clear();
    for (std::size_t length = wanted.size() + 1; names.size() < 2;) {
        const auto name = byLength.lower_bound({length, wanted});
        if (name == byLength.end()) {
            break;
        }
        if (name->first == length && name->second.compare(0, wanted.size(), wanted) == 0) {
            names.emplace_back(name->second);
            const auto next = std::next(name);
            if (next != byLength.end() && next->first == length &&
                next->second.compare(0, wanted.size(), wanted) == 0) {
                names.emplace_back(next->second);
            }
            ++length;
        } else {
            length = std::max(name->first, length + 1);
        }
    }
    return names.size() == 1 ? NearestName(names, wanted) : std::string();
}

std::string NodeIndex::FindDeclaring(const Nodes& nodes, const std::string& name, int stage,
                                     const std::vector<std::string>& excluded)
{
    Update(nodes);
    for (auto entry = declaring.lower_bound({name, {}});
         entry != declaring.end() && entry->first == name; ++entry) {
        const std::string& node = entry->second;
        const bool isExcluded = std::find(excluded.begin(), excluded.end(), node) != excluded.end();
        if (!isExcluded && !IsOfOtherStage(nodes.at(node)->Content(), stage)) {
            return node;
        }
    }
    return {};
}

}  // namespace ns_ruke
