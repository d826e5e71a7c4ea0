// SPDX-License-Identifier: MIT
#include "morl/check/internal/scope.h"

#include <cstring>

namespace ns_ruke {

// Eight bytes at a time, the last ones again if the name is no multiple of eight.
std::int32_t& Scope::BucketOf(std::string_view name)
{
    constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15U;
    std::uint64_t hash = name.size();
    std::uint64_t part = 0;
    if (name.size() < sizeof part) {
        for (const char c : name) {
            hash = hash * 31 + static_cast<unsigned char>(c);
        }
    } else {
        for (std::size_t i = 0; i + sizeof part < name.size(); i += sizeof part) {
            std::memcpy(&part, name.data() + i, sizeof part);
            hash = (hash ^ part) * kFactor;
            hash ^= hash >> 29U;
        }
        std::memcpy(&part, name.data() + name.size() - sizeof part, sizeof part);
        hash ^= part;
    }
    hash *= kFactor;
    return buckets[(hash >> 32U) & (buckets.size() - 1)];
}

void Scope::Grow()
{
    buckets.assign(buckets.size() * 4, -1);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        std::int32_t& bucket = BucketOf(entries[i].name);
        entries[i].next = bucket;
        bucket = static_cast<std::int32_t>(i);
    }
}

const ScopeEntry* Scope::Declare(const ScopeEntry& entry)
{
    if (entries.size() > buckets.size()) {
        Grow();
    }
    std::int32_t& bucket = BucketOf(entry.name);
    const std::int32_t next = bucket;
    bucket = static_cast<std::int32_t>(entries.size());
    entries.push_back(entry);
    entries.back().depth = depth;
    entries.back().next = next;
    for (std::int32_t i = next; i >= 0; i = entries[static_cast<std::size_t>(i)].next) {
        const ScopeEntry& other = entries[static_cast<std::size_t>(i)];
        if (other.name == entry.name) {
            return &other;
        }
    }
    return nullptr;
}

ScopeEntry* Scope::Find(std::string_view name)
{
    for (std::int32_t i = BucketOf(name); i >= 0; i = entries[static_cast<std::size_t>(i)].next) {
        ScopeEntry& entry = entries[static_cast<std::size_t>(i)];
        if (entry.name == name) {
            return &entry;
        }
    }
    return nullptr;
}

void Scope::EndBlock()
{
    while (!entries.empty() && entries.back().depth == depth) {
        BucketOf(entries.back().name) = entries.back().next;
        entries.pop_back();
    }
    --depth;
}

}  // namespace ns_ruke
