// SPDX-License-Identifier: MIT
#include "morl/check/internal/flow_checker.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace ns_ruke {
namespace {

constexpr std::string_view kComponentNames = "xyzw";

/// All components of a value; 0 for matrices and what is no number.
FlowChecker::Components AllComponents(ValueType type)
{
    const bool isFollowed = type.IsNumeric() && !type.IsMatrix();
    return isFollowed ? static_cast<FlowChecker::Components>((1U << type.rows) - 1) : 0;
}

/// Such as "'z'" or "'y', 'z'"; empty if it is all of them.
std::string NamesOf(FlowChecker::Components missing, FlowChecker::Components all)
{
    std::string names;
    for (std::size_t i = 0; i < kComponentNames.size() && missing != all; ++i) {
        if ((missing & (1U << i)) != 0) {
            names.append(names.empty() ? "'" : ", '").append(1, kComponentNames[i]).append("'");
        }
    }
    return names;
}

}  // namespace

FlowChecker::FlowChecker(WarningList& newWarnings, BuildsOn newBuildsOn)
    : warnings(newWarnings), buildsOn(std::move(newBuildsOn))
{
    blocks.push_back({0, BlockKind::Main, 0});
}

FlowChecker::Components FlowChecker::ComponentsOf(std::string_view member)
{
    constexpr std::string_view kColorNames = "rgba";
    unsigned components = 0;
    for (const char c : member) {
        const std::size_t index = std::min(kComponentNames.find(c), kColorNames.find(c));
        if (index == std::string_view::npos) {
            return kAll;
        }
        components |= 1U << index;
    }
    return static_cast<Components>(components);
}

int FlowChecker::Declare(const ScopeEntry& entry, bool isAssigned)
{
    const Components all = entry.isArray ? 0 : AllComponents(entry.type);
    const bool isOutput = entry.kind == ScopeEntry::Kind::Output;
    variables.push_back({entry.name,
                         {entry.node, entry.offset},
                         position,
                         all,
                         isAssigned ? all : Components{0},
                         isOutput});
    return static_cast<int>(variables.size()) - 1;
}

void FlowChecker::Read(int variable, Components components, Place place)
{
    if (variable == kNotFollowed) {
        return;
    }
    Variable& read = variables[static_cast<std::size_t>(variable)];
    read.unreadSince = -1;
    const auto missing = static_cast<Components>(read.components & components & ~read.known);
    if (missing != 0 && !hasEnded && !read.isTold) {
        read.isTold = true;
        const std::string names = NamesOf(missing, read.components);
        warnings.Add(CheckKind::UnassignedRead, place.node, place.offset, read.name,
                     names.empty() ? "" : "; " + names + " may be missing");
    }
    if (variable != assigned) {
        reads.push_back({variable, position, place.node});
    }
}

void FlowChecker::EndAssignment(int variable, Components components, bool isCombined, Place place)
{
    if (variable == kNotFollowed) {
        return;
    }
    if (isCombined) {
        Read(variable, components, place);
    }
    assigned = kNotFollowed;
    Variable& changed = variables[static_cast<std::size_t>(variable)];
    const bool isWhole = (changed.components & ~components) == 0;
    changed.isWritten = true;
    CheckOverwriting(changed, isWhole && !isCombined, place);
    SetKnown(variable, static_cast<Components>(changed.known | components));
    if (!changed.isOutput) {
        changes.push_back({{variable, position, place.node}, place.offset, block});
    }
}

/// Two nodes that do not know of each other, and both give an output its value.
void FlowChecker::CheckOverwriting(Variable& variable, bool isWhole, Place place)
{
    const int before = std::exchange(variable.unreadSince, -1);
    if (!variable.isOutput || !isWhole || block != 0) {
        return;
    }
    if (before >= 0 && before != place.node && !buildsOn(place.node, before)) {
        warnings.Add(CheckKind::OverwrittenOutput, place.node, place.offset, variable.name,
                     ", which '" + warnings.NodeName(before) + "' has assigned");
    }
    variable.unreadSince = place.node;
}

void FlowChecker::SetKnown(int variable, Components components)
{
    Components& known = variables[static_cast<std::size_t>(variable)].known;
    if (known != components) {
        log.emplace_back(variable, known);
        known = components;
    }
}

int FlowChecker::BeginBlock(BlockKind kind)
{
    blocks.push_back({block, kind, position + 1});
    block = static_cast<int>(blocks.size()) - 1;
    return block;
}

void FlowChecker::EndBlock()
{
    Block& ended = blocks[static_cast<std::size_t>(block)];
    ended.end = position + 1;
    block = ended.parent;
}

FlowChecker::If FlowChecker::BeginIf()
{
    If branch;
    branch.changes = log.size();
    branch.hadEnded = hasEnded;
    branch.firstBlock = BeginBlock(BlockKind::First);
    return branch;
}

void FlowChecker::BeginElse(If& branch)
{
    EndBlock();
    branch.first = TakeBack(branch.changes);
    branch.firstHasEnded = std::exchange(hasEnded, branch.hadEnded);
    const int other = BeginBlock(BlockKind::Else);
    blocks[static_cast<std::size_t>(branch.firstBlock)].other = other;
}

