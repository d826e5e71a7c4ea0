// SPDX-License-Identifier: MIT
#include "morl/compiler/morl_compiler.h"

#include "morl/ast/internal/unit_memory.h"
#include "morl/check/internal/node_index.h"
#include "morl/check/internal/pass_check.h"
#include "morl/compiler/internal/report.h"
#include "morl/compiler/node_files.h"
#include "morl/core/internal/fault_collector.h"
#include "morl/core/internal/graphics_log.h"
#include "morl/core/log_scope.h"
#include "morl/core/messages.h"
#include "morl/linker/morl_linker.h"
#include "morl/parser/morl_parser.h"
#include "morl/translator/internal/target_record.h"
#include "morl/translator/internal/write_request.h"
#include "morl/translator/internal/written_lines.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace ns_ruke {
namespace {

/// The program that a request is linked into: an empty `void main`.
void PrepareLinked(MorlProgram& program, int stage)
{
    auto main = MakeUnit<MorlFunction>();
    main->returnType = TOKEN_VOID;
    main->name = "main";
    program.mainFunction = main.release();
    program.stage = stage;
}

}  // namespace

MorlCompiler::MorlCompiler() : MorlCompiler(std::string()) {}

MorlCompiler::MorlCompiler(const std::string& directory)
{
    const std::string prefix =
        directory.empty() || directory.back() == '/' ? directory : directory + "/";
    try {
        for (const char* path : kNodeFiles) {
            LoadNodeDefinition(prefix + path);
        }
    } catch (...) {
        DeleteNodes();
        throw;
    }
}

MorlCompiler::MorlCompiler(const std::vector<NodeText>& texts)
{
    try {
        for (const NodeText& text : texts) {
            NodeTextResult result = LoadNodes(text);
            if (!result.faults.empty()) {
                throw NodeTextError(std::move(result.faults));
            }
        }
    } catch (...) {
        DeleteNodes();
        throw;
    }
}

MorlCompiler::~MorlCompiler()
{
    DeleteNodes();
}

void MorlCompiler::DeleteNodes()
{
    for (const auto& entry : nodes) {
        delete entry.second;
    }
    nodes.clear();
}

void MorlCompiler::Compile(PassProperty& pass, ShaderOutput& output)
{
    Run(pass, output, nullptr, nullptr);
}

bool MorlCompiler::CompileReported(PassProperty& pass, ShaderOutput& output, PassReport& report,
                                   ReportParts parts)
{
    if (parts == ReportParts::All) {
        return RunReported(pass, output, report, nullptr);
    }
    report = PassReport();
    FaultCollector collector;
    report.end = Run(pass, output, nullptr, nullptr);
    for (const std::string& name : pass.nodeNames) {
        const MorlNode* const node = report.end != RequestEnd::Refused ? FindNode(name) : nullptr;
        if (node != nullptr) {
            report.faults.insert(report.faults.end(), node->GetFaults().begin(),
                                 node->GetFaults().end());
        }
    }
    std::move(collector.faults.begin(), collector.faults.end(), std::back_inserter(report.faults));
    return report.end == RequestEnd::Written;
}

bool MorlCompiler::CompileReported(PassProperty& pass, ShaderOutput& output, PassReport& report,
                                   std::vector<ReportWarning>& warnings)
{
    warnings.clear();
    return RunReported(pass, output, report, &warnings);
}

bool MorlCompiler::RunReported(PassProperty& pass, ShaderOutput& output, PassReport& report,
                               std::vector<ReportWarning>* warnings)
{
    ShaderOutput before = output;
    try {
        report = PassReport();
        FaultCollector collector;
        report.end = Run(pass, output, &report, warnings);
        std::move(collector.faults.begin(), collector.faults.end(),
                  std::back_inserter(report.faults));
        return report.end == RequestEnd::Written;
    } catch (...) {
        output = std::move(before);
        throw;
    }
}

