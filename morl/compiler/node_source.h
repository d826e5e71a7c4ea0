// SPDX-License-Identifier: MIT
// A node as a text file of its own, which people and editors read:
//
//     //! ref: normal_vertex, view_vector
//     //! at: 320 40
//     void main()
//     ...
//
// The header is the lines at the beginning that start with "//!". Each holds a word, ":" and a
// value: "ref", names separated by commas (several such lines add up); "at", x and y; "name", which
// is needed only where the name of the file is not the node's; or a JSON string and a JSON value, a
// further member of the node's object that other tools keep there. A name is written plainly, or as
// a JSON string. The header ends at the first other line, or with a line that holds "//!" alone.
// What follows, without one final line break, is the content, byte for byte.
#pragma once

#include "morl/compiler/node_text.h"
#include "morl/core/export.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ns_ruke {

/// A node as its source has it.
struct NodeSource {
    bool hasName = false;  ///< whether the header has the name
    std::string name;
    std::vector<std::string> references;
    double x = 0;
    double y = 0;
    std::vector<std::pair<std::string, std::string>> members;  ///< further ones, with their JSON
    std::string content;
    int contentLine = 1;  ///< the line of the source, 1-based, on which the content begins
};

/// What is wrong with the header of a source, and where.
struct NodeSourceFault {
    bool isWarning = false;  ///< whether the source can be used all the same
    int line = 0;            ///< 1-based
    int column = 0;          ///< 1-based, in bytes; a byte order mark does not count
    std::string text;        ///< what is wrong and what to do
};

/// Reads a node source. A byte order mark at its beginning is skipped. If the first line ends in CR
/// LF, every CR LF counts as a line feed. A header line that comes too late is part of the content,
/// and a warning, unless a lone "//!" has ended the header. May be called by several threads.
/// @param faults receives what is wrong; with an error among it, the result is incomplete
MORL_API NodeSource ReadNodeSource(std::string_view text, std::vector<NodeSourceFault>& faults);

/// Writes a node source, which ReadNodeSource turns into the same node, whatever bytes it holds. It
/// ends in a line break, unless it is empty. May be called by several threads.
MORL_API std::string WriteNodeSource(const NodeSource& source);

/// The nodes of a text in the format of node files, with all that they hold, in their order. Each
/// has its name. May be called by several threads.
/// @param faults receives what is wrong with the text; then there are no nodes
MORL_API std::vector<NodeSource> ReadNodeText(const NodeText& text,
                                              std::vector<NodeTextFault>& faults);

/// Writes nodes in the format of node files, always in the same way: in byte order of their names,
/// a member a line, the content last. May be called by several threads.
MORL_API std::string WriteNodeText(const std::vector<NodeSource>& nodes);

}  // namespace ns_ruke
