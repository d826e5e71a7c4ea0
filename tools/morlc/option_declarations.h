// SPDX-License-Identifier: MIT
#pragma once

#include "options.h"

#include <CLI/CLI.hpp>
#include <vector>

namespace morlc {

/// A command, and what it takes.
struct CommandInfo {
    Command command;
    const char* name;
    const char* summary;  ///< on one line
    const char* footer;   ///< of its help
    /// Declares its options.
    void (*declare)(CLI::App& app, Options& options);
    /// Checks what concerns several options, when all have been read; null: nothing does.
    /// @throws CLI::ParseError
    void (*finish)(const CLI::App& app, Options& options);
};

/// All commands, in the order in which they are listed.
const std::vector<CommandInfo>& Commands();

/// Declares what every command takes.
void DeclareCommon(CLI::App& app, CommonOptions& options);

}  // namespace morlc
