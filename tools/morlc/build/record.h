// SPDX-License-Identifier: MIT
#pragma once

#include "build/manifest.h"

#include <json/json.h>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace morlc {

/// What the engine needs to know about one text.
struct TextRecord {
    std::string target;
    std::string stage;                  ///< "vertex" or "fragment"
    std::string hash;                   ///< of the text; changes when the text does
    std::vector<std::string> uniforms;  ///< in the order of their declarations
    std::map<std::string, int>
        samplers;  ///< the registers of the uniforms to which the manifest assigns one
    std::map<std::string, std::string> semantics;  ///< assigned texture coordinates
};

/// The files of one variant, relative to the output directory.
struct VariantRecord {
    std::string vertex;    ///< empty: the shader has no such pass
    std::string fragment;  ///< likewise
};

/// What is known about a built shader: the reflection file DIR/SHADER.json.
struct ShaderRecord {
    std::map<std::string, TextRecord> texts;                               ///< by file
    std::map<std::string, std::map<std::string, VariantRecord>> variants;  ///< by target and name

    /// @param shader the shader of this record; the file repeats what the manifest says about it.
    Json::Value ToJson(const ManifestShader& shader) const;

    /// Reads back what ToJson wrote.
    /// @throws DiagnosticError if the file is missing or has another form.
    static ShaderRecord Read(const std::filesystem::path& path);
};

/// The index of a whole manifest: the files of each variant, by shader and target, and the hash of
/// each file.
Json::Value MakeIndex(const std::map<std::string, ShaderRecord>& records);

/// Where the reflection of a shader is written.
std::filesystem::path RecordPath(const std::filesystem::path& directory, const std::string& shader);

/// Where the index is written.
std::filesystem::path IndexPath(const std::filesystem::path& directory);

}  // namespace morlc
