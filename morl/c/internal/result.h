// SPDX-License-Identifier: MIT
#pragma once

#include "morl/c/morl.h"
#include "morl/compiler/node_text.h"
#include "morl/compiler/pass_report.h"
#include "morl/compiler/shader_output.h"

#include <string_view>
#include <vector>

/// What a request has given, and the structures of the C interface that point into it.
struct morl_result {
    morl_result(ns_ruke::ShaderOutput newOutput, ns_ruke::PassReport newReport,
                std::vector<ns_ruke::ReportWarning> newWarnings);
    morl_result(const morl_result&) = delete;
    morl_result& operator=(const morl_result&) = delete;
    ~morl_result() = default;

    ns_ruke::ShaderOutput output;
    ns_ruke::PassReport report;
    std::vector<ns_ruke::ReportWarning> foundWarnings;
    std::vector<morl_semantic> semantics;
    std::vector<morl_text> uniforms;
    std::vector<morl_fault> faults;
    std::vector<morl_text> nodes;
    std::vector<morl_line> lines;
    std::vector<morl_declare> uniformDeclares;
    std::vector<morl_declare> inputs;
    std::vector<morl_declare> outputs;
    std::vector<morl_macro> macros;
    std::vector<morl_text> unusedMacros;
    std::vector<morl_warning> warnings;
    morl_output view;
};

namespace ns_ruke {

/// These point into what they are made from.
morl_text ToText(std::string_view text);
std::vector<morl_text> ToTexts(const std::vector<std::string>& texts);
std::vector<morl_fault> ToFaults(const std::vector<ReportFault>& faults);
std::vector<morl_fault> ToFaults(const std::vector<NodeTextFault>& faults);

}  // namespace ns_ruke
