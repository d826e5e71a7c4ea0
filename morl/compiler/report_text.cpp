// SPDX-License-Identifier: MIT
#include "morl/compiler/report_text.h"

#include "morl/ast/stage.h"
#include "morl/translator/internal/bindings.h"

#include <json/json.h>
#include <cstddef>
#include <vector>

namespace ns_ruke {
namespace {

Json::Value ToJson(const std::vector<std::string>& texts)
{
    Json::Value array(Json::arrayValue);
    for (const std::string& text : texts) {
        array.append(text);
    }
    return array;
}

/// "float", or for a sampler its whole type.
std::string BaseTypeOf(const ReportDeclare& declare)
{
    switch (declare.baseType) {
    case DeclareType::Unknown:
        return "unknown";
    case DeclareType::Float:
        return "float";
    case DeclareType::Int:
        return "int";
    case DeclareType::BoneIndex:
        return "boneIndex";
    default:
        return std::string(declare.type);
    }
}

Json::Value NodesOf(const ReportDeclare& declare, const PassReport& report)
{
    Json::Value names(Json::arrayValue);
    names.append(report.nodes[static_cast<std::size_t>(declare.node)]);
    for (const int node : declare.repeatedBy) {
        names.append(report.nodes[static_cast<std::size_t>(node)]);
    }
    return names;
}

/// Only what applies to a declaration is there.
Json::Value ToJson(const ReportDeclare& declare, const PassReport& report)
{
    Json::Value object(Json::objectValue);
    object["name"] = declare.name;
    object["type"] = std::string(declare.type);
    object["writtenType"] = std::string(declare.writtenType);
    object["baseType"] = BaseTypeOf(declare);
    if (declare.rows > 0) {
        object["rows"] = declare.rows;
        object["columns"] = declare.columns;
    }
    if (!declare.arraySize.empty()) {
        object["arraySize"] = declare.arraySize;
    }
    if (declare.elements > 0) {
        object["elements"] = declare.elements;
    }
    if (declare.bytes > 0) {
        object["bytes"] = declare.bytes;
    }
    if (declare.offset >= 0) {
        object["offset"] = declare.offset;
    }
    if (!declare.semantic.empty()) {
        object["semantic"] = std::string(declare.semantic);
    }
    if (declare.number >= 0) {
        object["number"] = declare.number;
    }
    object["used"] = declare.isUsed;
    object["nodes"] = NodesOf(declare, report);
    object["line"] = declare.line;
    object["column"] = declare.column;
    return object;
}

Json::Value ToJson(const std::vector<ReportDeclare>& declares, const PassReport& report)
{
    Json::Value array(Json::arrayValue);
    for (const ReportDeclare& declare : declares) {
        array.append(ToJson(declare, report));
    }
    return array;
}

/// The registers of the samplers, also for targets that do not write them.
Json::Value SamplersOf(const PassProperty& pass, const PassReport& report)
{
    Json::Value object(Json::objectValue);
    for (const ReportDeclare& uniform : report.uniforms) {
        if (uniform.semanticKind == SemanticKind::Sampler) {
            object[uniform.name] = SamplerRegister(pass, uniform.name);
        }
    }
    return object;
}

/// Null: the request did not set it.
Json::Value MacrosOf(const PassReport& report)
{
    Json::Value object(Json::objectValue);
    for (const ReportMacro& macro : report.macros) {
        object[macro.name] = macro.isSet ? Json::Value(macro.value) : Json::Value();
    }
    return object;
}

std::string NameOfStage(int stage)
{
    return stage == kVertexStage ? "vertex" : stage == kFragmentStage ? "fragment" : "";
}

Json::Value Describe(const PassProperty& pass, const ShaderOutput& output, const PassReport& report)
{
    Json::Value root(Json::objectValue);
    root["target"] = pass.target;
    root["stage"] = NameOfStage(pass.stage);
    root["uniforms"] = ToJson(output.uniformNames);
    root["samplers"] = SamplersOf(pass, report);
    root["semantics"] = Json::Value(Json::objectValue);
    for (const auto& [name, semantic] : output.semantics) {
        root["semantics"][name] = semantic;
    }
    root["macros"] = MacrosOf(report);
    root["unusedMacros"] = ToJson(report.unusedMacros);
    root["constantBytes"] = report.constantBytes;
    root["declarations"]["uniforms"] = ToJson(report.uniforms, report);
    root["declarations"]["inputs"] = ToJson(report.inputs, report);
    root["declarations"]["outputs"] = ToJson(report.outputs, report);
    return root;
}

}  // namespace

std::string ReportText(const PassProperty& pass, const ShaderOutput& output,
                       const PassReport& report)
{
    Json::StreamWriterBuilder builder;
    builder["indentation"] = "";
    builder["emitUTF8"] = true;
    return Json::writeString(builder, Describe(pass, output, report));
}

}  // namespace ns_ruke
