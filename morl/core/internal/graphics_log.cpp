// SPDX-License-Identifier: MIT
#include "morl/core/internal/graphics_log.h"

#include "morl/core/log_system.h"

#include <utility>

namespace ns_ruke {

void LogGraphicsInfo(std::string message)
{
    TamberLogSystem::LogInitialize();
    Singleton<TamberLogSystem>::GetSingletonPtr()->LogInfo("Graphics", std::move(message));
}

void LogGraphicsError(std::string message)
{
    TamberLogSystem::LogInitialize();
    Singleton<TamberLogSystem>::GetSingletonPtr()->LogError("Graphics", std::move(message));
}

}  // namespace ns_ruke
