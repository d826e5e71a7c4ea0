// SPDX-License-Identifier: MIT
#include "morl/core/internal/graphics_log.h"

#include "morl/core/internal/fault_collector.h"
#include "morl/core/log_scope.h"
#include "morl/core/log_system.h"
#include "morl/core/messages.h"
#include "morl/core/string_helper.h"

namespace ns_ruke {
namespace {

void Log(LogLevel level, const std::string& message)
{
    if (FaultCollector::IsQuiet()) {
        return;
    }
    static const std::string category = "Graphics";
    TamberLogSystem::LogInitialize();
    Singleton<TamberLogSystem>::GetSingletonPtr()->Write(level, category, message);
}

}  // namespace

void LogGraphicsInfo(const std::string& message)
{
    Log(LogLevel::Info, message);
}

void LogGraphicsError(const std::string& text, const TextPlace& place)
{
    const ReportFault fault = {
        LogLevel::Error, LogScope::CurrentNode(), place.line, place.column, text, {}};
    const std::string message = place.line > 0 ? FormatPlace(place) + text : text;
    FaultCollector::Collect(fault);
    const LoggedFault logged(fault, message);
    Log(LogLevel::Error, message);
}

std::string FormatPlace(const TextPlace& place)
{
    return messages::kLocationLine + StringHelper::ConvertToString(place.line, 10) +
           messages::kLocationColumn + StringHelper::ConvertToString(place.column, 10) +
           messages::kLocationEnd;
}

}  // namespace ns_ruke
