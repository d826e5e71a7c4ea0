// SPDX-License-Identifier: MIT
#include "nodes/git_files.h"

#include "json_file.h"
#include "nodes/node_document.h"
#include "nodes/node_files.h"
#include "nodes/node_merge.h"
#include "output_file.h"
#include "path.h"

#include <morl/morl.h>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>

namespace morlc {
namespace {

using ns_ruke::NodeSource;

/// The nodes of one of the files to be merged.
/// @param isBase nothing of it is written: it may be empty, as that of a file which both sides have
///        added is, and what a merge would lose does not matter
/// @return nothing if it cannot be merged by its nodes; this has been reported
std::optional<std::vector<NodeSource>> ReadForMerge(const std::string& path, bool isBase,
                                                    const std::string& prefix,
                                                    Diagnostics& diagnostics)
{
    if (ReadSource(path, prefix).Text().empty() && isBase) {
        return std::vector<NodeSource>();
    }
    std::optional<NodeDocument> document = ReadNodeDocument(path, prefix, diagnostics);
    if (!document) {
        return std::nullopt;
    }
    bool isValid = isBase || document->losses.empty();
    for (const Place& place : isBase ? std::vector<Place>() : document->losses) {
        diagnostics.Report(ErrorAt(place, "a merge would lose this; merge the file by hand"));
    }
    std::set<std::string> names;
    for (const NodeSource& node : document->nodes) {
        if (!names.insert(node.name).second) {
            diagnostics.Report(ErrorAt({document->text.File()},
                                       "two nodes are called '" + node.name + "'; rename one"));
            isValid = false;
        }
    }
    return isValid ? std::make_optional(std::move(document->nodes)) : std::nullopt;
}

}  // namespace

void ShowText(const Options& options, Diagnostics& diagnostics)
{
    const std::string prefix = EnterDirectory(options.common.directory);
    const SourceText text = ReadSource(options.files.file, prefix);
    std::vector<ns_ruke::NodeTextFault> faults;
    std::vector<NodeSource> nodes = ns_ruke::ReadNodeText({text.File(), text.Text()}, faults);
    for (const ns_ruke::NodeTextFault& fault : faults) {
        diagnostics.Report(WarningAt(text.At(fault.line, fault.column), fault.text));
    }
    std::multimap<std::string, NodeSource> byName;
    for (NodeSource& node : nodes) {
        byName.emplace(node.name, std::move(node));
    }
    std::string shown = faults.empty() ? CommentsOf(text.Text()) : text.Text();
    for (const auto& [name, node] : byName) {
        shown.append(shown.empty() ? "" : "\n").append(ns_ruke::WriteNodeSource(node));
    }
    WriteWhole("-", shown);
}

void Merge(const Options& options, Diagnostics& diagnostics)
{
    const std::string prefix = EnterDirectory(options.common.directory);
    const FileOptions& files = options.files;
    const auto base = ReadForMerge(files.base, true, prefix, diagnostics);
    const auto ours = ReadForMerge(files.ours, false, prefix, diagnostics);
    const auto theirs = ReadForMerge(files.theirs, false, prefix, diagnostics);
    const Place file = {files.path.empty() ? AsGiven(prefix, ToPath(files.ours)) : files.path};
    if (!base || !ours || !theirs) {
        diagnostics.Report(ErrorAt(file, "this is as ours has it, and nothing of theirs is in it"));
        return;
    }
    MergedNodes merged = MergeNodes(*base, *ours, *theirs);
    WriteWhole(files.ours, ns_ruke::WriteNodeText(merged.nodes));
    for (const std::string& node : merged.moved) {
        Diagnostic note =
            ErrorAt(file, "both have moved node '" + node + "'; it is where ours has it");
        note.severity = Severity::Info;
        diagnostics.Report(note);
    }
    for (const std::string& conflict : merged.conflicts) {
        diagnostics.Report(ErrorAt(file, conflict + "; the content has the marks of a conflict"));
    }
}

}  // namespace morlc
