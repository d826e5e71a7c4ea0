// SPDX-License-Identifier: MIT
#pragma once

#include "support/process.h"

#include <string>
#include <vector>

namespace morl_test {

inline const std::string kExamples = std::string(MORL_SOURCE_DIR) + "/examples";

/// Runs the tool that was built beside the tests.
inline ProcessResult Morlc(std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin(), MORLC);
    return RunProcess(arguments);
}

}  // namespace morl_test
