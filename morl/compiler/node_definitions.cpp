// SPDX-License-Identifier: MIT
// The nodes of a compiler: from files, from texts, one by one.
#include "morl/check/internal/node_index.h"
#include "morl/compiler/internal/node_reader.h"
#include "morl/compiler/morl_compiler.h"
#include "morl/core/internal/graphics_log.h"
#include "morl/core/internal/read_file.h"
#include "morl/core/messages.h"

#include <memory>
#include <optional>
#include <utility>

namespace ns_ruke {

void MorlCompiler::LoadNodeDefinition(std::string path)
{
    const std::optional<std::string> text = ReadFile(path);
    if (!text) {
        LogGraphicsError(messages::kFileNotFound + path);
        return;
    }
    const NodeDocument document = ReadNodeDocument(*text);
    if (!document.root.isArray()) {
        return;
    }
    for (const Json::Value& element : document.root) {
        if (element.isObject() || element.isNull()) {
            std::unique_ptr<MorlNode> node = ReadNode(element);
            StoreNode(node.get());
            node.release();
        } else {
            LogGraphicsError(messages::kNodeNotObject + path);
        }
    }
}

NodeTextResult MorlCompiler::LoadNodes(const NodeText& text)
{
    NodeTextResult result;
    std::vector<std::unique_ptr<MorlNode>> read = ReadNodes(text, result);
    result.nodes.reserve(read.size());
    for (const std::unique_ptr<MorlNode>& node : read) {
        result.nodes.push_back(node->name);
    }
    StoreNodes(read);
    return result;
}

void MorlCompiler::SetNode(const std::string& name, const std::string& content,
                           const std::vector<std::string>& references, float x, float y)
{
    std::vector<std::unique_ptr<MorlNode>> list(1);
    list[0] = std::make_unique<MorlNode>();
    list[0]->SetName(name);
    list[0]->SetPosition(x, y);
    list[0]->SetContent(content);
    for (const std::string& reference : references) {
        list[0]->AddReference(reference);
    }
    StoreNodes(list);
}

bool MorlCompiler::RemoveNode(const std::string& name)
{
    const auto found = nodes.find(name);
    if (found == nodes.end()) {
        return false;
    }
    if (index) {
        index->Remove(name);
    }
    delete found->second;
    nodes.erase(found);
    return true;
}

// Takes ownership of the node, unless an exception passes through. Replaces a node of the same
// name.
void MorlCompiler::StoreNode(MorlNode* node)
{
    MorlNode*& stored = nodes[node->GetName()];
    delete stored;
    stored = node;
}

// Takes ownership of all nodes, or of none if an exception passes through. A node whose content is
// unchanged keeps its program.
void MorlCompiler::StoreNodes(std::vector<std::unique_ptr<MorlNode>>& list)
{
    std::unordered_map<std::string, MorlNode*> added;
    for (const std::unique_ptr<MorlNode>& node : list) {
        added[node->name] = nullptr;
    }
    nodes.reserve(nodes.size() + added.size());
    nodes.merge(added);
    for (const std::unique_ptr<MorlNode>& node : list) {
        if (index) {
            index->Change(node->name);
        }
    }
    // From here on nothing can fail: there is room, and hashing a string does not throw.
    for (std::unique_ptr<MorlNode>& node : list) {
        MorlNode*& stored = nodes.find(node->name)->second;
        if (stored != nullptr) {
            node->TakeProgram(*stored);
            delete stored;
        }
        stored = node.release();
    }
}

}  // namespace ns_ruke
