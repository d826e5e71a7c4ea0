// SPDX-License-Identifier: MIT
#pragma once

#include "morl/compiler/morl_node.h"
#include "morl/compiler/pass_property.h"
#include "morl/compiler/shader_output.h"
#include "morl/core/export.h"

#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace ns_ruke {

/// The compiler: holds the shader graph and turns requests into source text.
///
/// It is used by one thread at a time. Several compilers may work on several threads; they share
/// nothing but the log. A copied compiler shares the nodes of its original and both destructors
/// would delete them, so compilers are not meant to be copied.
class MORL_API MorlCompiler {
public:
    /// Loads the nodes from the files of kNodeFiles. Each is a JSON array of objects with "name",
    /// "x", "y", "content" and "ref". A file that cannot be read is logged and left out. Of several
    /// nodes of one name the last one stays. A malformed file, or one that is not an array, is
    /// skipped silently.
    /// @throws Json::LogicError when a value has the wrong JSON type, Json::RuntimeError when a
    ///         file nests deeper than kMaxJsonNesting. Nothing leaks then.
    MorlCompiler();
    MorlCompiler(const MorlCompiler&) = default;
    MorlCompiler& operator=(const MorlCompiler&) = default;
    virtual ~MorlCompiler();

    /// Runs one request. Problems are logged; the shader is written from what remains. Only an
    /// unknown node or target prevents it: then `output` is left as it is.
    ///
    /// A node is parsed at the first request that names it, and again when the target differs from
    /// the one that it was last parsed for. Only exceptions of the standard library pass through,
    /// such as a failed allocation; then `output` is left as it is and the compiler stays usable.
    /// @param pass is only read.
    void Compile(PassProperty& pass, ShaderOutput& output);

    /// The names of all nodes, in ascending byte order.
    std::vector<std::string> GetNodeNames() const;

    /// The node of a name, or null. It belongs to the compiler and lives as long.
    const MorlNode* FindNode(const std::string& name) const;

private:
    void LoadNodeDefinition(std::string path);
    void ReferenceNodes(std::unordered_set<MorlNode*>& set, MorlNode* node);
    void StoreNode(MorlNode* node);
    void DeleteNodes();
    bool ReportUnknown(const PassProperty& pass) const;
    std::vector<MorlNode*> SelectNodes(const PassProperty& pass) const;
    std::vector<MorlNode*> SelectManyNodes(const PassProperty& pass) const;

    std::unordered_map<std::string, MorlNode*> nodes;  ///< owned, by name
};

}  // namespace ns_ruke
