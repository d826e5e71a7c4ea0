// SPDX-License-Identifier: MIT
#pragma once

#include "morl/check/internal/scope.h"
#include "morl/check/internal/warning_list.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ns_ruke {

/// Follows the values of local variables and outputs through the statements of a pass, in their
/// order: what is read before it is assigned, and what is assigned in vain. A loop counts as one
/// that runs; of an `if`, either part may.
class FlowChecker {
public:
    /// A bit for each component of a vector; the first one is bit 0.
    using Components = std::uint8_t;
    static constexpr Components kAll = 0xff;
    static constexpr int kNotFollowed = -1;

    /// Whether the node of the first index builds on that of the second one.
    using BuildsOn = std::function<bool(int, int)>;

    /// A place in the source of a node.
    struct Place {
        int node;
        std::uint32_t offset;
    };

    /// @param newWarnings must outlive this object
    FlowChecker(WarningList& newWarnings, BuildsOn newBuildsOn);

    /// The components that a member such as "xz" reads or assigns.
    static Components ComponentsOf(std::string_view member);

    /// Begins to follow a variable.
    /// @return its number, for the following calls; they take kNotFollowed, too, and do nothing
    int Declare(const ScopeEntry& entry, bool isAssigned);

    void NextStatement() { ++position; }

    /// Reads inside of it are for the variable's own new value, until EndAssignment.
    void BeginAssignment(int variable) { assigned = variable; }
    /// @param isCombined whether the old value counts, too, as in `+=`
    void EndAssignment(int variable, Components components, bool isCombined, Place place);
    void Read(int variable, Components components, Place place);
    void Discard() { hasEnded = true; }

    void BeginLoop() { BeginBlock(BlockKind::Loop); }
    void EndLoop() { EndBlock(); }

    /// What is known where an `if` begins, and at the end of its first part.
    struct If {
        std::size_t changes = 0;  ///< that had been made
        bool hadEnded = false;
        bool firstHasEnded = false;
        int firstBlock = 0;
        std::vector<std::pair<int, Components>> first;  ///< what was assigned
    };

    If BeginIf();
    void BeginElse(If& branch);
    void EndIf(If& branch);

    /// Looks at what only the whole pass shows, once all its statements have been followed.
    void Finish();

private:
    enum class BlockKind : std::uint8_t { Main, Loop, First, Else };

    /// A range of statements: [begin, end).
    struct Block {
        int parent = 0;
        BlockKind kind = BlockKind::Main;
        std::int32_t begin = 0;
        std::int32_t end = 0;
        int other = 0;  ///< of the first part of an `if`: the other part
    };

    struct Variable {
        std::string_view name;
        Place declaration;
        std::int32_t begin;     ///< the statement that declares it; 0: outside of `main`
        Components components;  ///< all that it has; 0: they are not followed
        Components known;       ///< those that are assigned on every path
        bool isOutput;
        bool isWritten = false;
        bool isTold = false;  ///< whether a read before has been told
        int unreadSince =
            -1;  ///< the node that has assigned all of it, if nothing has read it since
    };

    struct Use {
        int variable;
        std::int32_t position;
        int node;
    };

    /// An assignment to a variable that was declared before.
    struct Change {
        Use use;
        std::uint32_t offset;
        int block;
    };

    int BeginBlock(BlockKind kind);
    void EndBlock();
    void SetKnown(int variable, Components components);
    std::vector<std::pair<int, Components>> TakeBack(std::size_t count);
    void CheckOverwriting(Variable& variable, bool isWhole, Place place);
    void SortReads();
    bool IsReadAfter(const Change& change) const;
    void CheckChanges();
    void CheckOutputs();
    std::string HintOfReader(const Change& change) const;

    WarningList& warnings;
    BuildsOn buildsOn;
    std::vector<Variable> variables;
    std::vector<Block> blocks;
    std::vector<Use> reads;
    std::vector<std::size_t> firstReads;  ///< by variable, once the reads are sorted
    std::vector<Change> changes;
    std::vector<std::pair<int, Components>> log;  ///< what was known before it was changed
    std::int32_t position = 0;                    ///< of the statement, from 1
    int block = 0;                                ///< the innermost one
    int assigned = kNotFollowed;                  ///< what the statement gives a new value
    bool hasEnded = false;                        ///< whether a `discard` has ended this path
};

}  // namespace ns_ruke
