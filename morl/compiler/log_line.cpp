// SPDX-License-Identifier: MIT
#include "morl/compiler/log_line.h"

#include "morl/core/internal/fault_collector.h"
#include "morl/core/log_scope.h"
#include "morl/core/messages.h"

namespace ns_ruke {

LogLine::LogLine(LogLevel logLevel, const std::string& message)
    : level(logLevel),
      compiler(LogScope::CurrentCompiler()),
      node(LogScope::CurrentNode()),
      text(message)
{
    if (const ReportFault* fault = LoggedFault::Of(message)) {
        line = fault->line;
        column = fault->column;
        text = fault->text;
    }
}

bool LogLine::IsParseMark() const
{
    return level == LogLevel::Info && messages::IsParseMark(text);
}

}  // namespace ns_ruke
