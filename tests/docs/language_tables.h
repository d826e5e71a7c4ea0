// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace morl_test {

/// docs/language.md with its tables "types", "semantics" and "intrinsics" as the compiler has them.
std::string WithLanguageTables(const std::string& document);

/// The grammar of the editors with the words of the language.
std::string WithWordLists(const std::string& grammar);

/// The list of targets of the npm package.
std::string TargetList();

/// The files that these are about.
constexpr char kGrammar[] = MORL_SOURCE_DIR "/editors/vscode/syntaxes/morl.tmLanguage.json";
constexpr char kTargetList[] = MORL_SOURCE_DIR "/bindings/js/src/targets.ts";

/// docs/morlc.md with its table "checks" as the library has them.
std::string WithCheckTable(const std::string& document);

}  // namespace morl_test
