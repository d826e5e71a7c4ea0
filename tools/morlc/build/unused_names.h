// SPDX-License-Identifier: MIT
#pragma once

#include "build/manifest.h"
#include "report/diagnostics.h"

#include <morl/morl.h>
#include <cstddef>
#include <set>
#include <string>

namespace morlc {

/// The semantic of samplers whose registers the host assigns.
constexpr const char* kAutomaticRegister = "SAUTO";

/// The names that the passes of a shader have asked for.
struct UsedNames {
    std::set<std::string> macros;
    std::set<std::string> samplers;       ///< those that are bound to SAUTO
    std::set<std::string> otherUniforms;  ///< all others

    void Add(const ns_ruke::PassReport& report);
};

/// Warns about macros and samplers that are given, but that nothing asks for.
/// @param where "shader 'lit'", say
/// @param check the name of the check of macros; empty: none
void ReportUnusedNames(const NamePlaces& macros, const NamePlaces& samplers, const UsedNames& used,
                       const std::string& where, const std::string& check,
                       Diagnostics& diagnostics);

}  // namespace morlc
