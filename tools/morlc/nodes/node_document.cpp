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

/// A comment of a text, in bytes.
struct Comment {
    std::size_t begin;
    std::size_t end;
};

/// @param plain the text without its comments
std::vector<Comment> FindComments(const std::string& text, const std::string& plain)
{
    std::vector<Comment> comments;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != plain[i]) {
            const bool isLine = text.compare(i, 2, "//") == 0;
            const std::size_t last = isLine ? text.find('\n', i) : text.find("*/", i + 2);
            const std::size_t end =
                last == std::string::npos ? text.size() : last + (isLine ? 0 : 2);
            comments.push_back({i, end});
            i = end - 1;
        }
    }
    return comments;
}

std::string WithoutComments(std::string text)
{
    ns_ruke::RemoveComments(text);
    return text;
}

std::vector<Place> FindLosses(const SourceText& source)
{
    const std::string plain = WithoutComments(source.Text());
    std::vector<Place> losses;
    for (const Comment& comment : FindComments(source.Text(), plain)) {
        losses.push_back(source.AtByte(comment.begin));
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
    document.exists = true;
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

std::string CommentsOf(const std::string& text)
{
    std::string comments;
    for (const Comment& comment : FindComments(text, WithoutComments(text))) {
        comments += text.substr(comment.begin, comment.end - comment.begin) + "\n";
    }
    return comments;
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
