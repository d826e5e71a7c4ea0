// SPDX-License-Identifier: MIT
#pragma once

#include "options.h"

#include <CLI/CLI.hpp>
#include <vector>

namespace morlc {

/// Declares the options for use without a subcommand, and returns those that no subcommand accepts.
std::vector<CLI::Option*> DeclareMain(CLI::App& app, Options& options);

void DeclareBuild(CLI::App& app, CommonOptions& common, BuildOptions& options);
void DeclareCheck(CLI::App& app, CommonOptions& common, CheckOptions& options);

}  // namespace morlc
