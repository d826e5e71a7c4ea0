// SPDX-License-Identifier: MIT
#include "morl/core/log_scope.h"

namespace ns_ruke {
namespace {

thread_local const LogScope* current = nullptr;

}  // namespace

LogScope::LogScope(const std::string& nodeName)
    : node(&nodeName), compiler(CurrentCompiler()), outer(current)
{
    current = this;
}

LogScope::LogScope(const MorlCompiler& newCompiler)
    : node(nullptr), compiler(&newCompiler), outer(current)
{
    current = this;
}

LogScope::~LogScope()
{
    current = outer;
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
