// SPDX-License-Identifier: MIT
#include "nodes/node_files.h"

#include "json_file.h"
#include "nodes/node_file_slips.h"
#include "nodes/source_files.h"
#include "output_file.h"
#include "path.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace morlc {
namespace {

/// Reads the nodes of one command.
class NodeLoading {
public:
    NodeLoading(const std::string& newPrefix, LoadedNodes& newNodes, Diagnostics& newDiagnostics)
        : prefix(newPrefix), nodes(newNodes), diagnostics(newDiagnostics)
    {
    }

    /// Loads one node file and reports what is wrong with it. Returns false if the nodes cannot be
    /// used.
    bool LoadNodeFile(const std::string& path)
    {
        ProtectInput(path);
        std::shared_ptr<const SourceText> source;
        try {
            if (std::filesystem::is_fifo(ToPath(path))) {
                diagnostics.Error("cannot read " + Shown(path) + ": it is a pipe, not a file");
                return false;
            }
            // Who has sources needs no node files.
            if (HasSourceFolder() && !std::filesystem::exists(ToPath(path))) {
                return true;
            }
            source = std::make_shared<const SourceText>(ReadSource(path, prefix));
        } catch (const DiagnosticError&) {
            diagnostics.ReportMissingFile(Shown(path), path);
            return true;
        }
        nodes.inputs.push_back(path);
        const ns_ruke::NodeText text = {source->File(), source->Text()};
        const ns_ruke::NodeTextResult result = nodes.compiler->LoadNodes(text);
        for (const ns_ruke::NodeTextFault& fault : result.faults) {
            diagnostics.Report(ErrorAt(source->At(fault.line, fault.column), fault.text));
        }
        if (result.faults.empty()) {
            WarnOfSlips(*source, diagnostics);
        }
        for (std::size_t i = 0; i < result.nodes.size(); ++i) {
            const std::string other = nodes.origins->FileOf(result.nodes[i]);
            if (!other.empty()) {
                Diagnostic diagnostic =
                    ErrorAt(source->AtByte(result.contents[i]),
                            "node '" + result.nodes[i] + "' is also in " + other +
                                (other == source->File() ? ", above" : "") + "; this one counts");
                diagnostic.severity = Severity::Warning;
                diagnostics.Report(diagnostic);
            }
            nodes.origins->AddFromNodeFile(result.nodes[i], source, result.contents[i],
                                           result.references[i]);
        }
        return result.faults.empty();
    }

    /// Loads the sources that belong to a node file, likewise.
    bool LoadSources(const std::string& nodeFile)
    {
        if (std::filesystem::is_directory(ToPath(SourceFolder(nodeFile)))) {
            nodes.inputs.push_back(SourceFolder(nodeFile));
        }
        bool isValid = true;
        for (const std::string& path : ListSources(nodeFile)) {
            ProtectInput(path);
            nodes.inputs.push_back(path);
            std::optional<SourceFile> file = ReadSourceFile(path, prefix, diagnostics);
            isValid = file && Load(std::move(*file), nodeFile) && isValid;
        }
        return isValid;
    }

private:
    std::string Shown(const std::string& path) const { return AsGiven(prefix, ToPath(path)); }

    bool Load(SourceFile file, const std::string& nodeFile)
    {
        const ns_ruke::NodeSource& source = file.source;
        const auto x = static_cast<float>(source.x);
        const auto y = static_cast<float>(source.y);
        const std::string other = nodes.origins->FileOf(file.name);
        if (!other.empty()) {
            const ns_ruke::MorlNode& node = *nodes.compiler->FindNode(file.name);
            const bool isSame = node.Content() == source.content &&
                                node.GetReference() == source.references && node.GetX() == x &&
                                node.GetY() == y;
            const std::string text = "node '" + file.name + "' is also in " + other;
            Diagnostic diagnostic = ErrorAt({Shown(file.path), 1, 1}, text);
            diagnostic.severity = isSame ? Severity::Info : Severity::Error;
            diagnostic.text += isSame ? ", where it is the same" : ", where it differs; remove one";
            diagnostics.Report(diagnostic);
            return isSame;
        }
        nodes.compiler->SetNode(file.name, source.content, source.references, x, y);
        nodes.origins->AddFromSource(file.name, std::move(file.text), Shown(nodeFile),
                                     source.contentLine);
        return true;
    }

    const std::string& prefix;
    LoadedNodes& nodes;
    Diagnostics& diagnostics;
};

}  // namespace

LoadedNodes LoadNodes(const std::string& prefix, Diagnostics& diagnostics)
{
    RequireNodeFolder(prefix);
    LoadedNodes nodes;
    nodes.compiler = std::make_unique<ns_ruke::MorlCompiler>(std::vector<ns_ruke::NodeText>());
    nodes.origins = std::make_shared<NodeOrigins>();
    NodeLoading loading(prefix, nodes, diagnostics);
    bool isValid = true;
    for (const char* path : ns_ruke::kNodeFiles) {
        isValid = loading.LoadNodeFile(path) && isValid;
    }
    for (const char* path : ns_ruke::kNodeFiles) {
        isValid = loading.LoadSources(path) && isValid;
    }
    WarnOfStraySources(prefix, diagnostics);
    if (isValid) {
        diagnostics.SetNodeOrigins(nodes.origins);
    } else {
        nodes.compiler.reset();
    }
    return nodes;
}

void RequireNodeFolder(const std::string& prefix)
{
    if (!std::filesystem::exists("morl")) {
        throw std::runtime_error("there is no folder " + prefix +
                                 "morl/; name the directory that holds it with -C");
    }
}

std::unique_ptr<ns_ruke::MorlCompiler> CopyNodes(const ns_ruke::MorlCompiler& original)
{
    auto copy = std::make_unique<ns_ruke::MorlCompiler>(std::vector<ns_ruke::NodeText>());
    for (const std::string& name : original.GetNodeNames()) {
        const ns_ruke::MorlNode& node = *original.FindNode(name);
        copy->SetNode(name, node.GetContent(), node.GetReference(), node.GetX(), node.GetY());
    }
    return copy;
}

std::string EnterDirectory(const std::string& directory)
{
    std::error_code error;
    std::filesystem::current_path(ToPath(directory), error);
    if (error) {
        throw std::runtime_error("cannot enter " + directory + ": " +
                                 error.default_error_condition().message());
    }
    if (directory == ".") {
        return {};
    }
    return PathText(ToPath(directory) / "");
}

}  // namespace morlc
