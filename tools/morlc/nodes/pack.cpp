// SPDX-License-Identifier: MIT
#include "nodes/pack.h"

#include "build/dependencies.h"
#include "json_file.h"
#include "nodes/node_document.h"
#include "nodes/node_files.h"
#include "nodes/source_files.h"
#include "output_file.h"
#include "path.h"
#include "platform.h"
#include "text.h"

#include <morl/morl.h>
#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace morlc {
namespace {

namespace fs = std::filesystem;
using ns_ruke::NodeSource;

/// A node file and the sources that belong to it.
struct NodeSet {
    NodeDocument document;
    std::vector<SourceFile> sources;
};

std::string Counted(std::size_t count)
{
    return std::to_string(count) + (count == 1 ? " node" : " nodes");
}

/// All nodes below the current directory, with all that their files hold.
class NodeTree {
public:
    NodeTree(std::string newPrefix, Diagnostics& newDiagnostics)
        : prefix(std::move(newPrefix)), diagnostics(newDiagnostics)
    {
        RequireNodeFolder(prefix);
        LockFolder("morl");
        // What a header says with an unknown word would be lost.
        diagnostics.SetWarningsAsErrors(true);
        for (const char* path : ns_ruke::kNodeFiles) {
            if (!fs::exists(ToPath(path)) && !HasSourceFolder()) {
                diagnostics.ReportMissingFile(Shown(path), path);
            }
            Read(path);
        }
        WarnOfStraySources(prefix, diagnostics);
    }

    /// Whether all could be read, and no node is in two places.
    bool IsValid() const { return isValid && diagnostics.ErrorCount() == 0; }

    std::vector<NodeSet>& Sets() { return sets; }

    std::string Shown(const std::string& path) const { return AsGiven(prefix, ToPath(path)); }

    /// Reports what would be lost if a node file were written again.
    /// @return whether it may be
    bool MayRewrite(const NodeDocument& document, bool isForced)
    {
        if (isForced || document.losses.empty()) {
            return true;
        }
        for (const Place& place : document.losses) {
            diagnostics.Report(ErrorAt(place, "this would be lost; move it, or use --force"));
        }
        return false;
    }

    /// Writes a node file, if it is as it was read.
    void Rewrite(const NodeDocument& document, const std::string& text) const
    {
        const std::string& path = document.path;
        const bool isDone =
            document.exists ? WriteOver(path, document.text.Text(), text) : WriteNew(path, text);
        if (!isDone) {
            FailAsChanged(path);
        }
    }

    /// Removes a source that the node file has, if it is as it was read.
    void Remove(const SourceFile& file) const
    {
        if (RemoveKnown(file.path, file.text.Text())) {
            return;
        }
        if (errno == 0) {
            FailAsChanged(file.path);
        }
        throw std::runtime_error("cannot remove " + Shown(file.path) + ": " +
                                 std::generic_category().message(errno) +
                                 "; its node is in the node file as well");
    }

    [[noreturn]] void FailAsChanged(const std::string& path) const
    {
        throw std::runtime_error(Shown(path) +
                                 " has been changed meanwhile; it stays, run this again");
    }

private:
    void Read(const std::string& path)
    {
        std::optional<NodeDocument> document = ReadNodeDocument(path, prefix, diagnostics);
        isValid = document && isValid;
        NodeSet& set = sets.emplace_back();
        if (document) {
            set.document = std::move(*document);
        }
        for (const NodeSource& node : set.document.nodes) {
            fileByNode.emplace(node.name, path);
        }
        for (const std::string& source : ListSources(path)) {
            std::optional<SourceFile> file = ReadSourceFile(source, prefix, diagnostics);
            isValid = file && isValid;
            if (file) {
                Add(set, std::move(*file));
            }
        }
    }

    /// A node can be both in the node file and in a source of it, as an interrupted command leaves
    /// it, if both are the same.
    void Add(NodeSet& set, SourceFile file)
    {
        const auto isOther = [&](const NodeSource& node) {
            return node.name == file.name && !IsSameNode(node, file.source);
        };
        const std::vector<NodeSource>& nodes = set.document.nodes;
        const auto [other, isNew] = fileByNode.emplace(file.name, file.path);
        const bool isTwin =
            other->second == set.document.path && std::none_of(nodes.begin(), nodes.end(), isOther);
        if (!isNew && !isTwin) {
            const std::string text = "node '" + file.name + "' is also in " + Shown(other->second) +
                                     "; remove the one that you do not want";
            diagnostics.Report(ErrorAt({Shown(file.path), 1, 1}, text));
            isValid = false;
        }
        file.source.hasName = true;
        file.source.name = file.name;
        set.sources.push_back(std::move(file));
    }

