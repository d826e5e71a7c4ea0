// SPDX-License-Identifier: MIT
#include "node_files.h"

#include "json_file.h"
#include "output_file.h"

#include <morl/compiler/internal/json_comments.h>
#include <morl/core/limits.h>
#include <filesystem>
#include <stdexcept>

namespace morlc {
namespace {

/// A node file that is being checked.
struct NodeFile {
    SourceText source;
    Json::Value root;
};

/// Reads the document as leniently as the compiler does.
/// @throws DiagnosticError if it is not a list of nodes.
void ParseNodeFile(NodeFile& file)
{
    Json::CharReaderBuilder builder;
    builder["collectComments"] = false;
    builder["stackLimit"] = ns_ruke::kMaxJsonNesting;
    std::string text = file.source.Text();
    ns_ruke::RemoveComments(text);
    ParseJson(builder, text, file.source, file.root);
    if (!file.root.isArray()) {
        throw DiagnosticError(ErrorAt(file.source.AtByte(0), "not a list of nodes (a JSON array)"));
    }
}

bool IsText(const Json::Value& value)
{
    return value.isString() || value.isBool() || value.isNull();
}

bool IsNumber(const Json::Value& value)
{
    return value.isNumeric() || value.isBool() || value.isNull();
}

/// What is wrong with a member of a node; empty if nothing is. Besides strings and numbers, the
/// compiler accepts booleans, null and missing members.
std::string FaultOf(const std::string& member, const Json::Value& value)
{
    if (member == "name" || member == "content") {
        return IsText(value) ? "" : "a node's \"" + member + "\" must be a string";
    }
    if (member == "x" || member == "y") {
        return IsNumber(value) ? "" : "a node's \"" + member + "\" must be a number";
    }
    if (member == "ref" && value.isObject() && !value.empty()) {
        return "a node's \"ref\" must be a list of names";
    }
    return {};
}

/// Reports what is wrong with one node; returns whether anything is.
bool ReportFaults(const NodeFile& file, const Json::Value& node, Diagnostics& diagnostics)
{
    bool faulty = false;
    const auto report = [&](const Json::Value& value, const std::string& text) {
        const auto offset = static_cast<std::size_t>(value.getOffsetStart());
        diagnostics.Report(ErrorAt(file.source.AtByte(offset), text));
        faulty = true;
    };
    for (const char* member : {"name", "x", "y", "content", "ref"}) {
        const std::string fault = FaultOf(member, node[member]);
        if (!fault.empty()) {
            report(node[member], fault);
        }
    }
    if (node["ref"].isArray()) {
        for (const Json::Value& reference : node["ref"]) {
            if (!IsText(reference)) {
                report(reference, "a reference must be a string, the name of a node");
            }
        }
    }
    return faulty;
}

/// Reads one file and reports what is wrong with it. Returns false if the nodes cannot be loaded.
bool ReadNodeFile(const std::string& path, const std::string& prefix,
                  std::unordered_map<std::string, std::string>& fileByNode,
                  Diagnostics& diagnostics)
{
    NodeFile file;
    try {
        file.source = ReadSource(path, prefix);
    } catch (const DiagnosticError&) {
        return true;  // The compiler reports files that it cannot read.
    }
    try {
        ParseNodeFile(file);
    } catch (const DiagnosticError& error) {
        diagnostics.Report(error.diagnostic);
        return false;
    }
    bool isValid = true;
    for (const Json::Value& node : file.root) {
        if (!node.isObject()) {
            continue;  // The compiler reports these, or loads null as a nameless node.
        }
        if (ReportFaults(file, node, diagnostics)) {
            isValid = false;
        } else {
            fileByNode[node["name"].asString()] = file.source.File();
        }
    }
    return isValid;
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
    bool isValid = true;
    for (const char* path : ns_ruke::kNodeFiles) {
        ProtectInput(path);
        isValid = ReadNodeFile(path, prefix, nodes.fileByNode, diagnostics) && isValid;
    }
    if (isValid) {
        diagnostics.SetNodeFiles(prefix, nodes.fileByNode);
        nodes.compiler = std::make_unique<ns_ruke::MorlCompiler>();
    }
    return nodes;
}

std::string EnterDirectory(const std::string& directory)
{
    std::error_code error;
    std::filesystem::current_path(directory, error);
    if (error) {
        throw std::runtime_error("cannot enter " + directory + ": " + error.message());
    }
    if (directory == ".") {
        return {};
    }
    return directory.back() == '/' ? directory : directory + "/";
}

}  // namespace morlc
