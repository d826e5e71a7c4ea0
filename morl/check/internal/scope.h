// SPDX-License-Identifier: MIT
#pragma once

#include "morl/parser/keyword_map.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace ns_ruke {

/// A name that statements can use.
struct ScopeEntry {
    enum class Kind : std::uint8_t { Uniform, Input, Output, Local, LoopVariable };

    std::string_view name;
    Kind kind;
    ValueType type;  ///< of an element, for arrays
    bool isArray;
    bool isWritten;
    int node;                 ///< that declares it
    std::uint32_t offset;     ///< of the declaration
    std::uint32_t depth = 0;  ///< of the block; 0: outside of `main`
    std::int32_t next = -1;   ///< the index of the entry before it in its bucket
};

/// The names that can be used at a place of a shader.
class Scope {
public:
    Scope() : buckets(kFirstBuckets, -1) { entries.reserve(kUsualEntries); }

    /// Adds a name to the innermost block. Returns the entry of the same name that was visible,
    /// until the next call, or null.
    const ScopeEntry* Declare(const ScopeEntry& entry);

    /// The innermost entry with this name, or null.
    ScopeEntry* Find(std::string_view name);

    void BeginBlock() { ++depth; }
    /// Forgets the names of the innermost block.
    void EndBlock();
    std::uint32_t Depth() const { return depth; }

    const std::vector<ScopeEntry>& Entries() const { return entries; }

private:
    static constexpr std::size_t kUsualEntries = 25;
    /// A power of 2, as is every later number of buckets.
    static constexpr std::size_t kFirstBuckets = 64;

    std::int32_t& BucketOf(std::string_view name);
    void Grow();

    std::vector<ScopeEntry> entries;
    std::uint32_t depth = 0;            ///< how many blocks the innermost one is in
    std::vector<std::int32_t> buckets;  ///< the last entry of each; -1: none
};

}  // namespace ns_ruke
