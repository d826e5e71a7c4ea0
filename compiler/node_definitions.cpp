// SPDX-License-Identifier: MIT
// Reading node-definition files.
#include "morl/compiler/morl_compiler.h"
#include "morl/core/graphics_log.h"

#include <json/json.h>

#include <fstream>
#include <memory>
#include <optional>
#include <sstream>
#include <utility>

namespace ns_ruke {
namespace {

/// The whole file, or nothing when it cannot be read (it is missing, or a directory, say).
std::optional<std::string> ReadFile(const std::string& path)
{
    std::ifstream file(path);
    if (!file) {
        return std::nullopt;
    }
    std::ostringstream text;
    if (file.peek() != std::ifstream::traits_type::eof()) {
        text << file.rdbuf();
    }
    if (file.bad() || text.fail()) {
        return std::nullopt;
    }
    return std::move(text).str();
}

/// The document; of one that is malformed, whatever the reader made of it, usually nothing.
Json::Value ReadDocument(const std::string& text)
{
    Json::CharReaderBuilder builder;
    builder["collectComments"] = true;
    builder["allowComments"] = true;
    const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
    Json::Value root;
    reader->parse(text.data(), text.data() + text.size(), &root, nullptr);
    return root;
}

/// A string, "true" or "false" of a boolean, or the empty text of null. The reader's library would
/// turn a number into text silently; here it is a wrong type like the others.
std::string ReadString(const Json::Value& value)
{
    if (value.isNumeric() && !value.isBool()) {
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
    for (Json::ArrayIndex i = 0; i < references.size(); ++i) {
        node->AddReference(ReadString(references[i]));
    }
    return node;
}

}  // namespace

void MorlCompiler::LoadNodeDefinition(std::string path)
{
    const std::optional<std::string> text = ReadFile(path);
    if (!text) {
        LogGraphicsError("Can't Find File: " + path);
        return;
    }
    const Json::Value root = ReadDocument(*text);
    if (!root.isArray()) {
        return;
    }
    for (const Json::Value& element : root) {
        if (element.isObject() || element.isNull()) {
            std::unique_ptr<MorlNode> node = ReadNode(element);
            StoreNode(node.get());
            node.release();
        } else {
            LogGraphicsError("Morl Compiler: node definition is not an object: " + path);
        }
    }
}

// Takes the node over, unless an exception passes through. A node of the same name makes way.
void MorlCompiler::StoreNode(MorlNode* node)
{
    MorlNode*& stored = nodes[node->GetName()];
    delete stored;
    stored = node;
}

}  // namespace ns_ruke
