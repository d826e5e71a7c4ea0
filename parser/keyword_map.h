// SPDX-License-Identifier: MIT
#pragma once

#include "morl/core/export.h"
#include "morl/parser/token.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace ns_ruke {

/// One keyword: its spelling and its token.
struct Keyword {
    std::string_view spelling;
    ENUM_TOKEN token = TOKEN_NONE;
};

constexpr std::size_t kKeywordCount = 94;

/// A hash map from spelling to token: open addressing over a table that is computed at compile
/// time, so that filling it copies a few hundred bytes and looking a word up allocates nothing.
class MORL_API KeywordMap {
public:
    constexpr KeywordMap() = default;

    /// A map of these keywords, which must outlive it.
    constexpr explicit KeywordMap(const std::array<Keyword, kKeywordCount>& table)
        : keywords(table.data())
    {
        for (std::size_t i = 0; i < table.size(); ++i) {
            Insert(i);
        }
    }

    /// The keywords of the Morl language, as a map and as they stand in its table.
    static const KeywordMap& Language();
    static const std::array<Keyword, kKeywordCount>& Keywords();

    /// The token of `word`, or TOKEN_NONE when it is no keyword. The match is exact.
    constexpr ENUM_TOKEN Find(std::string_view word) const
    {
        if (word.empty()) {
            return TOKEN_NONE;
        }
        for (std::size_t slot = Hash(word);; slot = (slot + 1) % kSlots) {
            if (slots[slot] == 0) {
                return TOKEN_NONE;
            }
            const Keyword& keyword = keywords[slots[slot] - 1];
            if (keyword.spelling == word) {
                return keyword.token;
            }
        }
    }

    constexpr std::size_t size() const { return count; }

private:
    static constexpr std::size_t kSlots = 256;

    // The factors were searched for: of 94 keywords few share a slot.
    static constexpr std::size_t Hash(std::string_view word)
    {
        const auto byte = [&word](std::size_t i) { return static_cast<unsigned char>(word[i]); };
        const std::size_t length = word.size();
        return (byte(0) * 93U + byte(length - 1) * 215U + byte(length / 2) * 203U + length * 21U) %
               kSlots;
    }

    constexpr void Insert(std::size_t index)
    {
        const std::string_view word = keywords[index].spelling;
        if (Find(word) != TOKEN_NONE) {
            return;
        }
        std::size_t slot = Hash(word);
        while (slots[slot] != 0) {
            slot = (slot + 1) % kSlots;
        }
        slots[slot] = static_cast<std::uint8_t>(index + 1);
        ++count;
    }

    const Keyword* keywords = nullptr;
    std::size_t count = 0;
    std::array<std::uint8_t, kSlots> slots{};  ///< 0: free; otherwise the keyword's index plus 1
};

}  // namespace ns_ruke
