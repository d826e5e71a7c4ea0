// SPDX-License-Identifier: MIT
#include "node_files.h"

#include "json_file.h"
#include "output_file.h"
#include "path.h"

#include <filesystem>
#include <stdexcept>
#include <system_error>

namespace morlc {
namespace {

/// Loads one file and reports what is wrong with it. Returns false if the nodes cannot be used.
bool LoadNodeFile(const std::string& path, const std::string& prefix, LoadedNodes& nodes,
                  Diagnostics& diagnostics)
{
    SourceText source;
    try {
        if (std::filesystem::is_fifo(ToPath(path))) {
            diagnostics.Error("cannot read " + AsGiven(prefix, ToPath(path)) +
                              ": it is a pipe, not a file");
            return false;
        }
        source = ReadSource(path, prefix);
    } catch (const DiagnosticError&) {
        diagnostics.ReportMissingFile(AsGiven(prefix, ToPath(path)), path);
        return true;
    }
    const ns_ruke::NodeText text = {source.File(), source.Text()};
    const ns_ruke::NodeTextResult result = nodes.compiler->LoadNodes(text);
    for (const ns_ruke::NodeTextFault& fault : result.faults) {
        diagnostics.Report(ErrorAt(source.At(fault.line, fault.column), fault.text));
    }
    for (const std::string& name : result.nodes) {
        nodes.fileByNode[name] = source.File();
    }
    return result.faults.empty();
}

}  // namespace

LoadedNodes LoadNodes(const std::string& prefix, Diagnostics& diagnostics)
{
    LoadedNodes nodes;
    if (!std::filesystem::exists("morl")) {
        diagnostics.Error("there is no folder " + prefix +
                          "morl/; name the directory that holds it with -C");
        return nodes;
    }
    nodes.compiler = std::make_unique<ns_ruke::MorlCompiler>(std::vector<ns_ruke::NodeText>());
    bool isValid = true;
    for (const char* path : ns_ruke::kNodeFiles) {
        ProtectInput(path);
        isValid = LoadNodeFile(path, prefix, nodes, diagnostics) && isValid;
    }
    if (isValid) {
        diagnostics.SetNodeFiles(nodes.fileByNode);
    } else {
        nodes.compiler.reset();
    }
    return nodes;
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
