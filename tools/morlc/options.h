// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

namespace morlc {

/// What the process reports to its caller.
enum ExitStatus {
    kSuccess = 0,  ///< no error was logged
    kErrors = 1,   ///< an error was logged, or a file could not be read or written
    kUsage = 2     ///< the command line is wrong
};

/// What the command line asks for.
struct Options {
    std::string directory = ".";  ///< entered before anything else
    std::string target;           ///< a target, or "all"
    int stage = 0;
    std::vector<std::string> nodes;          ///< of the one pass of `stage`
    std::vector<std::string> vertexNodes;    ///< of the vertex pass, when both passes are asked for
    std::vector<std::string> fragmentNodes;  ///< of the fragment pass, likewise
    std::unordered_map<std::string, int> macros;
    std::unordered_map<std::string, int> samplers;
    std::string semanticsIn;   ///< empty: none
    std::string semanticsOut;  ///< empty: none
    std::string output = "-";  ///< a file ("-": standard output); a directory for both passes
    bool verbose = false;

    bool BothPasses() const { return !vertexNodes.empty(); }
};

/// Reads the command line into `options`. Returns true to go on; otherwise the process ends with
/// `status`, and what there is to say has been printed.
bool ReadOptions(int argc, char** argv, Options& options, ExitStatus& status);

}  // namespace morlc
