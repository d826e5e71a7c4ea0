// SPDX-License-Identifier: MIT
#include "nodes/node_document.h"

#include "json_file.h"
#include "path.h"

#include <morl/core/json_text.h>
#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <map>

namespace morlc {
namespace {

constexpr const char* kBlanks = " \t\r\n";

/// What is lost of the values: all but the last of several members of one name, references that are
/// no list, and what follows the nodes.
/// @param text the text without its comments
void AddLostValues(const SourceText& source, const std::string& text, std::vector<Place>& losses)
{
    Json::CharReaderBuilder builder;
    builder["rejectDupKeys"] = true;
    Json::Value root;
    try {
        ParseJson(builder, text, source, root);
    } catch (const DiagnosticError& error) {
        losses.push_back(error.diagnostic.place);
        return;
    }
    for (const Json::Value& element : root) {
        const Json::Value& references = element["ref"];
        if (!references.isNull() && !references.isArray()) {
            losses.push_back(source.AtByte(static_cast<std::size_t>(references.getOffsetStart())));
        }
    }
    const std::size_t rest =
        text.find_first_not_of(kBlanks, static_cast<std::size_t>(root.getOffsetLimit()));
    if (rest != std::string::npos) {
        losses.push_back(source.AtByte(rest));
    }
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
            const std::size_t end = isLine ? text.find('\n', i) : text.find("*/", i + 2);
            i = end == std::string::npos ? text.size() : end + (isLine ? 0 : 1);
        }
    }
    AddLostValues(source, plain, losses);
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
    if (!std::filesystem::is_regular_file(ToPath(path))) {
        diagnostics.Error("cannot read " + AsGiven(prefix, ToPath(path)) + ": it is not a file");
        return std::nullopt;
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
    // Members have no order.
    const std::map<std::string, std::string> members(a.members.begin(), a.members.end());
    const std::map<std::string, std::string> others(b.members.begin(), b.members.end());
    return a.references == b.references && a.x == b.x && a.y == b.y && members == others &&
           a.content == b.content;
}

}  // namespace morlc
