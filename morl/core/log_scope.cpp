// SPDX-License-Identifier: MIT
#include "morl/core/log_scope.h"

namespace ns_ruke {
namespace {

/// All that the log has of a thread's own data, of which a library loaded at run time gets little.
thread_local const LogScope* current = nullptr;

}  // namespace

LogScope::LogScope() : outer(current)
{
    if (outer != nullptr) {
        node = outer->node;
        compiler = outer->compiler;
        collector = outer->collector;
        loggedFault = outer->loggedFault;
    }
    current = this;
}

LogScope::LogScope(const std::string& nodeName) : LogScope()
{
    node = &nodeName;
}

LogScope::LogScope(const MorlCompiler& newCompiler) : LogScope()
{
    node = nullptr;
    compiler = &newCompiler;
}

LogScope::~LogScope()
{
    current = outer;
}

const LogScope* LogScope::Current()
{
    return current;
}

std::string LogScope::CurrentNode()
{
    return current != nullptr && current->node != nullptr ? *current->node : std::string();
}

const MorlCompiler* LogScope::CurrentCompiler()
{
    return current != nullptr ? current->compiler : nullptr;
}

}  // namespace ns_ruke
