// SPDX-License-Identifier: MIT
#pragma once

#include "morl/compiler/pass_report.h"
#include "morl/core/export.h"

#include <string>
#include <vector>

namespace ns_ruke {

/// A uniform of the vertex pass, the fragment pass, or both. What it is and where it goes is in the
/// reports of the passes.
struct ProgramUniform {
    std::string name;
    int vertex = -1;    ///< an index into PassReport::uniforms of the vertex pass; -1: not there
    int fragment = -1;  ///< likewise
};

/// What the vertex pass hands to the fragment pass.
struct ProgramVarying {
    std::string name;
    int output = -1;  ///< an index into PassReport::outputs of the vertex pass; -1: none feeds it
    int input = -1;   ///< an index into PassReport::inputs of the fragment pass; -1: not read
};

/// Both passes of a shader as one program.
struct ProgramReport {
    std::vector<ProgramUniform> uniforms;  ///< of the vertex pass, then the others
    std::vector<ProgramVarying> varyings;  ///< likewise; without the position
    std::vector<ReportWarning> warnings;   ///< of CheckStages
};

/// @param vertex, fragment the reports of both passes
/// @param target the one that both were compiled for
MORL_API ProgramReport ReportProgram(const PassReport& vertex, const PassReport& fragment,
                                     const std::string& target);

}  // namespace ns_ruke
