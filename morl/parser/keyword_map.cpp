// SPDX-License-Identifier: MIT
#include "morl/parser/keyword_map.h"

#include "morl/parser/internal/keywords.h"

#include <algorithm>
#include <cstdint>

namespace ns_ruke {
namespace {

constexpr std::size_t kRows = std::size(kKeywords);

/// A function says what it takes, in the letters that Keyword explains; nothing else does.
constexpr bool AreFunctionsDescribed()
{
    std::size_t described = 0;
    for (const Keyword& keyword : kKeywords) {
        const bool isFunction = keyword.wordClass == WordClass::Function;
        const bool isKnown =
            keyword.arguments.find_first_not_of("vnmcst") == std::string_view::npos;
        described += isFunction != keyword.arguments.empty() && isKnown ? 1 : 0;
    }
    return described == kRows;
}
static_assert(AreFunctionsDescribed());

/// A semantic says what kind it is; nothing else does.
constexpr bool AreSemanticsDescribed()
{
    std::size_t described = 0;
    for (const Keyword& keyword : kKeywords) {
        const bool isSemantic = keyword.wordClass == WordClass::Semantic;
        described += isSemantic == (keyword.semantic != SemanticKind::None) ? 1 : 0;
    }
    return described == kRows;
}
static_assert(AreSemanticsDescribed());

constexpr bool AreInTokenOrder()
{
    for (std::size_t i = 1; i < kRows; ++i) {
        if (kKeywords[i - 1].token >= kKeywords[i].token) {
            return false;
        }
    }
    return true;
}
static_assert(AreInTokenOrder(), "one row for each word, in the order of the tokens");

/// The row of each token, counted from 1; 0: none.
constexpr TokenTable<std::uint8_t> kRowOfToken = [] {
    static_assert(kRows < UINT8_MAX);
    TokenTable<std::uint8_t> rows{};
    for (std::size_t i = 0; i < kRows; ++i) {
        rows[static_cast<std::size_t>(kKeywords[i].token)] = static_cast<std::uint8_t>(i + 1);
    }
    return rows;
}();

constexpr std::size_t kSlots = 256;

/// The factors were found by search, so that few keywords share a slot.
constexpr std::size_t SlotOf(std::string_view word)
{
    const auto byte = [&word](std::size_t i) { return static_cast<unsigned char>(word[i]); };
    const std::size_t length = word.size();
    return (byte(0) * 93U + byte(length - 1) * 215U + byte(length / 2) * 203U + length * 21U) %
           kSlots;
}

/// A hash table with open addressing, built at compile time: 0 is a free slot, and any other number
/// is the index of a keyword plus 1.
using Slots = std::array<std::uint8_t, kSlots>;

constexpr Slots MakeSlots()
{
    Slots slots{};
    for (std::size_t i = 0; i < kRows; ++i) {
        std::size_t slot = SlotOf(kKeywords[i].spelling);
        while (slots[slot] != 0) {
            slot = (slot + 1) % kSlots;
        }
        slots[slot] = static_cast<std::uint8_t>(i + 1);
    }
    return slots;
}

constexpr Slots kSlotTable = MakeSlots();

}  // namespace

KeywordList KeywordMap::Keywords()
{
    return {std::begin(kKeywords), std::end(kKeywords)};
}

KeywordMap KeywordMap::Language()
{
    KeywordMap map;
    map.count = kRows;
    return map;
}

ENUM_TOKEN KeywordMap::Find(std::string_view word) const
{
    if (word.empty() || count == 0) {
        return TOKEN_NONE;
    }
    for (std::size_t slot = SlotOf(word); kSlotTable[slot] != 0; slot = (slot + 1) % kSlots) {
        const Keyword& keyword = kKeywords[kSlotTable[slot] - 1U];
        if (keyword.spelling == word) {
            return keyword.token;
        }
    }
    return TOKEN_NONE;
}

const Keyword& KeywordMap::RowOf(ENUM_TOKEN token)
{
    static constexpr Keyword kNone;
    const auto index = static_cast<std::size_t>(token);
    const std::size_t row = index < kTokenCount ? kRowOfToken[index] : 0;
    return row != 0 ? kKeywords[row - 1] : kNone;
}

std::string_view KeywordMap::WordOf(ValueType type)
{
    const auto* const found =
        std::find_if(std::begin(kKeywords), std::end(kKeywords), [&](const Keyword& keyword) {
            return keyword.wordClass == WordClass::Type && keyword.type.base == type.base &&
                   keyword.type.rows == type.rows && keyword.type.columns == type.columns;
        });
    return found != std::end(kKeywords) ? found->spelling : std::string_view();
}

}  // namespace ns_ruke
