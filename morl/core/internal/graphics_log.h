// SPDX-License-Identifier: MIT
#pragma once

#include "morl/core/text_lines.h"

#include <string>

namespace ns_ruke {

// Log a finished message of the compiler, verbatim, in its category "Graphics". Not installed:
// hosts listen through TamberLogSystem::SetSink.

void LogGraphicsInfo(const std::string& message);

/// An error is also collected, with the node that the thread works on.
/// @param place in the content of the node; the message then begins with it
void LogGraphicsError(const std::string& text, const TextPlace& place = {});

/// A place as messages begin with it.
std::string FormatPlace(const TextPlace& place);

}  // namespace ns_ruke
