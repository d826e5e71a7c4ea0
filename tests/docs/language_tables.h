// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace morl_test {

/// docs/language.md with its tables "types", "semantics" and "intrinsics" as the compiler has them.
std::string WithLanguageTables(const std::string& document);

/// docs/morlc.md with its table "checks" as the library has them.
std::string WithCheckTable(const std::string& document);

}  // namespace morl_test
