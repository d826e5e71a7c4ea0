// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace morl_test {

/// docs/NAME.md.
std::filesystem::path Document(const std::string& name);

/// A row of a table in Markdown.
std::string TableRow(const std::vector<std::string>& cells);

/// Puts a table between its marks: "<!-- table: NAME -->" and the next "<!-- end -->".
/// @throws std::runtime_error if the document has no such marks
void ReplaceTable(std::string& document, const std::string& name, const std::string& table);

}  // namespace morl_test
