// SPDX-License-Identifier: MIT
#pragma once

#include "morl/core/excerpt.h"
#include "morl/core/export.h"

#include <string>
#include <string_view>

namespace ns_ruke {

/// What to write instead, or what may have gone wrong, judging by the line of a fault: a word or a
/// notation of another language, say. Empty if nothing is known.
/// @param excerpt at the fault's place
/// @param message of the fault, without its place
MORL_API std::string HintFor(const Excerpt& excerpt, std::string_view message);

/// The same, judging by the whole source, for its first fault.
std::string HintForSource(std::string_view content);

/// The word of the language that the first word of a line was probably meant to be; empty: none.
std::string MeantFirstWord(std::string_view line);

}  // namespace ns_ruke
