// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>
#include <unordered_map>

namespace ns_ruke {

/// What precedes the names of inputs and outputs in the body of a shader.
class Renames {
public:
    /// Replaces the prefix of a name that already has one.
    /// @param name, prefix must outlive this object.
    void Add(std::string_view name, std::string_view prefix)
    {
        if (count < few.size()) {
            few[count] = {name, prefix};
            ++count;
            return;
        }
        if (many.empty()) {
            for (const Entry& entry : few) {
                many[entry.name] = entry.prefix;
            }
        }
        many[name] = prefix;
    }

    /// Empty for a name that is not renamed.
    std::string_view PrefixOf(std::string_view name) const
    {
        if (!many.empty()) {
            const auto found = many.find(name);
            return found != many.end() ? found->second : std::string_view();
        }
        for (std::size_t i = count; i > 0; --i) {
            if (few[i - 1].name == name) {
                return few[i - 1].prefix;
            }
        }
        return {};
    }

private:
    struct Entry {
        std::string_view name;
        std::string_view prefix;
    };

    /// Comparing up to this many names costs less than a hash table.
    std::array<Entry, 16> few;
    std::size_t count = 0;  ///< of `few`
    /// All of them, once there are more.
    std::unordered_map<std::string_view, std::string_view> many;
};

}  // namespace ns_ruke
