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

morl_result::morl_result(ns_ruke::ShaderOutput newOutput, ns_ruke::PassReport newReport)
    : output(std::move(newOutput)),
      report(std::move(newReport)),
      semantics(ns_ruke::ToSemantics(output)),
      uniforms(ns_ruke::ToTexts(output.uniformNames)),
      faults(ns_ruke::ToFaults(report.faults)),
      nodes(ns_ruke::ToTexts(report.nodes)),
      lines(ns_ruke::ConvertAll(report.lines,
                                [](const ns_ruke::ReportLine& line) {
                                    return morl_line{line.node, line.line};
                                })),
      uniformDeclares(ns_ruke::ToDeclares(report.uniforms)),
      inputs(ns_ruke::ToDeclares(report.inputs)),
      outputs(ns_ruke::ToDeclares(report.outputs)),
      macros(ns_ruke::ConvertAll(
          report.macros,
          [](const ns_ruke::ReportMacro& macro) {
              return morl_macro{ns_ruke::ToText(macro.name), macro.value, macro.isSet ? 1 : 0};
          })),
      unusedMacros(ns_ruke::ToTexts(report.unusedMacros)),
      view({sizeof(morl_output),    ns_ruke::ToText(output.code),
            semantics.data(),       semantics.size(),
            uniforms.data(),        uniforms.size(),
            faults.data(),          faults.size(),
            nodes.data(),           nodes.size(),
            lines.data(),           lines.size(),
            uniformDeclares.data(), uniformDeclares.size(),
            inputs.data(),          inputs.size(),
            outputs.data(),         outputs.size(),
            macros.data(),          macros.size(),
            unusedMacros.data(),    unusedMacros.size()})
{
}
