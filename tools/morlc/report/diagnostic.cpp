// SPDX-License-Identifier: MIT
#include "report/diagnostic.h"

#include "text.h"

#include <utility>

namespace morlc {
namespace {

// The control sequences that terminals share: bold, its colours, and back to normal.
constexpr const char* kBold = "\x1b[1m";
constexpr const char* kRed = "\x1b[1;31m";
constexpr const char* kMagenta = "\x1b[1;35m";
constexpr const char* kGreen = "\x1b[1;32m";
constexpr const char* kNormal = "\x1b[0m";

constexpr int kDiagnosticsVersion = 1;  ///< of the JSON form

struct SeverityName {
    const char* name;
    const char* colour;  ///< null: not painted
};

SeverityName NameOf(Severity severity)
{
    switch (severity) {
    case Severity::Error:
        return {"error", kRed};
    case Severity::Warning:
        return {"warning", kMagenta};
    default:
        return {"info", nullptr};
    }
}

std::string Painted(const std::string& text, const char* colour, bool paint)
{
    return paint ? colour + text + kNormal : text;
}

std::string Location(const Diagnostic& diagnostic)
{
    std::string location = diagnostic.place.file;
    if (!location.empty() && diagnostic.place.line > 0) {
        location += ":" + std::to_string(diagnostic.place.line) + ":" +
                    std::to_string(diagnostic.place.column);
    }
    return location.empty() ? "morlc" : location;
}

/// The node, with the place in its content.
std::string NodeOf(const Diagnostic& diagnostic)
{
    if (diagnostic.node.empty()) {
        return {};
    }
    const ns_ruke::TextPlace& place = diagnostic.nodePlace;
    const std::string where = place.line > 0 ? ", line " + std::to_string(place.line) +
                                                   ", column " + std::to_string(place.column)
                                             : "";
    return " (node " + diagnostic.node + where + ")";
}

/// The manifest's shader and variant whose request failed; empty for other problems.
std::string Context(const Diagnostic& diagnostic)
{
    if (diagnostic.shader.empty() || diagnostic.variant.empty()) {
        return {};
    }
    return " (shader '" + diagnostic.shader + "', " + diagnostic.variant + ")";
}

/// The targets and the check, in brackets.
std::string Origin(const Diagnostic& diagnostic)
{
    std::string text;
    const char* separator = " [";
    for (const std::string& target : diagnostic.targets) {
        text.append(std::exchange(separator, ", ")).append(target);
    }
    text += diagnostic.targets.empty() ? "" : "]";
    return text + (diagnostic.check.empty() ? "" : " [-W " + diagnostic.check + "]");
}

}  // namespace

Diagnostic ErrorAt(Place place, const std::string& text)
{
    Diagnostic diagnostic;
    diagnostic.place = std::move(place);
    diagnostic.text = text;
    return diagnostic;
}

Diagnostic WarningAt(Place place, const std::string& text)
{
    Diagnostic diagnostic = ErrorAt(std::move(place), text);
    diagnostic.severity = Severity::Warning;
    return diagnostic;
}

std::string Identity(const Diagnostic& diagnostic)
{
    std::string identity = NameOf(diagnostic.severity).name;
    for (const std::string* part :
         {&diagnostic.place.file, &diagnostic.node, &diagnostic.shader, &diagnostic.text}) {
        identity.append("\n").append(*part);
    }
    for (const int number : {diagnostic.place.line, diagnostic.place.column,
                             diagnostic.nodePlace.line, diagnostic.nodePlace.column}) {
        identity += "\n" + std::to_string(number);
    }
    return identity;
}

std::string FormatText(const Diagnostic& diagnostic, bool colour)
{
    const SeverityName name = NameOf(diagnostic.severity);
    const std::string severity =
        Painted(std::string(name.name) + ":", name.colour, colour && name.colour != nullptr);
    std::string text =
        Painted(Printable(Location(diagnostic)) + ":", kBold, colour) + " " + severity + " " +
        Printable(diagnostic.text + NodeOf(diagnostic) + Origin(diagnostic) + Context(diagnostic)) +
        "\n";
    const ns_ruke::Excerpt& excerpt = diagnostic.place.excerpt;
    if (!excerpt.line.empty()) {
        const std::string indent(excerpt.caret, ' ');
        text += "    " + Printable(excerpt.line) + "\n    " + indent +
                Painted("^", kGreen, colour) + "\n";
    }
    if (!diagnostic.generated.empty()) {
        text += "    " + Printable(diagnostic.generated) + "\n";
    }
    if (!diagnostic.hint.empty()) {
        text += "    " + Painted("hint:", kBold, colour) + " " + Printable(diagnostic.hint) + "\n";
    }
    if (diagnostic.more > 0) {
        text +=
            "    " + std::to_string(diagnostic.more) + " more on this line (--all shows them)\n";
    }
    return text;
}

Json::Value ToJson(const Diagnostic& diagnostic)
{
    Json::Value object(Json::objectValue);
    object["version"] = kDiagnosticsVersion;
    object["severity"] = NameOf(diagnostic.severity).name;
    object["message"] = diagnostic.text;
    const std::pair<const char*, const std::string&> names[] = {
        {"file", diagnostic.place.file}, {"node", diagnostic.node},
        {"shader", diagnostic.shader},   {"variant", diagnostic.variant},
        {"check", diagnostic.check},     {"generated", diagnostic.generated},
        {"hint", diagnostic.hint}};
    for (const auto& [member, name] : names) {
        if (!name.empty()) {
            object[member] = name;
        }
    }
    for (const std::string& target : diagnostic.targets) {
        object["targets"].append(target);
    }
    if (diagnostic.place.line > 0) {
        object["line"] = diagnostic.place.line;
        object["column"] = diagnostic.place.column;
    }
    if (diagnostic.nodePlace.line > 0) {
        object["nodeLine"] = diagnostic.nodePlace.line;
        object["nodeColumn"] = diagnostic.nodePlace.column;
    }
    return object;
}

std::string FormatJson(const Diagnostic& diagnostic)
{
    Json::StreamWriterBuilder builder;
    builder["indentation"] = "";
    return Json::writeString(builder, ToJson(diagnostic)) + "\n";
}

}  // namespace morlc