    std::string prefix;
    Diagnostics& diagnostics;
    bool isValid = true;
    std::vector<NodeSet> sets;
    std::map<std::string, std::string> fileByNode;
};

/// The text of a node file that has the nodes of the sources, too.
std::string PackedText(const NodeSet& set)
{
    std::vector<NodeSource> nodes = set.document.nodes;
    for (const SourceFile& file : set.sources) {
        const auto isSame = [&](const NodeSource& node) { return node.name == file.name; };
        nodes.erase(std::remove_if(nodes.begin(), nodes.end(), isSame), nodes.end());
        nodes.push_back(file.source);
    }
    return ns_ruke::WriteNodeText(nodes);
}

/// Writes all node files below a directory.
void PackElsewhere(NodeTree& tree, const PackOptions& options, const std::string& prefix)
{
    std::vector<std::string> inputs;
    std::vector<std::string> outputs;
    for (const NodeSet& set : tree.Sets()) {
        if (fs::exists(ToPath(set.document.path))) {
            inputs.push_back(tree.Shown(set.document.path));
        }
        if (fs::is_directory(ToPath(SourceFolder(set.document.path)))) {
            inputs.push_back(tree.Shown(SourceFolder(set.document.path)));
        }
        for (const SourceFile& file : set.sources) {
            inputs.push_back(tree.Shown(file.path));
            ProtectInput(file.path);
        }
        ProtectInput(set.document.path);
    }
    for (const NodeSet& set : tree.Sets()) {
        const fs::path output = ToPath(options.output) / ToPath(set.document.path);
        WriteIfChanged(PathText(output), {PackedText(set)}, ToPath(options.output));
        outputs.push_back(AsGiven(prefix, output));
    }
    if (!options.depfile.empty()) {
        WriteIfChanged(options.depfile, {FormatDepfile(outputs, inputs)});
    }
}

/// A link to a folder is somebody's own, and stays.
void RemoveEmptyFolder(const fs::path& folder)
{
    std::error_code isNotEmpty;
    if (!fs::is_symlink(folder, isNotEmpty)) {
        fs::remove(folder, isNotEmpty);
    }
}

void PackInPlace(NodeTree& tree, bool isForced)
{
    bool mayRewrite = true;
    for (const NodeSet& set : tree.Sets()) {
        if (!set.sources.empty()) {
            mayRewrite = tree.MayRewrite(set.document, isForced) && mayRewrite;
        }
    }
    if (!mayRewrite) {
        return;
    }
    for (const NodeSet& set : tree.Sets()) {
        for (const SourceFile& file : set.sources) {
            RefuseReadOnly(file.path);
        }
    }
    for (const NodeSet& set : tree.Sets()) {
        // Without sources, all node files are needed.
        if (!set.sources.empty() || !set.document.exists) {
            tree.Rewrite(set.document, PackedText(set));
        }
    }
    std::string told;
    for (const NodeSet& set : tree.Sets()) {
        for (const SourceFile& file : set.sources) {
            tree.Remove(file);
        }
        RemoveEmptyFolder(ToPath(SourceFolder(set.document.path)));
        if (!set.sources.empty()) {
            told +=
                tree.Shown(set.document.path) + ": " + Counted(set.sources.size()) + " packed\n";
        }
    }
    WriteWhole("-", told);
}

/// Chooses the files of new sources.
class SourceNames {
public:
    explicit SourceNames(const NodeSet& set) : folder(SourceFolder(set.document.path))
    {
        for (const SourceFile& file : set.sources) {
            taken.insert(Folded(PathText(ToPath(file.path).stem())));
        }
    }

    /// The path for a node. If it does not follow from the node's name, the source gets the name.
    std::string Take(NodeSource& node)
    {
        std::string stem = node.name;
        node.hasName = !IsFileName(stem) || taken.count(Folded(stem)) > 0;
        if (node.hasName) {
            stem = SafeStem(node.name);
        }
        // A node may be called like the file of another one.
        while (!taken.insert(Folded(stem)).second) {
            stem += '_';
        }
        return folder + "/" + stem + kSourceEnding;
    }

private:
    std::string folder;
    std::set<std::string> taken;
};

/// A node that is to become a source.
struct NewSource {
    std::string path;
    NodeSource node;
    bool isMade = false;  ///< whether an interrupted run has written it
};

/// One run of "morlc unpack".
class Unpacking {
public:
    Unpacking(NodeTree& newTree, const UnpackOptions& newOptions, Diagnostics& newDiagnostics)
        : tree(newTree), options(newOptions), diagnostics(newDiagnostics)
    {
    }

