// SPDX-License-Identifier: MIT
#include "morl/core/log_scope.h"

namespace ns_ruke {
namespace {

thread_local const std::string* currentNode = nullptr;

}  // namespace

LogScope::LogScope(const std::string& nodeName) : outer(currentNode)
{
    currentNode = &nodeName;
}

LogScope::~LogScope()
{
    currentNode = outer;
}

std::string LogScope::CurrentNode()
{
    return currentNode != nullptr ? *currentNode : std::string();
}

}  // namespace ns_ruke
