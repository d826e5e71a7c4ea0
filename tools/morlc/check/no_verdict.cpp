// SPDX-License-Identifier: MIT
// Stands in for verdict.cpp where the tool is built without a compiler.
#include "check/verdict.h"

namespace morlc {

bool HasVerdict()
{
    return false;
}

std::vector<VerdictMessage> Judge(const std::string& /*target*/, const std::string& /*vertex*/,
                                  const std::string& /*fragment*/)
{
    return {};
}

}  // namespace morlc
