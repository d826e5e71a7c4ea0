// SPDX-License-Identifier: MIT
#include "morl/core/internal/fault_collector.h"

#include "morl/core/log_scope.h"

namespace ns_ruke {
namespace {

thread_local FaultCollector* current = nullptr;

}  // namespace

FaultCollector::FaultCollector() : outer(current)
{
    current = this;
}

FaultCollector::~FaultCollector()
{
    current = outer;
}

void CollectFault(const std::string& message)
{
    if (current != nullptr) {
        current->faults.push_back({LogScope::CurrentNode(), message});
    }
}

}  // namespace ns_ruke
