// SPDX-License-Identifier: MIT
#pragma once

#include "report/source_text.h"

#include <json/json.h>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

namespace morlc {

/// How bad a problem is. A warning does not keep anything from being written.
enum class Severity { Error, Warning, Info };

/// One problem, or one remark, as shown to the user.
struct Diagnostic {
    bool IsError() const { return severity == Severity::Error; }

    Severity severity = Severity::Error;
    Place place;                   ///< in a file; if there is a node, the excerpt is of its content
    std::string node;              ///< empty if no node is affected
    ns_ruke::TextPlace nodePlace;  ///< in the content of `node`
    std::string reference;         ///< of `node`, if the text is about one; then that is the place
    std::string shader;            ///< of the manifest; empty if no shader is affected
    std::string variant;  ///< the first affected variant of the shader, with the target; does not
                          ///< make two diagnostics different
    std::string unknownNode;           ///< the name that `text` reports as unknown, if it does
    std::string check;                 ///< the name of the check that found it; empty: none
    std::vector<std::string> targets;  ///< in which it was found; empty: in all, or in none
    std::string generated;             ///< the line of a text that it is about; empty: none
    std::string hint;                  ///< what else may help; empty: nothing
    std::size_t more = 0;              ///< how many others there are on the same line
    std::string text;                  ///< may hold anything; it is made printable when it is shown
};

/// An error at a place.
Diagnostic ErrorAt(Place place, const std::string& text);

/// A warning at a place.
Diagnostic WarningAt(Place place, const std::string& text);

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
enum class DiagnosticFormat { Text, Json, Collected };

/// A diagnostic as text, including line breaks: "FILE:LINE:COLUMN: error: TEXT", as compilers write
/// it, then the node with its own line and column, followed by the source line with a caret under
/// it if there is one.
/// @param colour whether to add the control sequences of a terminal.
std::string FormatText(const Diagnostic& diagnostic, bool colour);

/// The same as a JSON object: docs/diagnostics.schema.json.
Json::Value ToJson(const Diagnostic& diagnostic);

/// The same as a JSON object on one line, including the line break.
std::string FormatJson(const Diagnostic& diagnostic);

}  // namespace morlc
