// SPDX-License-Identifier: MIT
#pragma once

#include "build/manifest.h"
#include "report/diagnostics.h"

#include <morl/morl.h>
#include <cstddef>
#include <set>
#include <string>
#include <vector>

namespace morlc {

/// The semantic of samplers whose registers the host assigns.
constexpr const char* kAutomaticRegister = "SAUTO";

/// The names that the passes of a shader have asked for.
struct UsedNames {
    std::set<std::string> macros;
    std::set<std::string> samplers;       ///< those that are bound to SAUTO
    std::set<std::string> otherUniforms;  ///< all others

    void Add(const ns_ruke::PassReport& report);

    /// Adds what the sources of some nodes mention, of these macros: what they do not ask for now
    /// they may ask for with other values.
    void AddMentioned(const ns_ruke::MorlCompiler& compiler, const std::vector<std::string>& nodes,
                      const NamePlaces& given);
};

/// Warns about macros and samplers that are given, but that no node has.
/// @param where "shader 'lit'", say
/// @param namesChecks whether to name the checks that find them
void ReportUnusedNames(const NamePlaces& macros, const NamePlaces& samplers, const UsedNames& used,
                       const std::string& where, bool namesChecks, Diagnostics& diagnostics);

}  // namespace morlc
