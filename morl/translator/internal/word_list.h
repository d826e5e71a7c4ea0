// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace ns_ruke {

/// Words that a target reserves, in ascending order; anything else does not compile.
class WordList {
public:
    constexpr WordList() = default;

    template <std::size_t count>
    constexpr explicit WordList(const std::string_view (&newWords)[count])
        : words(newWords), size(count)
    {
        for (std::size_t i = 0; i < count; ++i) {
            if (i > 0 && words[i - 1] >= words[i]) {
                throw "words must be unique and in ascending order";
            }
            lengths.at(IndexOf(words[i][0])) |= 1U << words[i].size();
        }
    }

    bool Contains(std::string_view name) const
    {
        return MayContain(name) && std::binary_search(words, words + size, name);
    }

private:
    static constexpr std::size_t kLetters = 'z' - 'A' + 1;

    /// The place of a first character in `lengths`; kLetters or more: no word begins so.
    static constexpr std::size_t IndexOf(char c)
    {
        return static_cast<std::size_t>(static_cast<unsigned char>(c)) - 'A';
    }

    /// Whether the name begins like one of the words and is as long. Most names fail this.
    bool MayContain(std::string_view name) const
    {
        constexpr std::size_t kLongestWord = 31;
        return !name.empty() && name.size() <= kLongestWord && IndexOf(name[0]) < kLetters &&
               (lengths[IndexOf(name[0])] & (1U << name.size())) != 0;
    }

    const std::string_view* words = nullptr;
    std::size_t size = 0;
    /// The lengths of the words that begin with each letter, as bits.
    std::array<std::uint32_t, kLetters> lengths{};
};

}  // namespace ns_ruke
