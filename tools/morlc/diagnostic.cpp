// SPDX-License-Identifier: MIT
#include "diagnostic.h"

#include <json/json.h>
#include <utility>

namespace morlc {
namespace {

// The control sequences that terminals share: bold, bold red, bold green, and back to normal.
constexpr const char* kBold = "\x1b[1m";
constexpr const char* kRed = "\x1b[1;31m";
constexpr const char* kGreen = "\x1b[1;32m";
constexpr const char* kNormal = "\x1b[0m";

/// The text on one line and without control characters, whatever the names in it hold.
std::string Printable(std::string text)
{
    for (char& c : text) {
        if (static_cast<unsigned char>(c) < ' ' || c == '\x7f') {
            c = '?';
        }
    }
    return text;
}

std::string Painted(const std::string& text, const char* colour, bool paint)
{
    return paint ? colour + text + kNormal : text;
}

std::string Location(const Diagnostic& diagnostic)
{
    std::string location = diagnostic.file;
    if (!diagnostic.node.empty()) {
        location += (location.empty() ? "node " : ": node ") + diagnostic.node;
    }
    if (diagnostic.line > 0) {
        location += ":" + std::to_string(diagnostic.line) + ":" + std::to_string(diagnostic.column);
    }
    if (diagnostic.node.empty() && diagnostic.line == 0 && !diagnostic.shader.empty()) {
        location += (location.empty() ? "shader " : ": shader ") + diagnostic.shader;
    }
    return location.empty() ? "morlc" : location;
}

}  // namespace

std::string FormatText(const Diagnostic& diagnostic, bool colour)
{
    const std::string severity = diagnostic.isError ? Painted("error:", kRed, colour) : "info:";
    std::string text = Painted(Printable(Location(diagnostic)) + ":", kBold, colour) + " " +
                       severity + " " + Printable(diagnostic.text) + "\n";
    const Excerpt& excerpt = diagnostic.excerpt;
    if (!excerpt.line.empty()) {
        const std::string indent(excerpt.caret, ' ');
        text += "    " + Printable(excerpt.line) + "\n    " + indent +
                Painted("^", kGreen, colour) + "\n";
    }
    return text;
}

std::string FormatJson(const Diagnostic& diagnostic)
{
    Json::Value object(Json::objectValue);
    object["severity"] = diagnostic.isError ? "error" : "info";
    object["message"] = diagnostic.text;
    const std::pair<const char*, const std::string&> names[] = {
        {"file", diagnostic.file}, {"node", diagnostic.node}, {"shader", diagnostic.shader}};
    for (const auto& [member, name] : names) {
        if (!name.empty()) {
            object[member] = name;
        }
    }
    if (diagnostic.line > 0) {
        object["line"] = diagnostic.line;
        object["column"] = diagnostic.column;
    }
    Json::StreamWriterBuilder builder;
    builder["indentation"] = "";
    return Json::writeString(builder, object) + "\n";
}

}  // namespace morlc
