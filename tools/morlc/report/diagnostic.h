// SPDX-License-Identifier: MIT
#pragma once

#include "report/source_text.h"

#include <stdexcept>
#include <string>

namespace morlc {

/// One problem, or one remark, as it is shown.
struct Diagnostic {
    bool isError = true;
    Place place;          ///< in the source of `node`, if one is concerned
    std::string node;     ///< empty: none is concerned
    std::string shader;   ///< of a manifest; empty: none is concerned
    std::string variant;  ///< of it, with the target, in which it was met first; does not count as
                          ///< a difference between two diagnostics
    std::string unknownNode;  ///< the name that `text` says is that of no node
    std::string text;         ///< may hold anything; it is made printable when it is shown
};

/// An error at a place.
Diagnostic ErrorAt(Place place, const std::string& text);

/// A problem that ends what the tool is doing.
class DiagnosticError : public std::runtime_error {
public:
    explicit DiagnosticError(Diagnostic what)
        : std::runtime_error(what.text), diagnostic(std::move(what))
    {
    }

    Diagnostic diagnostic;
};

/// Key for duplicate detection; ignores the variant.
std::string Identity(const Diagnostic& diagnostic);

/// How diagnostics are written.
enum class DiagnosticFormat { Text, Json };

/// A text diagnostic, with its line breaks: "FILE: node NAME:LINE:COLUMN: error: TEXT", and the
/// source line with a caret under it where there is one.
/// @param colour with the control sequences of a terminal.
std::string FormatText(const Diagnostic& diagnostic, bool colour);

/// The same as one JSON object on one line, with its line break. It has "severity" and "message",
/// and of "file", "node", "shader", "variant", "line" and "column" those that apply.
std::string FormatJson(const Diagnostic& diagnostic);

}  // namespace morlc
