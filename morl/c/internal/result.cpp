// SPDX-License-Identifier: MIT
#include "morl/c/internal/result.h"

#include <algorithm>
#include <iterator>
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

std::vector<morl_declare> ToDeclares(const std::vector<ReportDeclare>& declares)
{
    return ConvertAll(declares, [](const ReportDeclare& declare) {
        morl_declare result = {};
        result.name = ToText(declare.name);
        result.type = ToText(declare.type);
        result.written_type = ToText(declare.writtenType);
        result.array_size = ToText(declare.arraySize);
        result.semantic = ToText(declare.semantic);
        result.elements = declare.elements;
        result.number = declare.number;
        result.node = declare.node;
        result.line = declare.line;
        return result;
    });
}

std::vector<morl_line> ToLines(const std::vector<ReportLine>& lines)
{
    return ConvertAll(lines, [](const ReportLine& line) {
        return morl_line{line.node, line.line};
    });
}

std::vector<morl_macro> ToMacros(const std::vector<ReportMacro>& macros)
{
    return ConvertAll(macros, [](const ReportMacro& macro) {
        return morl_macro{ToText(macro.name), macro.value, macro.isSet ? 1 : 0};
    });
}

std::vector<morl_warning> ToWarnings(const std::vector<ReportWarning>& warnings)
{
    return ConvertAll(warnings, [](const ReportWarning& warning) {
        return morl_warning{ToText(warning.check), ToText(warning.node), ToText(warning.text),
                            warning.line, warning.column};
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

morl_text ToText(std::string_view text)
{
    return {text.data(), text.size()};
}

std::vector<morl_text> ToTexts(const std::vector<std::string>& texts)
{
    return ConvertAll(texts, [](const std::string& text) { return ToText(text); });
}

std::vector<morl_fault> ToFaults(const std::vector<ReportFault>& faults)
{
    return ConvertAll(faults, [](const ReportFault& fault) {
        const std::int32_t level = fault.level == LogLevel::Error ? MORL_ERROR : MORL_INFO;
        return morl_fault{level, fault.line,         fault.column,
                          {},    ToText(fault.node), ToText(fault.text)};
    });
}

std::vector<morl_fault> ToFaults(const std::vector<NodeTextFault>& faults)
{
    return ConvertAll(faults, [](const NodeTextFault& fault) {
        return morl_fault{MORL_ERROR,         fault.line,         fault.column,
                          ToText(fault.file), ToText(fault.node), ToText(fault.text)};
    });
}

}  // namespace ns_ruke

morl_result::morl_result(ns_ruke::ShaderOutput newOutput, ns_ruke::PassReport newReport,
                         std::vector<ns_ruke::ReportWarning> newWarnings)
    : output(std::move(newOutput)),
      report(std::move(newReport)),
      foundWarnings(std::move(newWarnings)),
      semantics(ns_ruke::ToSemantics(output)),
      uniforms(ns_ruke::ToTexts(output.uniformNames)),
      faults(ns_ruke::ToFaults(report.faults)),
      nodes(ns_ruke::ToTexts(report.nodes)),
      lines(ns_ruke::ToLines(report.lines)),
      uniformDeclares(ns_ruke::ToDeclares(report.uniforms)),
      inputs(ns_ruke::ToDeclares(report.inputs)),
      outputs(ns_ruke::ToDeclares(report.outputs)),
      macros(ns_ruke::ToMacros(report.macros)),
      unusedMacros(ns_ruke::ToTexts(report.unusedMacros)),
      warnings(ns_ruke::ToWarnings(foundWarnings)),
      view()
{
    view.size = sizeof view;
    view.code = ns_ruke::ToText(output.code);
    ns_ruke::Point(semantics, view.semantics, view.semantic_count);
    ns_ruke::Point(uniforms, view.uniforms, view.uniform_count);
    ns_ruke::Point(faults, view.faults, view.fault_count);
    ns_ruke::Point(nodes, view.nodes, view.node_count);
    ns_ruke::Point(lines, view.lines, view.line_count);
    ns_ruke::Point(uniformDeclares, view.uniform_declares, view.uniform_declare_count);
    ns_ruke::Point(inputs, view.inputs, view.input_count);
    ns_ruke::Point(outputs, view.outputs, view.output_count);
    ns_ruke::Point(macros, view.macros, view.macro_count);
    ns_ruke::Point(unusedMacros, view.unused_macros, view.unused_macro_count);
    ns_ruke::Point(warnings, view.warnings, view.warning_count);
}
