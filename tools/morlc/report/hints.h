// SPDX-License-Identifier: MIT
#pragma once

#include "report/diagnostic.h"

#include <string>

namespace morlc {

/// What may be behind a fault that the parser has found, to judge by the line that it shows: a word
/// or a notation of another language. Empty if nothing is known.
std::string HintFor(const Diagnostic& diagnostic);

}  // namespace morlc
