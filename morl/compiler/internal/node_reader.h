// SPDX-License-Identifier: MIT
#pragma once

#include "morl/compiler/morl_node.h"
#include "morl/compiler/node_text.h"

#include <json/json.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace ns_ruke {

/// The document of a node file. Anything after it is ignored.
struct NodeDocument {
    Json::Value root;
    std::string errors;  ///< the messages of the JSON reader; empty if the document is well-formed
};

/// Parses the text of a node file.
/// @throws Json::RuntimeError when it nests deeper than kMaxJsonNesting.
NodeDocument ReadNodeDocument(std::string_view text);

/// Makes a node of an element of a document.
/// @throws Json::LogicError when a value has the wrong type.
std::unique_ptr<MorlNode> ReadNode(const Json::Value& element);

/// Reads a text of nodes. Unlike the files that a compiler loads, a text with faults is not used.
/// @param faults receives what is wrong with the text
/// @param take receives the elements that are nodes without faults, in their order
/// @return whether there are no faults
bool ReadElements(const NodeText& source, std::vector<NodeTextFault>& faults,
                  const std::function<void(const Json::Value&)>& take);

/// Makes all nodes of a text, or none.
/// @param result receives what is wrong with the text, and where the contents and references of the
///        nodes stand
std::vector<std::unique_ptr<MorlNode>> ReadNodes(const NodeText& source, NodeTextResult& result);

}  // namespace ns_ruke
