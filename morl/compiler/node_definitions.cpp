// SPDX-License-Identifier: MIT
// Reading node-definition files.
#include "morl/compiler/internal/json_comments.h"
#include "morl/compiler/morl_compiler.h"
#include "morl/core/internal/graphics_log.h"
#include "morl/core/limits.h"
#include "morl/core/messages.h"

#include <json/json.h>

#include <array>
#include <cstdio>
#include <memory>
#include <optional>
#include <utility>

namespace ns_ruke {
namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

/// The whole file, or nothing when it cannot be read (it is missing, or a directory, say).
std::optional<std::string> ReadFile(const std::string& path)
{
    const std::unique_ptr<std::FILE, CloseFile> file(std::fopen(path.c_str(), "r"));
    if (!file) {
        return std::nullopt;
    }
    std::string text;
    std::array<char, 16384> block;
    std::size_t count = 0;
    do {
        count = std::fread(block.data(), 1, block.size(), file.get());
        text.append(block.data(), count);
    } while (count == block.size());
    if (std::ferror(file.get()) != 0) {
        return std::nullopt;
    }
    return text;
}

/// The settings of the JSON reader. It refuses comments.
Json::CharReaderBuilder MakeReaderBuilder()
{
    Json::CharReaderBuilder builder;
    builder["allowComments"] = false;
    builder["collectComments"] = false;
    builder["stackLimit"] = kMaxJsonNesting;
    return builder;
}

/// The document that a text begins with; nothing if it is malformed. Anything after the document is
/// ignored.
std::optional<Json::Value> ParseDocument(const std::string& text)
{
    static const Json::CharReaderBuilder builder = MakeReaderBuilder();
    const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
    Json::Value root;
    if (!reader->parse(text.data(), text.data() + text.size(), &root, nullptr)) {
        return std::nullopt;
    }
    return root;
}

/// A malformed document counts as null, so nothing is loaded from it. Few files have comments, so
/// these are removed only where they are in the way.
Json::Value ReadDocument(std::string text)
{
    if (std::optional<Json::Value> root = ParseDocument(text)) {
        return std::move(*root);
    }
    RemoveComments(text);
    return ParseDocument(text).value_or(Json::Value());
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

}  // namespace

void MorlCompiler::LoadNodeDefinition(std::string path)
{
    std::optional<std::string> text = ReadFile(path);
    if (!text) {
        LogGraphicsError(messages::kFileNotFound + path);
        return;
    }
    const Json::Value root = ReadDocument(std::move(*text));
    if (!root.isArray()) {
        return;
    }
    for (const Json::Value& element : root) {
        if (element.isObject() || element.isNull()) {
            std::unique_ptr<MorlNode> node = ReadNode(element);
            StoreNode(node.get());
            node.release();
        } else {
            LogGraphicsError(messages::kNodeNotObject + path);
        }
    }
}

// Takes ownership of the node, unless an exception passes through. Replaces a node of the same
// name.
void MorlCompiler::StoreNode(MorlNode* node)
{
    MorlNode*& stored = nodes[node->GetName()];
    delete stored;
    stored = node;
}

}  // namespace ns_ruke
