// SPDX-License-Identifier: MIT
#include "morl/c/internal/result.h"

#include <algorithm>
#include <iterator>
#include <type_traits>
#include <utility>

namespace ns_ruke {
namespace {

template <class From, class Convert>
auto ConvertAll(const From& from, const Convert& convert)
{
    std::vector<decltype(convert(*from.begin()))> list;
    list.reserve(from.size());
    std::transform(from.begin(), from.end(), std::back_inserter(list), convert);
    return list;
}

std::vector<morl_semantic> ToSemantics(const ShaderOutput& output)
{
    std::vector<morl_semantic> list = ConvertAll(output.semantics, [](const auto& entry) {
        return morl_semantic{ToText(entry.first), ToText(entry.second)};
    });
    std::sort(list.begin(), list.end(), [](const morl_semantic& a, const morl_semantic& b) {
        return std::string_view(a.name.data, a.name.size) <
               std::string_view(b.name.data, b.name.size);
    });
    return list;
}

std::vector<morl_line> ToLines(const std::vector<ReportLine>& lines)
{
    return ConvertAll(lines, [](const ReportLine& line) {
        return morl_line{line.node, line.line};
    });
}

/// Points a host to a list.
template <class Element>
void Point(const std::vector<Element>& list, const Element*& first, std::size_t& count)
{
    first = list.data();
    count = list.size();
}

}  // namespace

// Both lists count up.
static_assert(static_cast<int>(DeclareType::Float) == MORL_FLOAT &&
              static_cast<int>(DeclareType::SamplerCube) == MORL_SAMPLER_CUBE);
static_assert(static_cast<int>(SemanticKind::Position) == MORL_POSITION &&
              static_cast<int>(SemanticKind::Other) == MORL_OTHER_SEMANTIC);

morl_text ToText(std::string_view text)
{
    return {text.data(), text.size()};
}

std::vector<morl_text> ToTexts(const std::vector<std::string>& texts)
{
    return ConvertAll(texts, [](const std::string& text) { return ToText(text); });
}

morl_fault ToFault(const ReportFault& fault)
{
    morl_fault result = {};
    result.level = fault.level == LogLevel::Error ? MORL_ERROR : MORL_INFO;
    result.line = fault.line;
    result.column = fault.column;
    result.node = ToText(fault.node);
    result.text = ToText(fault.text);
    result.hint = ToText(fault.hint);
    return result;
}

morl_fault ToFault(const NodeTextFault& fault)
{
    morl_fault result = {};
    result.level = MORL_ERROR;
    result.line = fault.line;
    result.column = fault.column;
    result.file = ToText(fault.file);
    result.node = ToText(fault.node);
    result.text = ToText(fault.text);
    return result;
}

morl_declare ToDeclare(const ReportDeclare& declare)
{
    static_assert(std::is_same_v<int, std::int32_t>, "hosts get the library's own lists");
    morl_declare result = {};
    result.name = ToText(declare.name);
    result.type = ToText(declare.type);
    result.written_type = ToText(declare.writtenType);
    result.array_size = ToText(declare.arraySize);
    result.semantic = ToText(declare.semantic);
    result.base_type = static_cast<std::int32_t>(declare.baseType);
    result.rows = declare.rows;
    result.columns = declare.columns;
    result.elements = declare.elements;
    result.bytes = declare.bytes;
    result.offset = declare.offset;
    result.semantic_kind = static_cast<std::int32_t>(declare.semanticKind);
    result.semantic_index = declare.semanticIndex;
    result.number = declare.number;
    result.is_used = declare.isUsed ? 1 : 0;
    result.node = declare.node;
    result.line = declare.line;
    result.column = declare.column;
    Point(declare.repeatedBy, result.repeated_by, result.repeated_by_count);
    return result;
}

morl_macro ToMacro(const ReportMacro& macro)
{
    morl_macro result = {};
    result.name = ToText(macro.name);
    result.value = macro.value;
    result.is_set = macro.isSet ? 1 : 0;
    return result;
}

morl_warning ToWarning(const ReportWarning& warning)
{
    morl_warning result = {};
    result.check = ToText(warning.check);
    result.node = ToText(warning.node);
    result.text = ToText(warning.text);
    result.line = warning.line;
    result.column = warning.column;
    result.is_refused = warning.isRefused ? 1 : 0;
    return result;
}

morl_program_uniform ToUniform(const ProgramUniform& uniform)
{
    morl_program_uniform result = {};
    result.name = ToText(uniform.name);
    result.vertex = uniform.vertex;
    result.fragment = uniform.fragment;
    return result;
}

morl_varying ToVarying(const ProgramVarying& varying)
{
    morl_varying result = {};
    result.name = ToText(varying.name);
    result.output = varying.output;
    result.input = varying.input;
    return result;
}

}  // namespace ns_ruke

morl_result::morl_result(const ns_ruke::PassProperty& pass, bool isReported,
                         ns_ruke::ShaderOutput newOutput, ns_ruke::PassReport newReport,
                         std::vector<ns_ruke::ReportWarning> newWarnings)
    : Handle(kKind),
      hasReport(isReported),
      output(std::move(newOutput)),
      report(std::move(newReport)),
      warnings(std::move(newWarnings)),
      semantics(ns_ruke::ToSemantics(output)),
      uniforms(ns_ruke::ToTexts(output.uniformNames)),
      nodes(ns_ruke::ToTexts(report.nodes)),
      lines(ns_ruke::ToLines(report.lines)),
      unusedMacros(ns_ruke::ToTexts(report.unusedMacros)),
      view()
{
    if (isReported) {
        request.target = pass.target;
        request.stage = pass.stage;
        request.samplerRegisters = pass.samplerRegisters;
    }
    view.code = ns_ruke::ToText(output.code);
    ns_ruke::Point(semantics, view.semantics, view.semantic_count);
    ns_ruke::Point(uniforms, view.uniforms, view.uniform_count);
    ns_ruke::Point(nodes, view.nodes, view.node_count);
    ns_ruke::Point(lines, view.lines, view.line_count);
    ns_ruke::Point(unusedMacros, view.unused_macros, view.unused_macro_count);
    view.fault_count = report.faults.size();
    view.uniform_declare_count = report.uniforms.size();
    view.input_count = report.inputs.size();
    view.output_count = report.outputs.size();
    view.macro_count = report.macros.size();
    view.warning_count = warnings.size();
    view.constant_bytes = static_cast<std::size_t>(report.constantBytes);
}

morl_program::morl_program(ns_ruke::ProgramReport newReport)
    : Handle(kKind), report(std::move(newReport))
{
}
