// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace ns_ruke {

/// Log a finished message of the compiler, verbatim, in its category "Graphics". Not installed:
/// hosts listen through TamberLogSystem::SetSink.
void LogGraphicsInfo(const std::string& message);
void LogGraphicsError(const std::string& message);

}  // namespace ns_ruke