    void Run()
    {
        if (!CheckNames()) {
            return;
        }
        bool mayRewrite = true;
        std::vector<std::vector<NewSource>> plans;
        for (const NodeSet& set : tree.Sets()) {
            plans.push_back(Plan(set));
            if (!plans.back().empty()) {
                mayRewrite = tree.MayRewrite(set.document, options.isForced) && mayRewrite;
            }
        }
        if (!mayRewrite || diagnostics.ErrorCount() > 0) {
            return;
        }
        for (std::size_t i = 0; i < plans.size(); ++i) {
            if (!plans[i].empty()) {
                RefuseReadOnly(tree.Sets()[i].document.path);
            }
        }
        for (const std::vector<NewSource>& plan : plans) {
            WriteSources(plan);
        }
        for (std::size_t i = 0; i < plans.size(); ++i) {
            Rewrite(tree.Sets()[i], plans[i]);
        }
    }

private:
    bool IsWanted(const std::string& node) const
    {
        return options.nodes.empty() ||
               std::find(options.nodes.begin(), options.nodes.end(), node) != options.nodes.end();
    }

    /// Reports names that no node has.
    bool CheckNames()
    {
        std::vector<std::string> known;
        for (const NodeSet& set : tree.Sets()) {
            for (const NodeSource& node : set.document.nodes) {
                known.push_back(node.name);
            }
            for (const SourceFile& file : set.sources) {
                known.push_back(file.name);
            }
        }
        bool isValid = true;
        for (const std::string& name : options.nodes) {
            if (std::find(known.begin(), known.end(), name) == known.end()) {
                diagnostics.Error(ns_ruke::messages::kUnknownNode + name + Suggestion(known, name));
                isValid = false;
            }
        }
        return isValid;
    }

    /// The sources that are to be made of a node file, also those that an interrupted run has made.
    std::vector<NewSource> Plan(const NodeSet& set)
    {
        SourceNames names(set);
        std::vector<NewSource> plan;
        std::vector<NodeSource> nodes = set.document.nodes;
        std::sort(nodes.begin(), nodes.end(),
                  [](const NodeSource& a, const NodeSource& b) { return a.name < b.name; });
        for (NodeSource& node : nodes) {
            if (!IsWanted(node.name)) {
                continue;
            }
            const auto [other, isNew] = fileByNode.emplace(node.name, set.document.path);
            if (!isNew) {
                std::string text = "two nodes are called '" + node.name + "'; rename one";
                text += other->second != set.document.path
                            ? " (the other is in " + tree.Shown(other->second) + ")"
                            : "";
                diagnostics.Report(ErrorAt({tree.Shown(set.document.path)}, text));
                continue;
            }
            const auto made =
                std::find_if(set.sources.begin(), set.sources.end(),
                             [&](const SourceFile& file) { return file.name == node.name; });
            const bool isMade = made != set.sources.end();
            const std::string path = isMade ? made->path : names.Take(node);
            if (!isMade && fs::exists(fs::symlink_status(ToPath(path)))) {
                diagnostics.Error(tree.Shown(path) + " is in the way; move it");
            }
            plan.push_back({path, std::move(node), isMade});
        }
        return plan;
    }

    void WriteSources(const std::vector<NewSource>& plan)
    {
        for (const NewSource& source : plan) {
            if (!source.isMade) {
                MakeDirectories(PathText(ToPath(source.path).parent_path()));
                if (!WriteNew(source.path, ns_ruke::WriteNodeSource(source.node))) {
                    throw std::runtime_error(tree.Shown(source.path) +
                                             " has appeared meanwhile; it stays, run this again");
                }
            }
        }
    }

    void Rewrite(const NodeSet& set, const std::vector<NewSource>& plan)
    {
        if (plan.empty()) {
            return;
        }
        std::vector<NodeSource> rest;
        for (const NodeSource& node : set.document.nodes) {
            if (!IsWanted(node.name)) {
                rest.push_back(node);
            }
        }
        tree.Rewrite(set.document, ns_ruke::WriteNodeText(rest));
        WriteWhole("-", tree.Shown(SourceFolder(set.document.path)) + "/: " + Counted(plan.size()) +
                            " unpacked\n");
    }

    NodeTree& tree;
    const UnpackOptions& options;
    Diagnostics& diagnostics;
    std::map<std::string, std::string> fileByNode;  ///< of the nodes that become sources
};

/// What an interrupted run has left beside the files that this one writes.
void RemoveAllLeftovers()
{
    RemoveLeftovers("morl");
    for (const char* path : ns_ruke::kNodeFiles) {
        RemoveLeftovers(SourceFolder(path));
    }
}

}  // namespace

void Pack(const Options& options, Diagnostics& diagnostics)
{
    const std::string prefix = EnterDirectory(options.common.directory);
    NodeTree tree(prefix, diagnostics);
    if (!tree.IsValid()) {
        return;
    }
    if (options.pack.output.empty()) {
        RemoveAllLeftovers();
        PackInPlace(tree, options.pack.isForced);
    } else {
        PackElsewhere(tree, options.pack, prefix);
    }
}

void Unpack(const Options& options, Diagnostics& diagnostics)
{
    NodeTree tree(EnterDirectory(options.common.directory), diagnostics);
    if (tree.IsValid()) {
        RemoveAllLeftovers();
        Unpacking(tree, options.unpack, diagnostics).Run();
    }
}

}  // namespace morlc
