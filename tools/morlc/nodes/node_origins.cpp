// SPDX-License-Identifier: MIT
#include "nodes/node_origins.h"

#include <morl/compiler/node_text.h>
#include <algorithm>
#include <utility>

namespace morlc {
void NodeOrigins::AddFromNodeFile(const std::string& node, std::shared_ptr<const SourceText> text,
                                  std::size_t content)
{
    const std::string file = text->File();
    origins[node] = {file, "", 0, std::move(text), content};
}

void NodeOrigins::AddFromSource(const std::string& node, const std::string& file,
                                const std::string& nodeFile, int contentLine)
{
    origins[node] = {nodeFile, file, contentLine, nullptr, 0};
}

std::string NodeOrigins::FileOf(const std::string& node) const
{
    const auto found = origins.find(node);
    if (found == origins.end()) {
        return {};
    }
    return found->second.text ? found->second.nodeFile : found->second.source;
}

std::string NodeOrigins::NodeFileOf(const std::string& node) const
{
    const auto found = origins.find(node);
    return found != origins.end() ? found->second.nodeFile : "";
}

std::vector<std::string> NodeOrigins::Names() const
{
    std::vector<std::string> names;
    for (const auto& [name, origin] : origins) {
        names.push_back(name);
    }
    return names;
}

Place NodeOrigins::OnDisk(const std::string& node, const ns_ruke::TextPlace& place) const
{
    const auto found = origins.find(node);
    if (found == origins.end()) {
        return {};
    }
    const Origin& origin = found->second;
    if (!origin.text) {
        return {origin.source, origin.contentLine + std::max(place.line, 1) - 1,
                std::max(place.column, 1)};
    }
    const ns_ruke::TextPlace onDisk =
        ns_ruke::PlaceInNodeText(origin.text->Text(), origin.content, place);
    return {origin.nodeFile, onDisk.line, onDisk.column};
}

}  // namespace morlc
