// SPDX-License-Identifier: MIT
#pragma once

#include "morl/core/export.h"

#include <string>

namespace ns_ruke {

class MorlCompiler;

/// Names the compiler or the node that the current thread works on, for as long as the object
/// lives, so that a sink knows who logs. Scopes nest; the innermost one counts.
class MORL_API LogScope {
public:
    /// @param nodeName must outlive the scope.
    explicit LogScope(const std::string& nodeName);
    explicit LogScope(const std::string&& nodeName) = delete;

    /// No node of this compiler is at work yet.
    explicit LogScope(const MorlCompiler& newCompiler);

    LogScope(const LogScope&) = delete;
    LogScope& operator=(const LogScope&) = delete;
    ~LogScope();

    /// The node that the current thread works on; empty when it works on none.
    static std::string CurrentNode();

    /// The compiler that the current thread works for; null when it works for none.
    static const MorlCompiler* CurrentCompiler();

private:
    const std::string* node;       ///< null: none
    const MorlCompiler* compiler;  ///< likewise
    const LogScope* outer;         ///< likewise
};

}  // namespace ns_ruke
