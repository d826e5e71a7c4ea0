// SPDX-License-Identifier: MIT
#pragma once

#include "report/source_text.h"

#include <morl/core/text_lines.h>
#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace morlc {

/// Which files the nodes are from, as messages show them, and where in them.
class NodeOrigins {
public:
    /// @param text of a node file
    /// @param content where the node's content stands in it, in bytes
    /// @param references where the list of its references stands, likewise
    void AddFromNodeFile(const std::string& node, std::shared_ptr<const SourceText> text,
                         std::size_t content, std::size_t references);

    /// @param text of a node source
    /// @param nodeFile the node file that it belongs to
    /// @param contentLine the line of the source on which the content begins
    void AddFromSource(const std::string& node, SourceText text, const std::string& nodeFile,
                       int contentLine);

    /// The file of a node; empty: none.
    std::string FileOf(const std::string& node) const;

    /// The node file that a node is from, or that its source belongs to; empty: none.
    std::string NodeFileOf(const std::string& node) const;

    /// The place in its file of a place in a node's content; without a line, where the content
    /// begins. Has no excerpt.
    Place OnDisk(const std::string& node, const ns_ruke::TextPlace& place) const;

    /// The place in its file of a reference of a node, with an excerpt; line 0 if it is not found.
    Place ReferenceOnDisk(const std::string& node, const std::string& reference) const;

    /// The names of all nodes, in byte order.
    std::vector<std::string> Names() const;

private:
    struct Origin {
        std::string nodeFile;
        std::shared_ptr<const SourceText> text;  ///< of the node file, or of the source
        int contentLine = 0;                     ///< of the source; 0: it is in the node file
        std::size_t content = 0;                 ///< where in the node file
        std::size_t references = 0;              ///< likewise
    };

    std::map<std::string, Origin> origins;  ///< by node
};

}  // namespace morlc
