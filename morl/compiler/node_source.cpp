// SPDX-License-Identifier: MIT
#include "morl/compiler/node_source.h"

#include "morl/compiler/internal/node_reader.h"
#include "morl/core/limits.h"
#include "morl/core/messages.h"
#include "morl/core/nearest.h"

#include <json/json.h>
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <map>
#include <memory>
#include <optional>

namespace ns_ruke {
namespace {

constexpr std::string_view kMark = "//!";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kBlanks = " \t\r";
constexpr std::string_view kName = "name";
constexpr std::string_view kReferences = "ref";
constexpr std::string_view kPosition = "at";

bool StartsWith(std::string_view text, std::string_view start)
{
    return text.substr(0, start.size()) == start;
}

std::string_view Trimmed(std::string_view text)
{
    const std::size_t start = std::min(text.find_first_not_of(kBlanks), text.size());
    text.remove_prefix(start);
    return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

/// Whether the first line of a text ends in CR LF.
bool IsOfWindows(std::string_view text)
{
    const std::size_t end = text.find('\n');
    return end != std::string_view::npos && end > 0 && text[end - 1] == '\r';
}

std::string WithLineFeeds(std::string_view text)
{
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (!StartsWith(text.substr(i), "\r\n")) {
            result += text[i];
        }
    }
    return result;
}

bool ReadJson(std::string_view text, Json::Value& value)
{
    Json::CharReaderBuilder builder;
    Json::CharReaderBuilder::strictMode(&builder.settings_);
    builder["strictRoot"] = false;
    // It has to fit into a node, in the list of a node file.
    builder["stackLimit"] = kMaxJsonNesting - 2;
    const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
    try {
        return reader->parse(text.data(), text.data() + text.size(), &value, nullptr);
    } catch (const Json::RuntimeError&) {
        return false;  // nested too deeply
    }
}

/// On one line, with at most this many digits in a number.
std::string WriteJson(const Json::Value& value, int digits = 17)
{
    Json::StreamWriterBuilder builder;
    builder["indentation"] = "";
    builder["emitUTF8"] = true;
    builder["precision"] = digits;
    return Json::writeString(builder, value);
}

/// A number with a fraction, in the fewest digits that read as the same one.
std::string WriteReal(const Json::Value& number)
{
    for (const int digits : {15, 16}) {
        std::string text = WriteJson(number, digits);
        Json::Value again;
        if (ReadJson(text, again) && again == number) {
            return text;
        }
    }
    return WriteJson(number);
}

/// The value of a further member.
std::string WriteMember(const Json::Value& value)
{
    if (value.type() == Json::realValue) {
        return WriteReal(value);
    }
    if (!value.isArray() && (!value.isObject() || value.isNull())) {
        return WriteJson(value);
    }
    std::string inner;
    for (auto element = value.begin(); element != value.end(); ++element) {
        inner.append(inner.empty() ? "" : ",")
            .append(value.isObject() ? WriteJson(element.name()) + ":" : std::string())
            .append(WriteMember(*element));
    }
    return value.isObject() ? "{" + inner + "}" : "[" + inner + "]";
}

/// A text that reads as this number, without digits that it does not need.
std::string WriteNumber(double number)
{
    constexpr double kExact = 9007199254740992.0;  // integers up to here are exact
    if (std::abs(number) < kExact && number == std::trunc(number) && !std::signbit(number)) {
        return std::to_string(static_cast<long long>(number));
    }
    constexpr int kEnough = 17;
    for (int digits = 15; digits < kEnough; ++digits) {
        std::string text = WriteJson(number, digits);
        Json::Value read;
        if (ReadJson(text, read) && read.isNumeric() && read.asDouble() == number) {
            return text;
        }
    }
    return WriteJson(number, kEnough);
}

/// A name as the header has it: plain where nothing in it could be misread.
std::string WriteName(const std::string& name)
{
    const bool isPlain = !name.empty() && Trimmed(name) == name &&
                         std::none_of(name.begin(), name.end(), [](char c) {
                             const auto byte = static_cast<unsigned char>(c);
                             return c == ',' || c == '"' || byte < 0x20U || byte == 0x7fU;
                         });
    return isPlain ? name : WriteJson(name);
}

/// Whether a member of a node's object has a meaning here.
bool IsDescribed(std::string_view member)
{
    constexpr std::string_view kMembers[] = {"name", "x", "y", "ref", "content"};
    return std::find(std::begin(kMembers), std::end(kMembers), member) != std::end(kMembers);
}

/// Whether a line of a content is one that a header could have.
bool IsHeaderLine(std::string_view line)
{
    line = Trimmed(line);
    if (!StartsWith(line, kMark)) {
        return false;
    }
    const std::string_view rest = Trimmed(line.substr(kMark.size()));
    const std::size_t colon = std::min(rest.find(':'), rest.size());
    const std::string_view word = Trimmed(rest.substr(0, colon));
    return colon < rest.size() && (word == kName || word == kReferences || word == kPosition);
}

/// A line of a content, and its number, from 0.
struct ContentLine {
    std::string_view text;
    int number = 0;
};

/// The first line of a content that a header could have; without a text if there is none.
ContentLine FindHeaderLine(std::string_view content)
{
    ContentLine line;
    for (std::size_t start = 0; start < content.size(); ++line.number) {
        const std::size_t end = std::min(content.find('\n', start), content.size());
        line.text = content.substr(start, end - start);
        if (IsHeaderLine(line.text)) {
            return line;
        }
        start = end + 1;
    }
    return {};
}

/// Reads one source.
class SourceReader {
public:
    SourceReader(std::string_view newText, std::vector<NodeSourceFault>& newFaults)
        : text(newText), faults(newFaults)
    {
    }

