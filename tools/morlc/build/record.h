// SPDX-License-Identifier: MIT
#pragma once

#include "build/manifest.h"

#include <json/json.h>
#include <morl/morl.h>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace morlc {

/// What the engine needs to know about one text.
struct TextRecord {
    std::string hash;        ///< of the text; changes when the text does
    std::string reflection;  ///< ns_ruke::ReportText, with the macros of its first variant
};

/// The files of one variant, relative to the output directory, as ShaderRecord::File has them.
struct VariantRecord {
    const std::string* vertex = nullptr;    ///< null: the shader has no such pass
    const std::string* fragment = nullptr;  ///< likewise
};

/// What is known about a built shader: the reflection file DIR/SHADER.json.
struct ShaderRecord {
    ShaderRecord() = default;
    ShaderRecord(ShaderRecord&&) = default;
    ShaderRecord& operator=(ShaderRecord&&) = default;

    std::map<std::string, TextRecord> texts;                               ///< by file
    std::map<std::string, std::map<std::string, VariantRecord>> variants;  ///< by target and name

    /// The name of a file, for VariantRecord; stored once and valid as long as this record.
    const std::string* File(const std::string& name);

    /// @param shader the shader of this record; the file repeats what the manifest says about it.
    /// @return refers to the names in the record, so it must not outlive it.
    Json::Value ToJson(const ManifestShader& shader) const;

    /// Reads back what the index needs of what ToJson wrote.
    /// @throws DiagnosticError if the file is missing or has another form.
    static ShaderRecord Read(const std::filesystem::path& path);

    /// The names of the texts alone. A record may have a hundred thousand variants.
    static std::vector<std::string> ReadTextNames(const std::filesystem::path& path);

private:
    std::set<std::string> files;
};

/// The index of a whole manifest: the files of each variant, by shader and target, and the hash of
/// each file.
/// @param records not null; the result refers to their names and must not outlive them.
Json::Value MakeIndex(const std::map<std::string, const ShaderRecord*>& records);

/// Where the reflection of a shader is written.
std::filesystem::path RecordPath(const std::filesystem::path& directory, const std::string& shader);

/// Where the index is written.
std::filesystem::path IndexPath(const std::filesystem::path& directory);

}  // namespace morlc
