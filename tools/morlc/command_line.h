// SPDX-License-Identifier: MIT
#pragma once

#include "options.h"

#include <CLI/CLI.hpp>
#include <functional>
#include <string>
#include <vector>

namespace morlc {

/// Declares what every command understands.
void DeclareCommon(CLI::App& app, CommonOptions& options);

/// Parses the arguments, then calls `check`, which may throw CLI::ValidationError for options that
/// do not go together. Returns like ReadOptions.
bool ParseCommandLine(CLI::App& app, int argc, char** argv, const std::function<void()>& check,
                      ExitStatus& status);

/// Like ReadOptions, for what follows "morlc build".
bool ReadBuildOptions(int argc, char** argv, Options& options, ExitStatus& status);

/// Takes one of these values only, and suggests the nearest one otherwise.
CLI::Validator OneOf(const std::vector<std::string>& values);

/// The integer that a text is.
/// @throws CLI::ValidationError, naming the option, when it is none or outside of the 32-bit range.
int ReadInteger(const std::string& option, const std::string& text);

}  // namespace morlc