    NodeSource Read()
    {
        std::size_t position = 0;
        bool isHeader = true;  // no lone mark has ended it
        while (isHeader && StartsWith(text.substr(position), kMark)) {
            const std::size_t end = std::min(text.find('\n', position), text.size());
            line = text.substr(position, end - position);
            isHeader = ReadLine();
            position = std::min(end + 1, text.size());
            ++source.contentLine;
        }
        std::string_view content = text.substr(position);
        if (!content.empty() && content.back() == '\n') {
            content.remove_suffix(1);
        }
        source.content = content;
        if (const ContentLine late = FindHeaderLine(content); isHeader && !late.text.empty()) {
            faults.push_back(
                {true, source.contentLine + late.number, 1, messages::kLateHeaderLine});
        }
        return std::move(source);
    }

private:
    /// Reads a line of the header. Returns false if it ends the header.
    bool ReadLine()
    {
        const std::string_view rest = Trimmed(line.substr(kMark.size()));
        if (rest.empty()) {
            return false;
        }
        if (rest.front() == '"') {
            ReadMember(rest);
            return true;
        }
        const std::size_t colon = rest.find(':');
        const std::string_view word = Trimmed(rest.substr(0, colon));
        if (colon == std::string_view::npos) {
            Fail(rest, messages::kNoHeaderLine);
        } else if (word == kName) {
            ReadNodeName(Trimmed(rest.substr(colon + 1)), word);
        } else if (word == kReferences) {
            ReadReferences(Trimmed(rest.substr(colon + 1)));
        } else if (word == kPosition) {
            ReadPosition(Trimmed(rest.substr(colon + 1)), word);
        } else {
            const std::string nearest = NearestName({kName, kReferences, kPosition}, word);
            Report(word, true,
                   messages::kUnknownHeaderWord + std::string(word) + "'" +
                       DidYouMean(nearest, " (", ")"));
        }
        return true;
    }

    void ReadNodeName(std::string_view value, std::string_view word)
    {
        std::string_view rest = value;
        const std::optional<std::string> name = ReadName(rest);
        if (source.hasName) {
            Fail(word, messages::kHeaderWordTwice);
        } else if (!name || !rest.empty()) {
            Fail(value, messages::kNoHeaderName);
        } else {
            source.hasName = true;
            source.name = *name;
        }
    }

    void ReadReferences(std::string_view value)
    {
        while (!value.empty()) {
            const std::optional<std::string> name = ReadName(value);
            const bool isMore = !value.empty();
            if (!name || (isMore && value.front() != ',') || (isMore && value.size() == 1)) {
                Fail(value, messages::kNoHeaderNames);
                return;
            }
            source.references.push_back(*name);
            value = Trimmed(value.substr(isMore ? 1 : 0));
        }
    }

    void ReadPosition(std::string_view value, std::string_view word)
    {
        const std::size_t blank = std::min(value.find_first_of(kBlanks), value.size());
        Json::Value x;
        Json::Value y;
        if (hasPosition) {
            Fail(word, messages::kHeaderWordTwice);
        } else if (!ReadJson(value.substr(0, blank), x) || !x.isNumeric() ||
                   !ReadJson(Trimmed(value.substr(blank)), y) || !y.isNumeric()) {
            Fail(value, messages::kNoHeaderPosition);
        } else {
            hasPosition = true;
            source.x = x.asDouble();
            source.y = y.asDouble();
        }
    }

    void ReadMember(std::string_view rest)
    {
        const std::string_view start = rest;
        const std::optional<std::string> name = ReadName(rest);
        Json::Value value;
        if (!name || rest.empty() || rest.front() != ':' ||
            !ReadJson(Trimmed(rest.substr(1)), value)) {
            Fail(start, messages::kNoHeaderMember);
            return;
        }
        const bool isOwn =
            *name == "name" || *name == "x" || *name == "y" || *name == "ref" || *name == "content";
        const auto isSame = [&](const auto& member) { return member.first == *name; };
        if (isOwn || std::any_of(source.members.begin(), source.members.end(), isSame)) {
            Fail(start, isOwn ? messages::kHeaderMemberOwn : messages::kHeaderWordTwice);
            return;
        }
        source.members.emplace_back(*name, WriteMember(value));
    }

