// SPDX-License-Identifier: MIT
// Any bytes as a node source, and as the parts of a node that is written as one.
#include "oracle.h"

#include <morl/compiler/node_source.h>
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace {

using ns_ruke::NodeSource;

bool HasErrors(const std::vector<ns_ruke::NodeSourceFault>& faults)
{
    return std::any_of(faults.begin(), faults.end(),
                       [](const auto& fault) { return !fault.isWarning; });
}

/// Whatever a node holds, its source has it.
void CheckRoundTrip(const NodeSource& node)
{
    const std::string text = ns_ruke::WriteNodeSource(node);
    std::vector<ns_ruke::NodeSourceFault> faults;
    const NodeSource read = ns_ruke::ReadNodeSource(text, faults);
    if (!faults.empty() || read.hasName != node.hasName || read.name != node.name ||
        read.references != node.references || read.x != node.x || read.y != node.y ||
        read.members != node.members || read.content != node.content) {
        morl_fuzz::Fail("a node is not what was written");
    }
    if (ns_ruke::WriteNodeSource(read) != text) {
        morl_fuzz::Fail("a source that was written is not written again");
    }
}

/// A text of nodes has whatever its nodes hold, and is always the same.
void CheckText(const std::vector<NodeSource>& nodes)
{
    const std::string text = ns_ruke::WriteNodeText(nodes);
    std::vector<ns_ruke::NodeTextFault> faults;
    const std::vector<NodeSource> read = ns_ruke::ReadNodeText({"", text}, faults);
    if (!faults.empty() || read.size() != nodes.size() || ns_ruke::WriteNodeText(read) != text) {
        morl_fuzz::Fail("a text of nodes is not what was written");
    }
    for (const NodeSource& node : read) {
        CheckRoundTrip(node);
    }
}

/// A node with parts of the input, which begins with their lengths.
NodeSource NodeOf(std::string input)
{
    const auto take = [&input](std::size_t count) {
        std::string part = input.substr(0, count);
        input.erase(0, count);
        return part;
    };
    const std::string sizes = take(3);
    const auto sizeOf = [&sizes](std::size_t i) {
        constexpr unsigned kLongest = 32;
        return i < sizes.size() ? static_cast<unsigned char>(sizes[i]) % kLongest : 0U;
    };
    NodeSource node;
    node.hasName = sizeOf(0) > 0;
    node.name = take(sizeOf(0));
    for (std::size_t i = 1; i < 3 && sizeOf(i) > 0; ++i) {
        node.references.push_back(take(sizeOf(i)));
        node.x += 0.1 * static_cast<double>(sizeOf(i));
        node.y -= 1.0 / static_cast<double>(sizeOf(i));
    }
    node.content = input;
    return node;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string input(data, data + size);
    std::vector<ns_ruke::NodeSourceFault> faults;
    const NodeSource read = ns_ruke::ReadNodeSource(input, faults);
    if (!HasErrors(faults)) {
        CheckRoundTrip(read);
    }
    const NodeSource node = NodeOf(input);
    CheckRoundTrip(node);
    CheckText({node});
    std::vector<ns_ruke::NodeTextFault> textFaults;
    CheckText(ns_ruke::ReadNodeText({"", input}, textFaults));
    return 0;
}
