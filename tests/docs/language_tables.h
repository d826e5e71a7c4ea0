// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>

namespace morl_test {

/// The document that describes the language.
std::filesystem::path LanguageDocument();

/// A document with its tables regenerated from those of the compiler. A table is everything between
/// "<!-- table: NAME -->" and "<!-- end -->"; NAME is "types", "semantics" or "intrinsics".
std::string WithLanguageTables(const std::string& document);

}  // namespace morl_test
