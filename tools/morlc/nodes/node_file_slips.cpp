// SPDX-License-Identifier: MIT
#include "nodes/node_file_slips.h"

#include "json_file.h"

#include <morl/core/json_text.h>
#include <morl/core/nearest.h>
#include <algorithm>
#include <cctype>
#include <cstddef>
#include <iterator>
#include <string_view>
#include <vector>

namespace morlc {
namespace {

constexpr std::string_view kMembers[] = {"name", "content", "x", "y", "ref"};

/// How many bytes the character has that begins at one; 0 if none does.
std::size_t CharacterLength(const std::string& text, std::size_t begin)
{
    const auto lead = static_cast<unsigned char>(text[begin]);
    if (lead < 0x80) {
        return lead == 0 ? 0 : 1;
    }
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || begin + length > text.size()) {
        return 0;
    }
    const auto isContinuing = [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
    };
    const auto first = text.begin() + static_cast<std::ptrdiff_t>(begin) + 1;
    return std::all_of(first, first + static_cast<std::ptrdiff_t>(length) - 1, isContinuing)
               ? length
               : 0;
}

class SlipFinder {
public:
    SlipFinder(const SourceText& newSource, Diagnostics& newDiagnostics)
        : source(newSource), diagnostics(newDiagnostics)
    {
    }

    void Run()
    {
        WarnOfBytes(source, diagnostics);
        Json::Value root;
        if (!Read(root)) {
            return;  // the library says so
        }
        if (!root.isArray()) {
            return;
        }
        for (const Json::Value& element : root) {
            if (element.isObject()) {
                CheckNode(element);
            }
        }
        std::string plain = source.Text();
        ns_ruke::RemoveComments(plain);
        const std::size_t rest =
            plain.find_first_not_of(" \t\r\n", static_cast<std::size_t>(root.getOffsetLimit()));
        if (rest != std::string::npos) {
            Warn(rest, "what follows the list of nodes is not read: put all nodes into one list");
        }
    }

private:
    void Warn(std::size_t offset, const std::string& text)
    {
        diagnostics.Report(WarningAt(source.AtByte(offset), text));
    }

    /// Reads the document. One whose members stand twice is read once more.
    bool Read(Json::Value& root)
    {
        Json::CharReaderBuilder builder;
        builder["rejectDupKeys"] = true;
        try {
            ParseJson(builder, source.Text(), source, root);
            return true;
        } catch (const DiagnosticError& error) {
            if (error.diagnostic.text.find("Duplicate key") == std::string::npos) {
                return false;
            }
            diagnostics.Report(WarningAt(error.diagnostic.place,
                                         "this member stands twice: the later one counts"));
        }
        ParseJson(Json::CharReaderBuilder(), source.Text(), source, root);
        return true;
    }

    void CheckNode(const Json::Value& node)
    {
        if (!node.isMember("name")) {
            Warn(static_cast<std::size_t>(node.getOffsetStart()), "this node has no \"name\"");
        }
        if (!node["ref"].isNull() && !node["ref"].isArray()) {
            Warn(static_cast<std::size_t>(node["ref"].getOffsetStart()),
                 "this is no list of names, so it is not read: \"ref\": [\"NAME\"]");
        }
        for (const std::string& member : node.getMemberNames()) {
            if (std::find(std::begin(kMembers), std::end(kMembers), member) == std::end(kMembers)) {
                CheckMember(node[member], member);
            }
        }
    }

    /// Other tools may keep members of their own; one that is almost a node's is a slip.
    void CheckMember(const Json::Value& value, const std::string& member)
    {
        std::string small = member;
        std::transform(small.begin(), small.end(), small.begin(),
                       [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
        const std::vector<std::string_view> members(std::begin(kMembers), std::end(kMembers));
        const std::string nearest = ns_ruke::NearestName(members, small);
        if (!nearest.empty() && small.size() > 2) {
            Warn(static_cast<std::size_t>(value.getOffsetStart()),
                 "the member '" + member + "' is not read: did you mean '" + nearest + "'?");
        }
    }

    const SourceText& source;
    Diagnostics& diagnostics;
};

}  // namespace

void WarnOfBytes(const SourceText& source, Diagnostics& diagnostics)
{
    const std::string& text = source.Text();
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t length = CharacterLength(text, i);
        if (length == 0) {
            const char* const advice =
                text[i] == '\0' ? "a NUL byte is no text; remove it"
                                : "this byte is no text in UTF-8; save the file as UTF-8";
            diagnostics.Report(WarningAt(source.AtByte(i), advice));
            return;
        }
        i += length;
    }
}

void WarnOfSlips(const SourceText& source, Diagnostics& diagnostics)
{
    SlipFinder(source, diagnostics).Run();
}

}  // namespace morlc
