// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace morl_test {

/// docs/language.md with its tables "types", "semantics" and "intrinsics" as the compiler has them.
std::string WithLanguageTables(const std::string& document);

}  // namespace morl_test
