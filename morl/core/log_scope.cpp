// SPDX-License-Identifier: MIT
#include "morl/core/log_scope.h"

namespace ns_ruke {
namespace {

constexpr LogContext kNothing;

thread_local const LogContext* current = &kNothing;

LogContext WithNode(const std::string& node)
{
    LogContext context = CurrentLogContext();
    context.node = &node;
    return context;
}

LogContext WithCompiler(const MorlCompiler& compiler)
{
    LogContext context = CurrentLogContext();
    context.node = nullptr;
    context.compiler = &compiler;
    return context;
}

}  // namespace

const LogContext& CurrentLogContext()
{
    return *current;
}

LogScope::LogScope(const LogContext& newContext) : context(newContext), outer(current)
{
    current = &context;
}

LogScope::LogScope(const std::string& nodeName) : LogScope(WithNode(nodeName)) {}

LogScope::LogScope(const MorlCompiler& compiler) : LogScope(WithCompiler(compiler)) {}

LogScope::~LogScope()
{
    current = outer;
}

std::string LogScope::CurrentNode()
{
    return current->node != nullptr ? *current->node : std::string();
}

const MorlCompiler* LogScope::CurrentCompiler()
{
    return current->compiler;
}

}  // namespace ns_ruke
