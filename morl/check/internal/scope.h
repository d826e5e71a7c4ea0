// SPDX-License-Identifier: MIT
#pragma once

#include "morl/check/internal/value_type.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ns_ruke {

/// A name that statements can use.
struct ScopeEntry {
    enum class Kind : std::uint8_t { Uniform, Input, Output, Local, LoopVariable };

    std::string_view name;
    Kind kind;
    ENUM_TOKEN token;  ///< the type as declared
    ValueType type;    ///< of an element, for arrays
    bool isArray;
    int node;              ///< that declares it
    std::uint32_t offset;  ///< of the declaration
    bool isWritten = false;
    std::size_t depth = 0;      ///< of the block; 0: outside of `main`
    std::ptrdiff_t hides = -1;  ///< the index of the entry of the same name outside
};

/// The names that can be used at a place of a shader.
class Scope {
public:
    /// Adds a name to the innermost block. Returns the entry of the same name that was visible.
    const ScopeEntry* Declare(ScopeEntry entry);

    /// The innermost entry with this name, or null.
    ScopeEntry* Find(std::string_view name);

    void BeginBlock() { blocks.push_back(entries.size()); }
    /// Forgets the names of the innermost block.
    void EndBlock();
    std::size_t Depth() const { return blocks.size(); }

    const std::vector<ScopeEntry>& Entries() const { return entries; }

private:
    std::vector<ScopeEntry> entries;
    std::vector<std::size_t> blocks;  ///< where each block begins in `entries`
    std::unordered_map<std::string_view, std::ptrdiff_t> byName;
};

}  // namespace ns_ruke
