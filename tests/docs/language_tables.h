// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>

namespace morl_test {

/// The document that describes the language.
std::filesystem::path LanguageDocument();

/// A document with its tables made anew from those of the compiler: what stands between
/// "<!-- table: NAME -->" and "<!-- end -->", for the names "types", "semantics" and "intrinsics".
std::string WithLanguageTables(const std::string& document);

}  // namespace morl_test
