// SPDX-License-Identifier: MIT
#pragma once

#include "morl/core/export.h"
#include "morl/core/text_lines.h"

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ns_ruke {

/// Nodes in the format of the node files, held in memory: a JSON array of objects with "name", "x",
/// "y", "content" and "ref". Comments are allowed, and what follows the array is ignored. Members
/// may be missing or null; booleans count as the texts "true" and "false", or as 1 and 0.
struct NodeText {
    std::string name;  ///< what messages call the text, such as the path of its file
    std::string text;
};

/// What is wrong with a text of nodes, and where.
struct NodeTextFault {
    std::string file;  ///< the name of the text
    std::string node;  ///< the name of the node that has the fault; empty if it is not known
    int line = 0;      ///< 1-based line in the text; 0: no place
    int column = 0;    ///< 1-based, in bytes; 0: no place
    std::string text;  ///< what is wrong and what is expected
};

/// The result of loading a text of nodes.
struct NodeTextResult {
    std::vector<NodeTextFault> faults;  ///< what is wrong; unless empty, nothing has been loaded
    std::vector<std::string> nodes;     ///< the names of the nodes that were loaded, in their order
    /// Where the content of each of them stands in the text, in bytes from its beginning (a byte
    /// order mark does not count). If a node has no content, this is where the node stands.
    std::vector<std::size_t> contents;
    /// Where the list of references of each of them stands, likewise.
    std::vector<std::size_t> references;
};

/// Where in a text of nodes a place of a node's content is, through all escapes. What is behind the
/// end of a line, or of the content, is at that end. May be called by several threads.
/// @param text the text, without a byte order mark
/// @param content as NodeTextResult has it
/// @param place in the content; its lines end at line feeds
MORL_API TextPlace PlaceInNodeText(std::string_view text, std::size_t content,
                                   const TextPlace& place);

/// Texts of nodes that cannot be loaded. `what()` describes the first fault.
class MORL_API NodeTextError : public std::runtime_error {
public:
    /// @param newFaults at least one
    explicit NodeTextError(std::vector<NodeTextFault> newFaults)
        : std::runtime_error(Describe(newFaults.front())), faults(std::move(newFaults))
    {
    }
    NodeTextError(const NodeTextError&) = default;
    NodeTextError& operator=(const NodeTextError&) = default;
    ~NodeTextError() override;

    std::vector<NodeTextFault> faults;

private:
    static std::string Describe(const NodeTextFault& fault)
    {
        const std::string place =
            fault.line > 0 ? ":" + std::to_string(fault.line) + ":" + std::to_string(fault.column)
                           : "";
        return fault.file + place + ": " + fault.text;
    }
};

}  // namespace ns_ruke
