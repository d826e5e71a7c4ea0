// SPDX-License-Identifier: MIT
#pragma once

#include "morl/core/export.h"

#include <string>
#include <vector>

namespace ns_ruke {

/// String services. All operations work on bytes and ignore the locale.
class MORL_API StringHelper {
public:
    /// Whether `text` begins with `prefix`. With `ignoreCase`, ASCII letters match in either case.
    static bool StartWith(const std::string& text, const std::string& prefix, bool ignoreCase);

    /// The digits of `value` in `base`, without sign or padding.
    /// @param base 2 to 36; digits above 9 are lower-case letters. Any other base gives the empty
    /// text.
    static std::string ConvertToString(unsigned int value, unsigned char base);

    /// As above, with a leading "-" when `value` is negative.
    static std::string ConvertToString(int value, unsigned char base);

    /// The pieces of `text` between occurrences of `separator`, in order. A text without the
    /// separator, or an empty separator, gives one piece: the whole text.
    /// @param dropEmpty leave out pieces of length 0.
    static std::vector<std::string> Split(const std::string& text, const std::string& separator,
                                          bool dropEmpty);

    /// A copy of `text` in which every occurrence of `from`, found left to right without overlap,
    /// is replaced by `to`. An empty `from` never matches.
    static std::string ReplaceAll(const std::string& text, const std::string& from,
                                  const std::string& to);

    /// The value of the decimal integer at the start of `text` (optional sign, then digits): 0 if
    /// there is none, and the nearest 32-bit value if it is out of range.
    static int ConvertToInt32(const std::string& text);
};

}  // namespace ns_ruke
