// SPDX-License-Identifier: MIT
#include "request_input.h"

#include <morl/core/string_helper.h>
#include <algorithm>

namespace morl_fuzz {
namespace {

using ns_ruke::StringHelper;

/// Large loops find nothing new and cost time; the bound on iterations has its own test.
constexpr int kLargestMacro = 60;
constexpr std::size_t kMostNodes = 48;

std::pair<std::string, std::string> SplitOnce(const std::string& text, char separator)
{
    const std::size_t at = std::min(text.find(separator), text.size());
    return {text.substr(0, at), at < text.size() ? text.substr(at + 1) : std::string()};
}

RequestInput::Node ReadNode(const std::string& piece)
{
    const auto [references, source] = SplitOnce(piece, '|');
    return {StringHelper::Split(references, " ", true), source};
}

}  // namespace

RequestInput ReadRequest(const std::string& bytes)
{
    const std::vector<std::string> pieces =
        StringHelper::Split(bytes, std::string(1, kPieceEnd), false);
    std::vector<std::string> head = StringHelper::Split(pieces[0], ";", false);
    head.resize(3);
    RequestInput request;
    request.stage = StringHelper::ConvertToInt32(head[0]);
    for (const std::string& macro : StringHelper::Split(head[1], ",", true)) {
        const auto [name, value] = SplitOnce(macro, '=');
        request.macros.emplace_back(name,
                                    std::min(StringHelper::ConvertToInt32(value), kLargestMacro));
    }
    for (const std::string& semantic : StringHelper::Split(head[2], ",", true)) {
        request.semantics.push_back(SplitOnce(semantic, '='));
    }
    for (std::size_t i = 1; i < pieces.size() && i <= kMostNodes; ++i) {
        request.nodes.push_back(ReadNode(pieces[i]));
    }
    return request;
}

std::string WriteRequest(const RequestInput& request)
{
    std::string bytes = std::to_string(request.stage) + ";";
    for (const auto& [name, value] : request.macros) {
        bytes.append(name).append("=").append(std::to_string(value)).append(",");
    }
    bytes += ";";
    for (const auto& [name, semantic] : request.semantics) {
        bytes.append(name).append("=").append(semantic).append(",");
    }
    for (const RequestInput::Node& node : request.nodes) {
        bytes += kPieceEnd;
        for (const std::string& reference : node.references) {
            bytes.append(reference).append(" ");
        }
        bytes.append("|").append(node.source);
    }
    return bytes;
}

}  // namespace morl_fuzz
