// SPDX-License-Identifier: MIT
#include "morl/core/internal/graphics_log.h"

#include "morl/core/internal/fault_collector.h"
#include "morl/core/log_system.h"

namespace ns_ruke {
namespace {

void Log(LogLevel level, const std::string& message)
{
    static const std::string category = "Graphics";
    TamberLogSystem::LogInitialize();
    Singleton<TamberLogSystem>::GetSingletonPtr()->Write(level, category, message);
}

}  // namespace

void LogGraphicsInfo(const std::string& message)
{
    Log(LogLevel::Info, message);
}

void LogGraphicsError(const std::string& message)
{
    CollectFault(message);
    Log(LogLevel::Error, message);
}

}  // namespace ns_ruke
