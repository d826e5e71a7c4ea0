// SPDX-License-Identifier: MIT
#pragma once

#include "diagnostic.h"

#include <json/json.h>
#include <string>
#include <string_view>

namespace morlc {

/// A JSON document that was read from a file, with what it takes to point at its values.
class JsonFile {
public:
    /// Reads a file, which must hold one strict JSON document.
    /// @throws DiagnosticError when it cannot be read or is not one.
    explicit JsonFile(const std::string& path);

    const Json::Value& Root() const { return root; }

    /// A diagnostic that points at a value of the document.
    Diagnostic At(const Json::Value& value, const std::string& text) const;

    /// Throws such a diagnostic.
    [[noreturn]] void Fail(const Json::Value& value, const std::string& text) const;

    /// Throws a diagnostic that points at the name of a member.
    [[noreturn]] void FailAtName(const Json::Value& member, const std::string& name,
                                 const std::string& text) const;

private:
    std::string path;
    SourceLines source;
    Json::Value root;
};

/// The whole file.
/// @throws DiagnosticError when it cannot be read.
std::string ReadFile(const std::string& path);

/// The whole file without the byte order mark of UTF-8, which the reader of JSON does not count,
/// either.
/// @throws DiagnosticError when it cannot be read.
std::string ReadJsonText(const std::string& path);

/// Parses a document.
/// @param text what is parsed; `path` and `source` are what diagnostics show instead, which has the
/// same lines and columns.
/// @throws DiagnosticError when it is not valid.
void ParseJson(const Json::CharReaderBuilder& builder, const std::string& text,
               const std::string& path, const SourceLines& source, Json::Value& root);

/// A diagnostic that points at a byte of a file.
Diagnostic DiagnosticAt(const std::string& path, const SourceLines& source, std::size_t offset,
                        const std::string& text);

/// A document as text, with its line break at the end; indented by two blanks.
std::string FormatJsonFile(const Json::Value& root);

}  // namespace morlc
