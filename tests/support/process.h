// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace morl_test {

/// The tool to test: the one of this build, or the one that the variable MORLC of the environment
/// names.
std::string ToolPath();

/// The result of a finished program.
struct ProcessResult {
    int status = -1;  ///< exit status; 128 plus the signal when one ended it; 127: not found
    std::string out;
    std::string err;
};

/// Runs a program with these arguments, without a shell, and waits for it.
ProcessResult RunProcess(const std::vector<std::string>& command);

/// Runs a command line with the shell.
ProcessResult RunShell(const std::string& line);

}  // namespace morl_test
