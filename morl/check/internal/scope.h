// SPDX-License-Identifier: MIT
#pragma once

#include "morl/core/name_map.h"
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
    int node;                      ///< that declares it
    std::uint32_t offset;          ///< of the declaration
    ENUM_TOKEN word = TOKEN_NONE;  ///< the type as written, of samplers
    bool isRead = false;
    int variable = -1;        ///< its number in the FlowChecker
    std::uint32_t depth = 0;  ///< of the block; 0: outside of `main`
    std::int32_t hidden = 0;  ///< the number of the entry of the same name that this one hides
};

/// The names that can be used at a place of a shader.
class Scope {
public:
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
    ScopeEntry* EntryOf(std::int32_t number);

    std::vector<ScopeEntry> entries;
    std::uint32_t depth = 0;        ///< how many blocks the innermost one is in
    NameMap<std::int32_t> visible;  ///< the number of the innermost entry, from 1; 0: none
};

}  // namespace ns_ruke