    /// Reads a name, plain up to a comma or as a JSON string, and the blanks after it.
    /// @param value becomes what follows
    static std::optional<std::string> ReadName(std::string_view& value)
    {
        std::size_t end = std::min(value.find(','), value.size());
        if (value.empty() || value.front() != '"') {
            const std::string name(Trimmed(value.substr(0, end)));
            value.remove_prefix(end);
            return name.empty() ? std::nullopt : std::make_optional(name);
        }
        for (end = 1; end < value.size() && value[end] != '"'; ++end) {
            end += value[end] == '\\' ? 1 : 0;
        }
        end = std::min(end + 1, value.size());
        Json::Value name;
        if (!ReadJson(value.substr(0, end), name) || !name.isString()) {
            return std::nullopt;
        }
        value = Trimmed(value.substr(end));
        return name.asString();
    }

    void Fail(std::string_view place, const char* message) { Report(place, false, message); }

    /// @param place a part of the line
    void Report(std::string_view place, bool isWarning, const std::string& message)
    {
        const std::size_t before =
            place.empty() ? line.size() : static_cast<std::size_t>(place.data() - line.data());
        faults.push_back({isWarning, source.contentLine, static_cast<int>(before) + 1, message});
    }

    std::string_view text;
    std::vector<NodeSourceFault>& faults;
    std::string_view line;  ///< of the header
    bool hasPosition = false;
    NodeSource source;
};

/// Whether a content without a header would be read as something else.
bool IsMisread(const std::string& content)
{
    return StartsWith(content, kMark) || StartsWith(content, kByteOrderMark) ||
           IsOfWindows(content + "\n");
}

}  // namespace

NodeSource ReadNodeSource(std::string_view text, std::vector<NodeSourceFault>& faults)
{
    if (StartsWith(text, kByteOrderMark)) {
        text.remove_prefix(kByteOrderMark.size());
    }
    if (!IsOfWindows(text)) {
        return SourceReader(text, faults).Read();
    }
    const std::string converted = WithLineFeeds(text);
    return SourceReader(converted, faults).Read();
}

std::string WriteNodeSource(const NodeSource& source)
{
    std::string header;
    const auto add = [&header](const std::string& word, const std::string& value) {
        header.append(kMark).append(" ").append(word).append(": ").append(value).append("\n");
    };
    if (source.hasName) {
        add(std::string(kName), WriteName(source.name));
    }
    std::string names;
    for (const std::string& reference : source.references) {
        names.append(names.empty() ? "" : ", ").append(WriteName(reference));
    }
    if (!names.empty()) {
        add(std::string(kReferences), names);
    }
    const std::string x = WriteNumber(source.x);
    const std::string y = WriteNumber(source.y);
    if (x != "0" || y != "0") {
        add(std::string(kPosition), std::string(x).append(" ").append(y));
    }
    for (const auto& [name, json] : source.members) {
        add(WriteJson(name), json);
    }
    const bool needsEnd =
        (header.empty() ? IsMisread(source.content) : StartsWith(source.content, kMark)) ||
        !FindHeaderLine(source.content).text.empty();
    if (needsEnd) {
        header.append(kMark).append("\n");
    }
    return header + source.content + (source.content.empty() ? "" : "\n");
}

std::vector<NodeSource> ReadNodeText(const NodeText& text, std::vector<NodeTextFault>& faults)
{
    std::vector<NodeSource> nodes;
    const bool isValid = ReadElements(text, faults, [&](const Json::Value& element) {
        NodeSource& node = nodes.emplace_back();
        node.hasName = true;
        node.name = element["name"].asString();
        node.x = element["x"].asDouble();
        node.y = element["y"].asDouble();
        node.content = element["content"].asString();
        for (const Json::Value& reference : element["ref"]) {
            node.references.push_back(reference.asString());
        }
        for (auto member = element.begin(); member != element.end(); ++member) {
            if (!IsDescribed(member.name())) {
                node.members.emplace_back(member.name(), WriteMember(*member));
            }
        }
    });
    if (!isValid) {
        nodes.clear();
    }
    return nodes;
}

std::string WriteNodeText(const std::vector<NodeSource>& nodes)
{
    // Those of one name keep their order: the last one counts.
    std::multimap<std::string_view, const NodeSource*> byName;
    for (const NodeSource& node : nodes) {
        byName.emplace(node.name, &node);
    }
    std::string text = "[";
    for (const auto& [nodeName, pointer] : byName) {
        const NodeSource& node = *pointer;
        text += text.size() == 1 ? "\n  {\n" : ",\n  {\n";
        const auto add = [&text](const std::string& member, const std::string& json) {
            text.append("    ").append(WriteJson(member)).append(": ").append(json).append(",\n");
        };
        add("name", WriteJson(node.name));
        add("x", WriteNumber(node.x));
        add("y", WriteNumber(node.y));
        std::string references;
        for (const std::string& reference : node.references) {
            references.append(references.empty() ? "" : ", ").append(WriteJson(reference));
        }
        add("ref", "[" + references + "]");
        std::vector<std::pair<std::string, std::string>> members = node.members;
        std::sort(members.begin(), members.end());
        for (const auto& [name, json] : members) {
            add(name, json);
        }
        text.append("    \"content\": ").append(WriteJson(node.content)).append("\n  }");
    }
    return text + (nodes.empty() ? "]\n" : "\n]\n");
}

}  // namespace ns_ruke
