// SPDX-License-Identifier: MIT
#pragma once

#include "diagnostics.h"
#include "manifest.h"
#include "record.h"

#include <morl/morl.h>
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace morlc {

/// One variant of one shader in one target: both its passes.
struct Job {
    std::size_t shader;  ///< the place in the manifest
    std::string target;
    std::size_t variant;
};

/// All jobs of a manifest in the order in which they are done: the nodes are parsed anew for
/// another target, so a target is finished before the next one begins.
/// @param shaders the names of those to be built; empty: all of them.
std::vector<Job> MakeJobs(const Manifest& manifest, const std::vector<std::string>& shaders);

/// What was made of the jobs of one shader.
struct BuiltShader {
    ShaderRecord record;
    std::map<std::string, std::string> codes;  ///< the texts, by file
    std::size_t passes = 0;                    ///< how many texts there were before equal ones met
    bool failed = false;  ///< an error was reported: the rest is not to be used
};

/// What the threads of a build work on.
struct GridWork {
    const Manifest& manifest;
    const std::vector<Job>& jobs;
    /// One per thread, each loaded from the same files.
    const std::vector<std::unique_ptr<ns_ruke::MorlCompiler>>& compilers;
    Diagnostics& diagnostics;
    /// Called with the number of jobs done so far, by one thread at a time; last with that of all
    /// jobs, before anything is reported.
    std::function<void(std::size_t)> progress;
};

/// Does all jobs. What comes out, what is reported and in what order does not depend on the number
/// of compilers.
/// @return by shader, in the order of the manifest.
std::vector<BuiltShader> RunGrid(const GridWork& work);

}  // namespace morlc
