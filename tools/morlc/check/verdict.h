// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace morlc {

/// Whether this tool can ask a compiler for its verdict.
bool HasVerdict();

/// What a compiler says about a text.
struct VerdictMessage {
    int stage = -1;    ///< as PassProperty has it; -1: both
    int line = 0;      ///< 1-based, in the text; 0: no line
    std::string word;  ///< what the message is about; may be empty
    std::string text;
    bool isMissing = false;  ///< there is no verdict, and the text says why
};

/// Compiles the texts of a shader and links its stages, if the target's can be linked. Several
/// threads may do this at the same time.
/// @param vertex, fragment empty: the shader has no such pass
/// @return the errors, in the order of the texts. A text that would take a compiler minutes gets no
///         verdict, which is the only message then.
std::vector<VerdictMessage> Judge(const std::string& target, const std::string& vertex,
                                  const std::string& fragment);

}  // namespace morlc
