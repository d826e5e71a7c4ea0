// SPDX-License-Identifier: MIT
#include "morl/check/internal/scope.h"

#include <cstring>

namespace ns_ruke {

// Names are short, and differ at their ends: this costs less than a hash of all bytes.
std::int32_t& Scope::BucketOf(std::string_view name)
{
    std::uint64_t hash = name.size();
    if (name.size() >= sizeof hash) {
        std::uint64_t first = 0;
        std::uint64_t last = 0;
        std::memcpy(&first, name.data(), sizeof first);
        std::memcpy(&last, name.data() + name.size() - sizeof last, sizeof last);
        hash += first * 31 + last;
    } else {
        for (const char c : name) {
            hash = hash * 31 + static_cast<unsigned char>(c);
        }
    }
    hash *= 0x9E3779B97F4A7C15U;
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
    entries.back().depth = Depth();
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
    while (entries.size() > blocks.back()) {
        BucketOf(entries.back().name) = entries.back().next;
        entries.pop_back();
    }
    blocks.pop_back();
}

}  // namespace ns_ruke