void FlowChecker::EndIf(If& branch)
{
    EndBlock();
    if (branch.firstHasEnded) {
        return;
    }
    const bool isFirstOnly = hasEnded;
    hasEnded = branch.hadEnded;
    const std::vector<std::pair<int, Components>> second = TakeBack(branch.changes);
    if (isFirstOnly) {
        for (const auto& [variable, components] : branch.first) {
            SetKnown(variable, components);
        }
        return;
    }
    // Both are in the order of their variables.
    auto other = second.begin();
    for (const auto& [variable, components] : branch.first) {
        while (other != second.end() && other->first < variable) {
            ++other;
        }
        if (other != second.end() && other->first == variable) {
            SetKnown(variable, static_cast<Components>(components & other->second));
        }
    }
}

/// Undoes the changes from a place of the log on.
/// @return what they had led to, in the order of the variables
std::vector<std::pair<int, FlowChecker::Components>> FlowChecker::TakeBack(std::size_t count)
{
    std::vector<std::pair<int, Components>> taken;
    for (std::size_t i = count; i < log.size(); ++i) {
        const int variable = log[i].first;
        taken.emplace_back(variable, variables[static_cast<std::size_t>(variable)].known);
    }
    std::sort(taken.begin(), taken.end());
    taken.erase(std::unique(taken.begin(), taken.end()), taken.end());
    for (; log.size() > count; log.pop_back()) {
        variables[static_cast<std::size_t>(log.back().first)].known = log.back().second;
    }
    return taken;
}

void FlowChecker::Finish()
{
    SortReads();
    CheckChanges();
    if (!hasEnded) {
        CheckOutputs();
    }
}

/// By variable, and of each in the order of the statements, in which they come.
void FlowChecker::SortReads()
{
    firstReads.assign(variables.size() + 1, 0);
    for (const Use& read : reads) {
        ++firstReads[static_cast<std::size_t>(read.variable) + 1];
    }
    for (std::size_t i = 1; i < firstReads.size(); ++i) {
        firstReads[i] += firstReads[i - 1];
    }
    std::vector<std::size_t> next = firstReads;
    std::vector<Use> sorted(reads.size());
    for (const Use& read : reads) {
        sorted[next[static_cast<std::size_t>(read.variable)]++] = read;
    }
    reads = std::move(sorted);
}

/// Whether a statement that may run after a change reads the variable.
bool FlowChecker::IsReadAfter(const Change& change) const
{
    const auto variable = static_cast<std::size_t>(change.use.variable);
    auto read = reads.begin() + static_cast<std::ptrdiff_t>(firstReads[variable]);
    const auto last = reads.begin() + static_cast<std::ptrdiff_t>(firstReads[variable + 1]);
    const auto isBefore = [](const Use& use, std::int32_t at) { return use.position < at; };
    // From the outermost loop that runs again with the same variable; from the change without one.
    std::int32_t from = change.use.position + 1;
    std::vector<const Block*> skipped;
    for (int i = change.block; i != 0; i = blocks[static_cast<std::size_t>(i)].parent) {
        const Block& around = blocks[static_cast<std::size_t>(i)];
        if (around.kind == BlockKind::Loop && variables[variable].begin < around.begin) {
            from = around.begin;
            skipped.clear();
        } else if (around.kind == BlockKind::First) {
            skipped.push_back(&blocks[static_cast<std::size_t>(around.other)]);
        }
    }
    read = std::lower_bound(read, last, from, isBefore);
    for (const Block* other : skipped) {
        if (read == last || read->position < other->begin) {
            break;
        }
        read = std::lower_bound(read, last, other->end, isBefore);
    }
    return read != last;
}

/// A node that changes what only earlier ones have read: the picture stays as it is.
void FlowChecker::CheckChanges()
{
    const Change* told = nullptr;
    for (const Change& change : changes) {
        const auto variable = static_cast<std::size_t>(change.use.variable);
        const std::size_t first = firstReads[variable];
        const bool wasRead =
            first < firstReads[variable + 1] && reads[first].node < change.use.node;
        const bool isKnown = told != nullptr && told->use.variable == change.use.variable &&
                             told->use.node == change.use.node;
        if (!wasRead || isKnown || IsReadAfter(change) ||
            !warnings.IsNew(CheckKind::UnreadChange, change.use.node, change.offset)) {
            continue;
        }
        told = &change;
        warnings.Add(CheckKind::UnreadChange, change.use.node, change.offset,
                     variables[variable].name, HintOfReader(change));
    }
}

/// The last node that has read the variable before another one changes it.
std::string FlowChecker::HintOfReader(const Change& change) const
{
    const auto variable = static_cast<std::size_t>(change.use.variable);
    int reader = -1;
    for (std::size_t i = firstReads[variable]; i < firstReads[variable + 1]; ++i) {
        reader = reads[i].node < change.use.node ? std::max(reader, reads[i].node) : reader;
    }
    return ": '" + warnings.NodeName(reader) + "', which reads it, comes before" +
           (buildsOn(change.use.node, reader) ? ", because this node builds on it"
                                              : "; let it build on this node");
}

void FlowChecker::CheckOutputs()
{
    for (const Variable& output : variables) {
        const auto missing = static_cast<Components>(output.components & ~output.known);
        if (output.isOutput && output.isWritten && missing != 0) {
            const std::string names = NamesOf(missing, output.components);
            warnings.Add(CheckKind::PartialOutput, output.declaration.node,
                         output.declaration.offset, output.name,
                         names.empty() ? "" : "; " + names + " may be missing");
        }
    }
}

}  // namespace ns_ruke
