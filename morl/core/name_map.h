// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>
#include <vector>

namespace ns_ruke {

/// A hash of all bytes of a name.
inline std::uint64_t HashName(std::string_view name)
{
    constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15U;
    const auto read = [&name](auto part, std::size_t start) {
        std::memcpy(&part, name.data() + start, sizeof part);
        return std::uint64_t{part};
    };
    const std::size_t size = name.size();
    std::uint64_t hash = size;
    if (size >= 8) {
        for (std::size_t i = 0; i + 8 < size; i += 8) {
            hash = (hash ^ read(std::uint64_t{}, i)) * kFactor;
            hash ^= hash >> 29U;
        }
        hash ^= read(std::uint64_t{}, size - 8);
    } else if (size >= 4) {
        hash ^= read(std::uint32_t{}, 0) << 32U | read(std::uint32_t{}, size - 4);
    } else if (size > 0) {
        hash ^= read(std::uint8_t{}, 0) << 8U | read(std::uint8_t{}, size / 2) << 16U |
                read(std::uint8_t{}, size - 1) << 24U;
    }
    return hash * kFactor >> 32U;
}

/// Values by name, made for the few dozen names of a pass: the first ones need no allocation. A
/// copy is empty, because a map belongs to the work at hand.
template <class Value>
class NameMap {
    static_assert(std::is_trivial_v<Value>, "so that making a map costs nothing");

public:
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init)
    NameMap() = default;
    NameMap(const NameMap& /*other*/) : NameMap() {}
    NameMap& operator=(const NameMap& other)
    {
        if (this != &other) {
            Clear();
        }
        return *this;
    }
    ~NameMap() = default;

    /// The value of a name; a new one if the name has none.
    /// @param name must outlive the map
    Value& operator[](std::string_view name)
    {
        const std::uint64_t hash = HashName(name);
        if (Value* known = Find(name, hash)) {
            return *known;
        }
        if (count == (many.empty() ? kFew : many.size())) {
            Grow();
        }
        Entry& entry = Entries()[count];
        entry = {name.data(), name.size(), Value(), LastOf(hash)};
        ++count;
        if (many.empty()) {
            fewBuckets[hash % (2 * kFew)] = static_cast<std::uint8_t>(count);
        } else {
            manyBuckets[hash & (manyBuckets.size() - 1)] = static_cast<std::uint32_t>(count);
        }
        return entry.value;
    }

    /// The value of a name, until the next one is added; null if it has none.
    Value* Find(std::string_view name) { return Find(name, HashName(name)); }
    const Value* Find(std::string_view name) const
    {
        return const_cast<NameMap*>(this)->Find(name);
    }

    void Clear()
    {
        count = 0;
        many.clear();
        std::memset(fewBuckets, 0, sizeof fewBuckets);
    }

private:
    static constexpr std::size_t kFew = 32;

    struct Entry {
        bool Has(std::string_view name) const
        {
            return size == name.size() && std::memcmp(data, name.data(), size) == 0;
        }

        const char* data;  ///< of the name
        std::size_t size;
        Value value;
        std::uint32_t next;  ///< of the same bucket, counted from 1; 0: none
    };

    Entry* Entries() { return many.empty() ? few : many.data(); }

    /// The last entry of a bucket, counted from 1; 0: none. The number of buckets is a power of 2.
    std::uint32_t LastOf(std::uint64_t hash) const
    {
        return many.empty() ? fewBuckets[hash % (2 * kFew)]
                            : manyBuckets[hash & (manyBuckets.size() - 1)];
    }

    Value* Find(std::string_view name, std::uint64_t hash)
    {
        Entry* const entries = Entries();
        for (std::uint32_t i = LastOf(hash); i != 0; i = entries[i - 1].next) {
            if (entries[i - 1].Has(name)) {
                return &entries[i - 1].value;
            }
        }
        return nullptr;
    }

    void Grow()
    {
        std::vector<Entry> grown(4 * count);
        std::vector<std::uint32_t> buckets(2 * grown.size(), 0);
        for (std::size_t i = 0; i < count; ++i) {
            const Entry& old = Entries()[i];
            std::uint32_t& bucket = buckets[HashName({old.data, old.size}) & (buckets.size() - 1)];
            grown[i] = old;
            grown[i].next = bucket;
            bucket = static_cast<std::uint32_t>(i + 1);
        }
        many.swap(grown);
        manyBuckets.swap(buckets);
    }

    Entry few[kFew];  // only the first `count` have a value
    std::uint8_t fewBuckets[2 * kFew] = {};
    std::vector<Entry> many;  ///< all of them, once there are more; its size is the room
    std::vector<std::uint32_t> manyBuckets;
    std::size_t count = 0;
};

}  // namespace ns_ruke
