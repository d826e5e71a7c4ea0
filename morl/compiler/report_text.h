// SPDX-License-Identifier: MIT
#pragma once

#include "morl/compiler/pass_property.h"
#include "morl/compiler/pass_report.h"
#include "morl/compiler/shader_output.h"
#include "morl/core/export.h"

#include <string>

namespace ns_ruke {

/// What a host binds by, as a JSON object on one line, without a line break. "morlc build" writes
/// the same for each text; docs/reflection.schema.json describes it. Names are written as they are,
/// so the text is UTF-8 if the sources are.
/// @param pass a request that was written; only its target, stage and samplers are read
/// @param output, report of this request
MORL_API std::string ReportText(const PassProperty& pass, const ShaderOutput& output,
                                const PassReport& report);

}  // namespace ns_ruke
