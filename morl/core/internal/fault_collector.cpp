// SPDX-License-Identifier: MIT
#include "morl/core/internal/fault_collector.h"

namespace ns_ruke {
namespace {

LogContext With(FaultCollector& collector)
{
    LogContext context = CurrentLogContext();
    context.collector = &collector;
    return context;
}

LogContext With(const LoggedFault& fault)
{
    LogContext context = CurrentLogContext();
    context.loggedFault = &fault;
    return context;
}

}  // namespace

FaultCollector::FaultCollector() : scope(With(*this)) {}

void CollectFault(const ReportFault& fault)
{
    if (FaultCollector* const collector = CurrentLogContext().collector) {
        collector->faults.push_back(fault);
    }
}

LoggedFault::LoggedFault(const ReportFault& newFault, const std::string& newMessage)
    : fault(newFault), message(newMessage), scope(With(*this))
{
}

// A sink may log as well, so the message must be that of the fault.
const ReportFault* FaultOfMessage(const std::string& message)
{
    const LoggedFault* const logged = CurrentLogContext().loggedFault;
    return logged != nullptr && logged->message == message ? &logged->fault : nullptr;
}

}  // namespace ns_ruke
