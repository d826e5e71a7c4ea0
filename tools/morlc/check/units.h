// SPDX-License-Identifier: MIT
#pragma once

#include "build/manifest.h"
#include "check/findings.h"
#include "options.h"

#include <morl/morl.h>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace morlc {

/// A shader in one target and variant, with the passes that it has.
struct Unit {
    FindingContext context;
    std::size_t shader = 0;  ///< its index in the manifest
    std::optional<ns_ruke::PassProperty> vertex;
    std::optional<ns_ruke::PassProperty> fragment;
};

/// What the options name, in each of these targets.
std::vector<Unit> UnitsOf(const PassOptions& options, const std::vector<std::string>& targets);

/// The variants of a manifest.
/// @param shaders the only ones; empty: all of them
std::vector<Unit> UnitsOf(const Manifest& manifest, const std::vector<std::string>& shaders,
                          const std::vector<std::string>& targets);

}  // namespace morlc
