// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace ns_ruke {

/// An error that was logged.
struct CollectedFault {
    std::string node;  ///< empty: the request as a whole
    std::string message;
};

/// While it lives, what this thread logs as an error is also collected. An inner collector takes
/// precedence over an outer one.
class FaultCollector {
public:
    FaultCollector();
    FaultCollector(const FaultCollector&) = delete;
    FaultCollector& operator=(const FaultCollector&) = delete;
    ~FaultCollector();

    std::vector<CollectedFault> faults;

private:
    FaultCollector* outer;
};

/// Hands an error to the collector in force on this thread, if there is one.
void CollectFault(const std::string& message);

}  // namespace ns_ruke
