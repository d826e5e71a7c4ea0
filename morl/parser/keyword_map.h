// SPDX-License-Identifier: MIT
#pragma once

#include "morl/core/export.h"
#include "morl/parser/token.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace ns_ruke {

/// One keyword: its spelling and its token.
struct Keyword {
    std::string_view spelling;
    ENUM_TOKEN token = TOKEN_NONE;
};

constexpr std::size_t kKeywordCount = 94;

/// A map from spelling to token. It refers to a table of the library, so it costs nothing to copy.
class MORL_API KeywordMap {
public:
    /// An empty map.
    KeywordMap() = default;

    /// The map of all keywords of the language, and the keywords themselves in the order of their
    /// tokens.
    static KeywordMap Language();
    static const std::array<Keyword, kKeywordCount>& Keywords();

    /// The token of `word`, or TOKEN_NONE if it is not a keyword. The match is exact.
    ENUM_TOKEN Find(std::string_view word) const;

    /// The word of the language for a token; empty if it has none.
    static std::string_view WordOf(ENUM_TOKEN token);

    std::size_t size() const { return count; }

private:
    std::size_t count = 0;
};

}  // namespace ns_ruke
