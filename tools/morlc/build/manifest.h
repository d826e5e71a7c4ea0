// SPDX-License-Identifier: MIT
#pragma once

#include "report/diagnostic.h"

#include <json/json.h>
#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace morlc {

/// The version of the form of manifests, and of what a build writes about its shaders.
constexpr int kFormVersion = 1;

/// The name of the index in the output directory; no shader may have this name.
constexpr const char* kIndexName = "index";

/// Values by macro name.
using MacroValues = std::map<std::string, int>;

/// Where the manifest first names something, by name.
using NamePlaces = std::map<std::string, Place>;

/// A macro of a shader, with the values that it takes.
struct MacroRange {
    std::string name;
    std::vector<int> values;  ///< at least one
    bool isAxis = false;  ///< whether the manifest gives a list; if so, variant names contain it
};

/// A node that a shader names.
struct NodeName {
    std::string name;
    Place place;  ///< where the manifest names it
};

/// A shader of a manifest. Its variants are all combinations of the values of its macros, numbered
/// with the last macro varying fastest.
struct ManifestShader {
    std::string name;
    std::vector<NodeName> vertex;                     ///< empty: the shader has no such pass
    std::vector<NodeName> fragment;                   ///< likewise
    std::vector<std::string> targets;                 ///< in the order of ns_ruke::MorlTargets()
    std::vector<MacroRange> macros;                   ///< in ascending order of the names
    std::map<std::string, MacroValues> targetMacros;  ///< values that hold in one target only
    std::map<std::string, int> samplers;
    NamePlaces macroPlaces;  ///< of `macros` and `targetMacros`
    NamePlaces samplerPlaces;
    Place place;               ///< where the manifest names it
    std::size_t variants = 1;  ///< how many there are
    Json::Value entry;         ///< as the manifest has it

    /// The macros that have lists, with their values: "FOG=1,LIGHTS=2"; "default" if there are
    /// none.
    std::string VariantName(std::size_t variant) const;

    /// All macros of a variant.
    MacroValues Macros(std::size_t variant, const std::string& target) const;
};

/// The shaders that a JSON file lists:
///
///     {"targets": ["hlsl", "glsl"],
///      "shaders": [{"name": "lit", "vertex": ["a", "b"], "fragment": ["c"], "targets": ["glsl"],
///                   "macros": {"LIGHTS": [1, 2, 4], "FOG": 1},
///                   "targetMacros": {"hlsl10": {"SHADOWS": 1}},
///                   "samplers": {"albedoMap": 0}}]}
///
/// "name" and at least one of "vertex" and "fragment" are required.
struct Manifest {
    std::string path;  ///< as messages show it
    std::vector<ManifestShader> shaders;

    /// @param prefix put before a relative path in messages: empty, or a directory ending in "/".
    /// @throws DiagnosticError if the file cannot be read or does not have this form.
    Manifest(const std::string& newPath, const std::string& prefix);

    /// Checks that shaders with these names exist.
    /// @throws DiagnosticError if one does not.
    void CheckNames(const std::vector<std::string>& names) const;
};

}  // namespace morlc