// Parses those nodes that need it.
// @return whether the request goes on
bool MorlCompiler::ParseNodes(const std::vector<MorlNode*>& list, const PassProperty& pass,
                              PassReport* report)
{
    MorlParser parser;
    parser.Init();
    for (MorlNode* node : list) {
        if (pass.limits.IsCancelled()) {
            return false;
        }
        if (node->NeedCompile(pass.target)) {
            node->Compile(&parser, pass.target);
        }
        if (report != nullptr) {
            report->faults.insert(report->faults.end(), node->GetFaults().begin(),
                                  node->GetFaults().end());
        }
    }
    return true;
}

RequestEnd MorlCompiler::Run(PassProperty& pass, ShaderOutput& output, PassReport* report,
                             std::vector<ReportWarning>* warnings)
{
    const LogScope scope(*this);
    const TargetRecord* target = FindTarget(pass.target);
    if (target == nullptr) {
        LogGraphicsError(messages::kUnknownTarget + pass.target);
    }
    if (ReportUnknown(pass) || target == nullptr) {
        return RequestEnd::Refused;
    }
    std::vector<MorlNode*> list = SelectNodes(pass);
    if (!ParseNodes(list, pass, report)) {
        return RequestEnd::Cancelled;
    }
    MorlProgram linked;
    PrepareLinked(linked, pass.stage);
    MorlLinker linker;
    LinkReport link;
    const RequestEnd end = linker.LinkShared(pass.macros, list, linked,
                                             report != nullptr ? &link : nullptr, pass.limits);
    if (end != RequestEnd::Written) {
        return end;
    }
    std::optional<WrittenLines> lines;
    if (report != nullptr) {
        lines.emplace(linked, link);
    }
    if (!WriteRequest(*target, pass, linked, lines ? &*lines : nullptr, output)) {
        LogGraphicsError(messages::kOverTextBytes + std::to_string(pass.limits.textBytes));
        return RequestEnd::TooMuchText;
    }
    if (lines) {
        FillReport(pass, *target, link, *lines, output, *report);
    }
    if (warnings != nullptr) {
        if (!index) {
            index = std::make_shared<NodeIndex>(nodes);
        }
        CheckPass({pass, *target, linked, link, nodes, *index}, *warnings);
    }
    return RequestEnd::Written;
}

// Whether any name is unknown. Each unknown name is reported once, in order of first appearance.
bool MorlCompiler::ReportUnknown(const PassProperty& pass) const
{
    const auto isKnown = [this](const std::string& name) { return FindNode(name) != nullptr; };
    if (std::all_of(pass.nodeNames.begin(), pass.nodeNames.end(), isKnown)) {
        return false;
    }
    std::unordered_set<std::string> reported;
    for (const std::string& name : pass.nodeNames) {
        if (!isKnown(name) && reported.insert(name).second) {
            LogGraphicsError(messages::kUnknownNode + name);
        }
    }
    return true;
}

// The nodes in the order in which they are first named.
std::vector<MorlNode*> MorlCompiler::SelectNodes(const PassProperty& pass)
{
    ++requests;
    std::vector<MorlNode*> list;
    list.reserve(pass.nodeNames.size());
    for (const std::string& name : pass.nodeNames) {
        MorlNode* node = nodes.at(name);
        if (std::exchange(node->lastRequest, requests) != requests) {
            list.push_back(node);
        }
    }
    return list;
}

std::vector<std::string> MorlCompiler::GetNodeNames() const
{
    std::vector<std::string> names;
    for (const auto& [name, node] : nodes) {
        if (node != nullptr) {
            names.push_back(name);
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

const MorlNode* MorlCompiler::FindNode(const std::string& name) const
{
    const auto found = nodes.find(name);
    return found != nodes.end() ? found->second : nullptr;
}

// Kept as an empty hook of the class: requests name every node that they want.
void MorlCompiler::ReferenceNodes(std::unordered_set<MorlNode*>& /*set*/, MorlNode* /*node*/) {}

}  // namespace ns_ruke
