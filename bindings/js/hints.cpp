// SPDX-License-Identifier: MIT
// The hints of the command-line tool, for hosts of the module.
#include "report/hints.h"

#include <morl/c/morl.h>
#include <cstdlib>
#include <exception>
#include <string>

/// What may be behind a fault of a node: a text that ends with a NUL, which the caller frees, or
/// null if nothing is known.
/// @param line 1-based, like `column`, which is in bytes
extern "C" char* morl_js_hint(const morl_text* content, int line, int column, const morl_text* text)
{
    try {
        const morlc::SourceText source("", std::string(content->data, content->size));
        morlc::Diagnostic diagnostic;
        diagnostic.place = source.At(line, column);
        diagnostic.text = std::string(text->data, text->size);
        const std::string hint = morlc::HintFor(diagnostic);
        auto* copy = hint.empty() ? nullptr : static_cast<char*>(std::malloc(hint.size() + 1));
        if (copy != nullptr) {
            hint.copy(copy, hint.size());
            copy[hint.size()] = '\0';
        }
        return copy;
    } catch (const std::exception&) {
        return nullptr;
    }
}
