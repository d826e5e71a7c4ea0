// SPDX-License-Identifier: MIT
#include "morl/compiler/internal/node_reader.h"

#include "morl/core/json_text.h"
#include "morl/core/limits.h"
#include "morl/core/messages.h"

#include <optional>
#include <string_view>
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
bool Parse(std::string_view text, Json::Value& root, std::string* errors)
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

/// The members of a node, each looked up once. Missing ones are null.
struct Members {
    explicit Members(const Json::Value& element)
        : name(element["name"]),
          x(element["x"]),
          y(element["y"]),
          content(element["content"]),
          references(element["ref"])
    {
    }

    const Json::Value& name;
    const Json::Value& x;
    const Json::Value& y;
    const Json::Value& content;
    const Json::Value& references;
};

std::unique_ptr<MorlNode> MakeNode(const Members& members)
{
    auto node = std::make_unique<MorlNode>();
    std::string name = ReadString(members.name);
    const double x = members.x.asDouble();
    const double y = members.y.asDouble();
    std::string content = ReadString(members.content);
    node->SetName(std::move(name));
    node->SetPosition(static_cast<float>(x), static_cast<float>(y));
    node->SetContent(std::move(content));
    const Json::Value& references = members.references;
    // By index, so that an object in place of the list raises the reader's error.
    for (Json::ArrayIndex i = 0; i < references.size(); ++i) {  // NOLINT(modernize-loop-convert)
        node->AddReference(ReadString(references[i]));
    }
    return node;
}

/// Finds the faults of one text.
class FaultFinder {
public:
    FaultFinder(const std::string& newFile, std::string_view newText,
                std::vector<NodeTextFault>& newFaults)
        : file(newFile), source(newText), faults(newFaults)
    {
    }

    void Report(const TextPlace& place, const std::string& text, const std::string& node = {})
    {
        faults.push_back({file, node, place.line, place.column, text});
    }

    void ReportValue(const Json::Value& value, const char* text, const std::string& node = {})
    {
        const auto offset = static_cast<std::size_t>(value.getOffsetStart());
        if (!lines) {
            lines.emplace(source);
        }
        Report(lines->PlaceOf(offset), text, node);
    }

    /// Whether a node has no faults.
    bool Check(const Members& members)
    {
        const std::size_t before = faults.size();
        Expect(IsText(members.name), members, members.name, messages::kNameNotString);
        Expect(IsNumber(members.x), members, members.x, messages::kXNotNumber);
        Expect(IsNumber(members.y), members, members.y, messages::kYNotNumber);
        Expect(IsText(members.content), members, members.content, messages::kContentNotString);
        if (members.references.isArray()) {
            for (const Json::Value& reference : members.references) {
                Expect(IsText(reference), members, reference, messages::kReferenceNotString);
            }
        } else {
            const bool isEmpty = !members.references.isObject() || members.references.empty();
            Expect(isEmpty, members, members.references, messages::kReferencesNotList);
        }
        return faults.size() == before;
    }

private:
    void Expect(bool isValid, const Members& members, const Json::Value& value, const char* text)
    {
        if (!isValid) {
            ReportValue(value, text, members.name.isString() ? members.name.asString() : "");
        }
    }

    const std::string& file;
    std::string_view source;
    std::optional<TextLines> lines;  ///< of the source, once a place is needed
    std::vector<NodeTextFault>& faults;
};

/// The JSON reader skips a byte order mark and does not count it.
std::string_view WithoutMark(std::string_view text)
{
    constexpr std::string_view kMark = "\xEF\xBB\xBF";
    return text.substr(text.substr(0, kMark.size()) == kMark ? kMark.size() : 0);
}

}  // namespace

// Few files have comments, so these are removed only where they are in the way.
NodeDocument ReadNodeDocument(std::string_view text)
{
    NodeDocument document;
    if (Parse(text, document.root, nullptr)) {
        return document;
    }
    std::string withoutComments(text);
    RemoveComments(withoutComments);
    document.root = Json::Value();
    if (!Parse(withoutComments, document.root, &document.errors)) {
        document.root = Json::Value();
    }
    return document;
}

std::unique_ptr<MorlNode> ReadNode(const Json::Value& element)
{
    return MakeNode(Members(element));
}

namespace {

/// @param take receives the elements that are nodes without faults, with their members
/// @return whether there are no faults
template <class Take>
bool ReadMembers(const NodeText& source, std::vector<NodeTextFault>& faults, const Take& take)
{
    const std::string_view text = WithoutMark(source.text);
    FaultFinder finder(source.name, text, faults);
    const std::size_t before = faults.size();
    NodeDocument document;
    try {
        document = ReadNodeDocument(text);
    } catch (const Json::RuntimeError&) {
        finder.Report({}, messages::kNotJson + std::string(messages::kNestedTooDeeply));
        return false;
    }
    if (!document.errors.empty()) {
        const JsonFault fault = FirstJsonFault(document.errors);
        finder.Report(fault.place, messages::kNotJson + fault.text);
        return false;
    }
    if (!document.root.isArray()) {
        finder.Report({1, 1}, messages::kNotNodeList);
        return false;
    }
    for (const Json::Value& element : document.root) {
        if (!element.isObject() && !element.isNull()) {
            finder.ReportValue(element, messages::kNotNode);
            continue;
        }
        const Members members(element);
        if (finder.Check(members)) {
            take(element, members);
        }
    }
    return faults.size() == before;
}

}  // namespace

bool ReadElements(const NodeText& source, std::vector<NodeTextFault>& faults,
                  const std::function<void(const Json::Value&)>& take)
{
    return ReadMembers(source, faults, [&](const Json::Value& element, const Members& /*members*/) {
        take(element);
    });
}

std::vector<std::unique_ptr<MorlNode>> ReadNodes(const NodeText& source, NodeTextResult& result)
{
    std::vector<std::unique_ptr<MorlNode>> nodes;
    const auto offsetOf = [](const Json::Value& value) {
        return static_cast<std::size_t>(value.getOffsetStart());
    };
    const auto take = [&](const Json::Value& element, const Members& members) {
        nodes.push_back(MakeNode(members));
        result.contents.push_back(offsetOf(members.content.isString() ? members.content : element));
        result.references.push_back(
            offsetOf(members.references.isArray() ? members.references : element));
    };
    if (!ReadMembers(source, result.faults, take)) {
        nodes.clear();
        result.contents.clear();
        result.references.clear();
    }
    return nodes;
}

}  // namespace ns_ruke
