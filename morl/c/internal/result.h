// SPDX-License-Identifier: MIT
#pragma once

#include "morl/c/internal/handle.h"
#include "morl/c/morl.h"
#include "morl/compiler/node_text.h"
#include "morl/compiler/pass_property.h"
#include "morl/compiler/pass_report.h"
#include "morl/compiler/program_report.h"
#include "morl/compiler/shader_output.h"

#include <string>
#include <string_view>
#include <vector>

/// What a request has given, and those lists of the C interface that point into it.
struct morl_result : ns_ruke::Handle {
    static constexpr ns_ruke::HandleKind kKind = ns_ruke::HandleKind::Result;

    /// @param pass is copied as far as a description of the result needs it.
    morl_result(const ns_ruke::PassProperty& pass, bool isReported, ns_ruke::ShaderOutput newOutput,
                ns_ruke::PassReport newReport, std::vector<ns_ruke::ReportWarning> newWarnings);

    ns_ruke::PassProperty request;
    bool hasReport;
    ns_ruke::ShaderOutput output;
    ns_ruke::PassReport report;
    std::vector<ns_ruke::ReportWarning> warnings;
    std::string json;  ///< empty until it is asked for
    std::vector<morl_semantic> semantics;
    std::vector<morl_text> uniforms;
    std::vector<morl_text> nodes;
    std::vector<morl_line> lines;
    std::vector<morl_text> unusedMacros;
    morl_output view;
};

/// Both passes of a shader as one program.
struct morl_program : ns_ruke::Handle {
    static constexpr ns_ruke::HandleKind kKind = ns_ruke::HandleKind::Program;

    explicit morl_program(ns_ruke::ProgramReport newReport);

    ns_ruke::ProgramReport report;
};

namespace ns_ruke {

// These point into what they are made from.

morl_text ToText(std::string_view text);
std::vector<morl_text> ToTexts(const std::vector<std::string>& texts);
morl_fault ToFault(const ReportFault& fault);
morl_fault ToFault(const NodeTextFault& fault);
morl_declare ToDeclare(const ReportDeclare& declare);
morl_macro ToMacro(const ReportMacro& macro);
morl_warning ToWarning(const ReportWarning& warning);
morl_program_uniform ToUniform(const ProgramUniform& uniform);
morl_varying ToVarying(const ProgramVarying& varying);

}  // namespace ns_ruke
