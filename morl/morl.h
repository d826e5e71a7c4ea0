// SPDX-License-Identifier: MIT
#pragma once

/// @file
/// Everything that the library offers to its hosts. Most hosts need only MorlCompiler,
/// PassProperty, ShaderOutput, TamberLogSystem::SetSink and LogLine.

#include "morl/ast/program.h"
#include "morl/ast/stage.h"
#include "morl/check/checks.h"
#include "morl/check/hints.h"
#include "morl/check/stages.h"
#include "morl/compiler/log_line.h"
#include "morl/compiler/morl_compiler.h"
#include "morl/compiler/morl_node.h"
#include "morl/compiler/node_files.h"
#include "morl/compiler/node_source.h"
#include "morl/compiler/node_text.h"
#include "morl/compiler/pass_property.h"
#include "morl/compiler/pass_report.h"
#include "morl/compiler/program_report.h"
#include "morl/compiler/report_text.h"
#include "morl/compiler/shader_output.h"
#include "morl/core/excerpt.h"
#include "morl/core/json_text.h"
#include "morl/core/limits.h"
#include "morl/core/log_scope.h"
#include "morl/core/log_system.h"
#include "morl/core/messages.h"
#include "morl/core/nearest.h"
#include "morl/core/request_limits.h"
#include "morl/core/string_helper.h"
#include "morl/core/text_lines.h"
#include "morl/linker/morl_linker.h"
#include "morl/parser/morl_parser.h"
#include "morl/translator/targets.h"
