// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace morlc {

struct MergedLines {
    std::string text;
    bool isConflict = false;  ///< whether the text has marks of conflicts
};

/// Merges two edits of a text line by line, as "git merge-file" does.
/// @throws std::runtime_error if git cannot be run
MergedLines MergeLines(const std::string& base, const std::string& ours, const std::string& theirs);

}  // namespace morlc
