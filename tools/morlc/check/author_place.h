// SPDX-License-Identifier: MIT
#pragma once

#include <morl/morl.h>
#include <string>

namespace morlc {

/// Where an author finds what a compiler complains about.
struct AuthorPlace {
    std::string node;  ///< empty: from no node
    int line = 0;      ///< 1-based, in the node's content
    int column = 0;    ///< 1-based, in bytes
};

/// Finds the place in the sources for a line of a text.
/// @param line 1-based, in the text that the report is about
/// @param word the word that the message is about, as it was written; may be empty
AuthorPlace FindAuthorPlace(const ns_ruke::MorlCompiler& compiler,
                            const ns_ruke::PassReport& report, int line, const std::string& word);

/// Finds the declaration of the name that a message without a line mentions first.
AuthorPlace FindDeclaration(const ns_ruke::PassReport& report, const std::string& text);

}  // namespace morlc
