// SPDX-License-Identifier: MIT
#pragma once

#include "morl/compiler/pass_property.h"
#include "morl/compiler/pass_report.h"
#include "morl/compiler/shader_output.h"
#include "morl/linker/link_report.h"

namespace ns_ruke {

struct TargetRecord;
class WrittenLines;

/// Fills in all of a report but its faults.
/// @param output the result of the request.
void FillReport(const PassProperty& pass, const TargetRecord& target, const LinkReport& link,
                WrittenLines& lines, const ShaderOutput& output, PassReport& report);

}  // namespace ns_ruke
