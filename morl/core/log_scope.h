// SPDX-License-Identifier: MIT
#pragma once

#include "morl/core/export.h"

#include <string>

namespace ns_ruke {

/// Names the node that the current thread works on, for as long as the object lives. Scopes nest;
/// the innermost one counts. The name must outlive the scope.
class MORL_API LogScope {
public:
    explicit LogScope(const std::string& nodeName);
    explicit LogScope(const std::string&& nodeName) = delete;
    LogScope(const LogScope&) = delete;
    LogScope& operator=(const LogScope&) = delete;
    ~LogScope();

    /// The node that the current thread works on; empty when it works on none.
    static std::string CurrentNode();

private:
    const std::string* outer;
};

}  // namespace ns_ruke
