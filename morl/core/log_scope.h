// SPDX-License-Identifier: MIT
#pragma once

#include "morl/core/export.h"

#include <string>

namespace ns_ruke {

class FaultCollector;
class LoggedFault;
class MorlCompiler;

/// Names what the current thread works on, for as long as the object lives, so that a sink knows
/// who logs. Scopes nest; what an inner one does not name stays as it was.
class MORL_API LogScope {
public:
    /// Names the node that the thread works on. @param nodeName must outlive the scope.
    explicit LogScope(const std::string& nodeName);
    explicit LogScope(const std::string&& nodeName) = delete;

    /// Names the compiler that the thread works for. No node of it is at work yet.
    explicit LogScope(const MorlCompiler& newCompiler);

    LogScope(const LogScope&) = delete;
    LogScope& operator=(const LogScope&) = delete;
    ~LogScope();

    /// The node that the current thread works on; empty when it works on none.
    static std::string CurrentNode();

    /// The compiler that the current thread works for; null when it works for none.
    static const MorlCompiler* CurrentCompiler();

private:
    friend class FaultCollector;
    friend class LoggedFault;

    LogScope();

    const std::string* node = nullptr;         ///< null: none; likewise below
    const MorlCompiler* compiler = nullptr;    ///< that runs a request
    FaultCollector* collector = nullptr;       ///< gets the faults
    const LoggedFault* loggedFault = nullptr;  ///< whose message is being logged
    const LogScope* outer;

    /// The innermost scope of the thread; null: it works on nothing.
    static const LogScope* Current();
};

}  // namespace ns_ruke
