// SPDX-License-Identifier: MIT
#include "nodes/node_origins.h"

#include <morl/compiler/node_text.h>
#include <algorithm>
#include <string_view>
#include <utility>

namespace morlc {
namespace {

/// Where a name stands in a text, and is no part of a longer one.
std::size_t FindName(std::string_view text, std::size_t from, std::string_view name)
{
    constexpr std::string_view kAround = " \t\r\n,:\"";
    for (std::size_t i = text.find(name, from); i != std::string_view::npos;
         i = text.find(name, i + 1)) {
        const std::size_t end = i + name.size();
        const bool isWhole = i > 0 && kAround.find(text[i - 1]) != std::string_view::npos &&
                             end < text.size() && kAround.find(text[end]) != std::string_view::npos;
        if (isWhole) {
            return i;
        }
    }
    return std::string_view::npos;
}

}  // namespace

void NodeOrigins::AddFromNodeFile(const std::string& node, std::shared_ptr<const SourceText> text,
                                  std::size_t content, std::size_t references)
{
    const std::string file = text->File();
    origins[node] = {file, std::move(text), 0, content, references};
}

void NodeOrigins::AddFromSource(const std::string& node, SourceText text,
                                const std::string& nodeFile, int contentLine)
{
    origins[node] = {nodeFile, std::make_shared<const SourceText>(std::move(text)), contentLine, 0,
                     0};
}

std::string NodeOrigins::FileOf(const std::string& node) const
{
    const auto found = origins.find(node);
    return found != origins.end() ? found->second.text->File() : "";
}

Place NodeOrigins::ReferenceOnDisk(const std::string& node, const std::string& reference) const
{
    const auto found = origins.find(node);
    if (found == origins.end() || reference.empty()) {
        return {};
    }
    const Origin& origin = found->second;
    const std::size_t offset = FindName(origin.text->Text(), origin.references, reference);
    if (offset == std::string::npos) {
        return {};
    }
    Place place = origin.text->AtByte(offset);
    const bool isInContent = origin.contentLine > 0 && place.line >= origin.contentLine;
    return isInContent ? Place() : place;
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
    if (origin.contentLine > 0) {
        return {origin.text->File(), origin.contentLine + std::max(place.line, 1) - 1,
                std::max(place.column, 1)};
    }
    const ns_ruke::TextPlace onDisk =
        ns_ruke::PlaceInNodeText(origin.text->Text(), origin.content, place);
    return {origin.nodeFile, onDisk.line, onDisk.column};
}

}  // namespace morlc
