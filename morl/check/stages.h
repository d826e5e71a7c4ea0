// SPDX-License-Identifier: MIT
#pragma once

#include "morl/check/checks.h"
#include "morl/compiler/pass_report.h"
#include "morl/core/export.h"

#include <string>
#include <vector>

namespace ns_ruke {

/// Finds what does not fit together in the two passes of a shader.
/// @param vertex, fragment their reports
/// @param target the one that both were compiled for
/// @param warnings are appended to; their places are in the fragment pass
MORL_API void CheckStages(const PassReport& vertex, const PassReport& fragment,
                          const std::string& target, std::vector<ReportWarning>& warnings);

}  // namespace ns_ruke
