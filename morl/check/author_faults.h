// SPDX-License-Identifier: MIT
#pragma once

#include "morl/core/report_fault.h"

#include <string>
#include <vector>

namespace ns_ruke {

/// What an author is told of the faults of a source. The parser notices that something is missing
/// at the next word, often lines below; here the place is behind the word that it should have
/// followed, and a word in place of the end of a macro block has a message of its own. What only
/// follows from a fault is left out: it is what the parser no longer says when the source is
/// repaired there.
/// @param content the source
/// @param faults what the parser has said of it, in its order
std::vector<ReportFault> AuthorFaults(const std::string& content, std::vector<ReportFault> faults);

}  // namespace ns_ruke
