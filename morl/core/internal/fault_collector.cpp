// SPDX-License-Identifier: MIT
#include "morl/core/internal/fault_collector.h"

namespace ns_ruke {

FaultCollector::FaultCollector(Mode newMode) : mode(newMode)
{
    scope.collector = this;
}

bool FaultCollector::IsQuiet()
{
    const LogScope* const scope = LogScope::Current();
    return scope != nullptr && scope->collector != nullptr && scope->collector->mode == Mode::Quiet;
}

void FaultCollector::Collect(const ReportFault& fault)
{
    const LogScope* const scope = LogScope::Current();
    if (scope != nullptr && scope->collector != nullptr) {
        scope->collector->faults.push_back(fault);
    }
}

LoggedFault::LoggedFault(const ReportFault& newFault, const std::string& newMessage)
    : fault(newFault), message(newMessage)
{
    scope.loggedFault = this;
}

// A sink may log as well, so the message must be that of the fault.
const ReportFault* LoggedFault::Of(const std::string& message)
{
    const LogScope* const scope = LogScope::Current();
    const LoggedFault* const logged = scope != nullptr ? scope->loggedFault : nullptr;
    return logged != nullptr && logged->message == message ? &logged->fault : nullptr;
}

}  // namespace ns_ruke
