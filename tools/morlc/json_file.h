// SPDX-License-Identifier: MIT
#pragma once

#include "report/diagnostic.h"

#include <json/json.h>
#include <filesystem>
#include <string>
#include <vector>

namespace morlc {

/// A JSON document read from a file, which can tell where its values are.
class JsonFile {
public:
    /// Reads a file, which must hold one strict JSON document.
    /// @param prefix put before a relative path in messages: empty, or a directory ending in "/".
    /// @throws DiagnosticError when it cannot be read or is not one.
    explicit JsonFile(const std::string& path, const std::string& prefix = {});

    const Json::Value& Root() const { return root; }

    /// Where a value of the document begins.
    Place At(const Json::Value& value) const;

    /// Where the name of a member stands.
    Place AtName(const Json::Value& member, const std::string& name) const;

    /// Throws an error that points at a value.
    [[noreturn]] void Fail(const Json::Value& value, const std::string& text) const;

private:
    SourceText source;
    Json::Value root;
};

/// A path as the one who called morlc would write it.
/// @param prefix put before a relative path: empty, or a directory ending in "/".
std::string AsGiven(const std::string& prefix, const std::filesystem::path& path);

/// The whole file without a UTF-8 byte order mark. (The JSON reader does not count the mark in its
/// offsets either.)
/// @throws DiagnosticError when it cannot be read.
SourceText ReadSource(const std::string& path, const std::string& prefix);

/// Parses a document.
/// @param text the text to parse. Errors show `source`, which has the same lines and columns.
/// @throws DiagnosticError when it is not valid.
void ParseJson(const Json::CharReaderBuilder& builder, const std::string& text,
               const SourceText& source, Json::Value& root);

/// A document that the library has written.
Json::Value ParseJson(const std::string& text);

/// A value on one line, without a line break.
std::string FormatJsonLine(const Json::Value& value);

/// A document as text, indented by two spaces and ending in a line break.
std::string FormatJsonFile(const Json::Value& root);

/// The same in parts, for a text of many megabytes.
std::vector<std::string> FormatLongJsonFile(const Json::Value& root);

}  // namespace morlc
