// SPDX-License-Identifier: MIT
#pragma once

#include "morl/core/log_scope.h"
#include "morl/core/report_fault.h"

#include <string>
#include <vector>

namespace ns_ruke {

/// While it lives, what this thread logs as an error is also collected; or instead of being logged,
/// as is all else then. An inner collector takes precedence over an outer one.
class FaultCollector {
public:
    enum class Mode { Logged, Quiet };

    explicit FaultCollector(Mode newMode = Mode::Logged);

    /// Whether the collector in force on this thread keeps messages from the log.
    static bool IsQuiet();

    /// Hands a fault to the collector in force on this thread, if there is one.
    static void Collect(const ReportFault& fault);

    std::vector<ReportFault> faults;

private:
    const Mode mode;
    LogScope scope;
};

/// The fault that this thread is logging, for the sink that receives its message.
class LoggedFault {
public:
    /// The arguments must outlive this object.
    LoggedFault(const ReportFault& newFault, const std::string& newMessage);

    /// The fault that a message is about; null: about none.
    static const ReportFault* Of(const std::string& message);

    const ReportFault& fault;
    const std::string& message;

private:
    LogScope scope;
};

}  // namespace ns_ruke
