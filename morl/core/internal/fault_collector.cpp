// SPDX-License-Identifier: MIT
#include "morl/core/internal/fault_collector.h"

namespace ns_ruke {
namespace {

thread_local FaultCollector* collector = nullptr;
thread_local LoggedFault* logged = nullptr;

}  // namespace

FaultCollector::FaultCollector() : outer(collector)
{
    collector = this;
}

FaultCollector::~FaultCollector()
{
    collector = outer;
}

void CollectFault(const ReportFault& fault)
{
    if (collector != nullptr) {
        collector->faults.push_back(fault);
    }
}

LoggedFault::LoggedFault(const ReportFault& newFault, const std::string& newMessage)
    : fault(newFault), message(newMessage), outer(logged)
{
    logged = this;
}

LoggedFault::~LoggedFault()
{
    logged = outer;
}

// A sink may log as well, so the message must be that of the fault.
const ReportFault* FaultOfMessage(const std::string& message)
{
    return logged != nullptr && logged->message == message ? &logged->fault : nullptr;
}

}  // namespace ns_ruke
