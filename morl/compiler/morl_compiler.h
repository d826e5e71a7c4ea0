// SPDX-License-Identifier: MIT
#pragma once

#include "morl/compiler/morl_node.h"
#include "morl/compiler/node_text.h"
#include "morl/compiler/pass_property.h"
#include "morl/compiler/pass_report.h"
#include "morl/compiler/shader_output.h"
#include "morl/core/export.h"

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace ns_ruke {

class NodeIndex;

/// The compiler: holds the shader graph and turns requests into source text.
///
/// Only one thread may use it at a time. Several compilers may work on several threads; they share
/// nothing but the log. Do not copy compilers: a copy shares the nodes of its original, and both
/// destructors would delete them.
class MORL_API MorlCompiler {
public:
    /// Loads the nodes from the files of kNodeFiles. Each is a JSON array of objects with "name",
    /// "x", "y", "content" and "ref". A file that cannot be read is reported and skipped. If
    /// several nodes have the same name, the last one wins. A malformed file, or one that is not an
    /// array, is skipped silently.
    /// @throws Json::LogicError when a value has the wrong JSON type, Json::RuntimeError when a
    ///         file nests deeper than kMaxJsonNesting. Nothing leaks then.
    MorlCompiler();

    /// Loads the same files below another directory; messages name them with it.
    explicit MorlCompiler(const std::string& directory);

    /// Loads nodes from memory, and reads no file. Later texts win over earlier ones.
    /// @param texts may be empty; then the compiler has no nodes.
    /// @throws NodeTextError when a text has faults.
    explicit MorlCompiler(const std::vector<NodeText>& texts);

    MorlCompiler(const MorlCompiler&) = default;
    MorlCompiler& operator=(const MorlCompiler&) = default;
    virtual ~MorlCompiler();

    /// Runs one request. Problems are logged, and the shader is written from whatever could be
    /// read. Only an unknown node or target prevents this; `output` is then unchanged.
    ///
    /// A node is parsed at the first request that names it, and again when the target differs from
    /// the one that it was last parsed for. Only standard-library exceptions, such as
    /// std::bad_alloc, pass through; `output` is then unchanged, and the compiler stays usable.
    /// @param pass is only read.
    void Compile(PassProperty& pass, ShaderOutput& output);

    /// The same, and fills a report, which is cleared first. After an exception it is valid, but
    /// what it has is incomplete; this holds for the warnings as well.
    /// @return whether the output was written. If not, PassReport::end and the faults say why, and
    ///         the report has nothing else.
    bool CompileReported(PassProperty& pass, ShaderOutput& output, PassReport& report,
                         ReportParts parts = ReportParts::All);

    /// The same, and also collects warnings.
    /// @param warnings are cleared first. See MorlChecks, and CheckStages for both passes.
    bool CompileReported(PassProperty& pass, ShaderOutput& output, PassReport& report,
                         std::vector<ReportWarning>& warnings);

    /// Loads all nodes of a text, which must be a list of nodes in the format of the node files
    /// (comments are allowed). Nodes of the same names are replaced.
    ///
    /// This and the following operations may be called at any time between requests. The next
    /// request parses those of its nodes whose content has changed, and no others. Pointers to
    /// replaced and removed nodes become invalid.
    /// @return what is wrong with the text, if anything is; then nothing has been changed.
    [[nodiscard]] NodeTextResult LoadNodes(const NodeText& text);

    /// Adds a node or replaces the one of the same name.
    /// @param x, y the place on an editor's canvas; the compiler does not use it.
    void SetNode(const std::string& name, const std::string& content,
                 const std::vector<std::string>& references = {}, float x = 0.0F, float y = 0.0F);

    /// Removes a node. Other nodes may still refer to its name; such references do not count.
    /// @return whether there was such a node.
    bool RemoveNode(const std::string& name);

    /// The names of all nodes, in ascending byte order.
    std::vector<std::string> GetNodeNames() const;

    /// The node with this name, or null. The compiler owns it.
    const MorlNode* FindNode(const std::string& name) const;

private:
    RequestEnd Run(PassProperty& pass, ShaderOutput& output, PassReport* report,
                   std::vector<ReportWarning>* warnings);
    bool ParseNodes(const std::vector<MorlNode*>& list, const PassProperty& pass,
                    PassReport* report);
    bool RunReported(PassProperty& pass, ShaderOutput& output, PassReport& report,
                     std::vector<ReportWarning>* warnings);
    void LoadNodeDefinition(std::string path);
    void ReferenceNodes(std::unordered_set<MorlNode*>& set, MorlNode* node);
    void StoreNode(MorlNode* node);
    void StoreNodes(std::vector<std::unique_ptr<MorlNode>>& list);
    void DeleteNodes();
    bool ReportUnknown(const PassProperty& pass) const;
    std::vector<MorlNode*> SelectNodes(const PassProperty& pass);

    std::unordered_map<std::string, MorlNode*> nodes;  ///< owned, by name
    std::uint64_t requests = 0;                        ///< how many have selected nodes
    std::shared_ptr<NodeIndex> index;  ///< of these nodes; null until a warning needs it
};

}  // namespace ns_ruke
