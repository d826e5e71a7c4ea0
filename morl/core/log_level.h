// SPDX-License-Identifier: MIT
#pragma once

namespace ns_ruke {

/// The level of a log message.
enum class LogLevel { Info, Error };

}  // namespace ns_ruke
