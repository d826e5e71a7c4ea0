// SPDX-License-Identifier: MIT
#include "morl/compiler/internal/node_reader.h"

#include "morl/compiler/internal/json_text.h"
#include "morl/core/limits.h"
#include "morl/core/messages.h"

#include <array>
#include <utility>

namespace ns_ruke {
namespace {

/// The settings of the JSON reader. It refuses comments.
Json::CharReaderBuilder MakeReaderBuilder()
{
    Json::CharReaderBuilder builder;
    builder["allowComments"] = false;
    builder["collectComments"] = false;
    builder["stackLimit"] = kMaxJsonNesting;
    return builder;
}

/// Whether the text begins with a well-formed document.
bool Parse(const std::string& text, Json::Value& root, std::string* errors)
{
    static const Json::CharReaderBuilder builder = MakeReaderBuilder();
    const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
    return reader->parse(text.data(), text.data() + text.size(), &root, errors);
}

/// The text of a string, "true" or "false" for a boolean, or an empty text for null. The JSON
/// library would silently turn a number into text; here a number is rejected like any other wrong
/// type.
std::string ReadString(const Json::Value& value)
{
    if (value.isNumeric()) {
        Json::throwLogicError("Type is not convertible to string");
    }
    return value.asString();
}

bool IsText(const Json::Value& value)
{
    return value.isString() || value.isBool() || value.isNull();
}

bool IsNumber(const Json::Value& value)
{
    return value.isNumeric() || value.isBool() || value.isNull();
}

/// A member of a node, with what it must be.
struct Member {
    const char* name;
    bool (*isValid)(const Json::Value& value);
    const char* fault;
};

/// Missing members are null, which every member may be.
constexpr std::array<Member, 5> kMembers = {{
    {"name", IsText, messages::kNameNotString},
    {"x", IsNumber, messages::kXNotNumber},
    {"y", IsNumber, messages::kYNotNumber},
    {"content", IsText, messages::kContentNotString},
    {"ref", [](const Json::Value& value) { return !value.isObject() || value.empty(); },
     messages::kReferencesNotList},
}};

/// Collects the faults of one text.
class FaultFinder {
public:
    FaultFinder(const NodeText& newSource, std::vector<NodeTextFault>& newFaults)
        : source(newSource), faults(newFaults)
    {
    }

    void Report(const TextPlace& place, const std::string& text, const std::string& node = {})
    {
        faults.push_back({source.name, node, place.line, place.column, text});
    }

    void CheckNode(const Json::Value& element)
    {
        if (element.isNull()) {
            return;
        }
        if (!element.isObject()) {
            ReportValue(element, messages::kNotNode, {});
            return;
        }
        const Json::Value& name = element["name"];
        const std::string node = name.isString() ? name.asString() : "";
        for (const Member& member : kMembers) {
            if (!member.isValid(element[member.name])) {
                ReportValue(element[member.name], member.fault, node);
            }
        }
        if (element["ref"].isArray()) {
            for (const Json::Value& reference : element["ref"]) {
                if (!IsText(reference)) {
                    ReportValue(reference, messages::kReferenceNotString, node);
                }
            }
        }
    }

private:
    void ReportValue(const Json::Value& value, const char* text, const std::string& node)
    {
        const auto offset = static_cast<std::size_t>(value.getOffsetStart());
        Report(PlaceOfByte(source.text, offset), text, node);
    }

    const NodeText& source;
    std::vector<NodeTextFault>& faults;
};

/// The JSON reader skips a byte order mark and does not count it.
std::string WithoutMark(const std::string& text)
{
    constexpr std::string_view kMark = "\xEF\xBB\xBF";
    const bool hasMark = std::string_view(text).substr(0, kMark.size()) == kMark;
    return text.substr(hasMark ? kMark.size() : 0);
}

}  // namespace

// Few files have comments, so these are removed only where they are in the way.
NodeDocument ReadNodeDocument(std::string text)
{
    NodeDocument document;
    document.text = std::move(text);
    if (!Parse(document.text, document.root, nullptr)) {
        RemoveComments(document.text);
        document.root = Json::Value();
        if (!Parse(document.text, document.root, &document.errors)) {
            document.root = Json::Value();
        }
    }
    return document;
}

std::unique_ptr<MorlNode> ReadNode(const Json::Value& element)
{
    auto node = std::make_unique<MorlNode>();
    std::string name = ReadString(element["name"]);
    const double x = element["x"].asDouble();
    const double y = element["y"].asDouble();
    std::string content = ReadString(element["content"]);
    node->SetName(std::move(name));
    node->SetPosition(static_cast<float>(x), static_cast<float>(y));
    node->SetContent(std::move(content));
    const Json::Value& references = element["ref"];
    // By index, so that an object in place of the list raises the reader's error.
    for (Json::ArrayIndex i = 0; i < references.size(); ++i) {  // NOLINT(modernize-loop-convert)
        node->AddReference(ReadString(references[i]));
    }
    return node;
}

std::vector<std::unique_ptr<MorlNode>> ReadNodes(const NodeText& source,
                                                 std::vector<NodeTextFault>& faults)
{
    const NodeText plain = {source.name, WithoutMark(source.text)};
    FaultFinder finder(plain, faults);
    const std::size_t before = faults.size();
    NodeDocument document;
    try {
        document = ReadNodeDocument(plain.text);
    } catch (const Json::RuntimeError&) {
        finder.Report({}, messages::kNotJson + std::string(messages::kNestedTooDeeply));
        return {};
    }
    if (!document.errors.empty()) {
        const JsonFault fault = FirstJsonFault(document.errors);
        finder.Report(fault.place, messages::kNotJson + fault.text);
        return {};
    }
    if (!document.root.isArray()) {
        finder.Report({1, 1}, messages::kNotNodeList);
        return {};
    }
    for (const Json::Value& element : document.root) {
        finder.CheckNode(element);
    }
    std::vector<std::unique_ptr<MorlNode>> nodes;
    if (faults.size() == before) {
        for (const Json::Value& element : document.root) {
            nodes.push_back(ReadNode(element));
        }
    }
    return nodes;
}

}  // namespace ns_ruke
