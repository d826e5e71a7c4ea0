// SPDX-License-Identifier: MIT
#pragma once

#include "morl/core/export.h"

#include <string>

namespace ns_ruke {

class FaultCollector;
class LoggedFault;
class MorlCompiler;

/// What a thread works on, for those who hear its log. All of it hangs on one thread-local pointer,
/// because a library loaded at run time has little room for a thread's own data.
struct LogContext {
    const std::string* node = nullptr;         ///< null: none; likewise below
    const MorlCompiler* compiler = nullptr;    ///< that runs a request
    FaultCollector* collector = nullptr;       ///< gets the faults
    const LoggedFault* loggedFault = nullptr;  ///< whose message is being logged
};

/// The context of the current thread; empty when it works on nothing.
const LogContext& CurrentLogContext();

/// Changes the context of the current thread for as long as the object lives. Scopes nest.
class MORL_API LogScope {
public:
    /// Names the node that the thread works on. @param nodeName must outlive the scope.
    explicit LogScope(const std::string& nodeName);
    explicit LogScope(const std::string&& nodeName) = delete;

    /// Names the compiler that the thread works for. No node of it is at work yet.
    explicit LogScope(const MorlCompiler& compiler);

    explicit LogScope(const LogContext& newContext);
    LogScope(const LogScope&) = delete;
    LogScope& operator=(const LogScope&) = delete;
    ~LogScope();

    /// The node that the current thread works on; empty when it works on none.
    static std::string CurrentNode();

    /// The compiler that the current thread works for; null when it works for none.
    static const MorlCompiler* CurrentCompiler();

private:
    LogContext context;
    const LogContext* outer;
};

}  // namespace ns_ruke
