// SPDX-License-Identifier: MIT
#pragma once

#include "report/diagnostics.h"
#include "report/source_text.h"

namespace morlc {

/// Warns of what the library reads over in a node file that it takes: text after the list, members
/// that stand twice or are almost right, references that are no list, nodes without a name, and
/// bytes that are no text.
void WarnOfSlips(const SourceText& source, Diagnostics& diagnostics);

/// Warns of the first byte of a node file or source that is no text in UTF-8, or NUL.
void WarnOfBytes(const SourceText& source, Diagnostics& diagnostics);

}  // namespace morlc
