// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace morlc {

/// What completions are written for: shells, and "man", the options for the manual page.
std::vector<std::string> CompletionForms();

/// The completion of all commands and options, from their declarations.
std::string FormatCompletion(const std::string& form);

}  // namespace morlc
