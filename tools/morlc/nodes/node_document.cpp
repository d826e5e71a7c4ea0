// SPDX-License-Identifier: MIT
#include "nodes/node_document.h"

#include "json_file.h"
#include "path.h"

#include <morl/core/json_text.h>
#include <algorithm>
#include <cstddef>
#include <filesystem>

namespace morlc {
namespace {

constexpr const char* kBlanks = " \t\r\n";

/// Where the list of a text ends, one past its last character.
std::size_t EndOfList(const std::string& text)
{
    Json::Value root;
    ParseJson(Json::CharReaderBuilder(), text, SourceText(), root);
    return static_cast<std::size_t>(root.getOffsetLimit());
}

std::vector<Place> FindLosses(const SourceText& source)
{
    const std::string& text = source.Text();
    std::string plain = text;
    ns_ruke::RemoveComments(plain);
    std::vector<Place> losses;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != plain[i]) {
            losses.push_back(source.AtByte(i));
            const bool isLine = text.compare(i, 2, "//") == 0;
            const std::size_t end = isLine ? text.find('\n', i) : text.find("*/", i);
            i = std::min(end, text.size() - 2) + 1;
        }
    }
    const std::size_t rest = plain.find_first_not_of(kBlanks, EndOfList(plain));
    if (rest != std::string::npos) {
        losses.push_back(source.AtByte(rest));
    }
    return losses;
}

}  // namespace

std::optional<NodeDocument> ReadNodeDocument(const std::string& path, const std::string& prefix,
                                             Diagnostics& diagnostics)
{
    NodeDocument document;
    document.path = path;
    if (!std::filesystem::exists(ToPath(path))) {
        return document;
    }
    document.text = ReadSource(path, prefix);
    std::vector<ns_ruke::NodeTextFault> faults;
    document.nodes = ns_ruke::ReadNodeText({document.text.File(), document.text.Text()}, faults);
    for (const ns_ruke::NodeTextFault& fault : faults) {
        diagnostics.Report(ErrorAt(document.text.At(fault.line, fault.column), fault.text));
    }
    if (!faults.empty()) {
        return std::nullopt;
    }
    document.losses = FindLosses(document.text);
    return document;
}

bool IsSameNode(const ns_ruke::NodeSource& a, const ns_ruke::NodeSource& b)
{
    return a.references == b.references && a.x == b.x && a.y == b.y && a.members == b.members &&
           a.content == b.content;
}

}  // namespace morlc
