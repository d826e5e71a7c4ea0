// SPDX-License-Identifier: MIT
#pragma once

#include "build/manifest.h"

#include <json/json.h>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace morlc {

/// What the engine has to know of one text.
struct TextRecord {
    std::string target;
    std::string stage;                  ///< "vertex" or "fragment"
    std::string hash;                   ///< of the text: what is built on the text changes with it
    std::vector<std::string> uniforms;  ///< in the order of their declarations
    std::map<std::string, int>
        samplers;  ///< the registers of the uniforms to which the manifest assigns one
    std::map<std::string, std::string> semantics;  ///< assigned texture coordinates
};

/// The files of one variant, relative to the directory that is written to.
struct VariantRecord {
    std::string vertex;    ///< empty: the shader has no such pass
    std::string fragment;  ///< likewise
};

/// What is known of a built shader: the reflection file DIR/SHADER.json.
struct ShaderRecord {
    std::map<std::string, TextRecord> texts;                               ///< by file
    std::map<std::string, std::map<std::string, VariantRecord>> variants;  ///< by target and name

    /// @param shader what the record is of; the file also repeats what the manifest says.
    Json::Value ToJson(const ManifestShader& shader) const;

    /// Reads back what ToJson wrote.
    /// @throws DiagnosticError when the file is not there or is something else.
    static ShaderRecord Read(const std::filesystem::path& path);
};

/// The index of a whole manifest: of each shader and target the files of each variant, and of each
/// file the hash.
Json::Value MakeIndex(const std::map<std::string, ShaderRecord>& records);

/// Where the reflection of a shader is written.
std::filesystem::path RecordPath(const std::filesystem::path& directory, const std::string& shader);

/// Where the index is written.
std::filesystem::path IndexPath(const std::filesystem::path& directory);

}  // namespace morlc
