// SPDX-License-Identifier: MIT
#include "morl/translator/internal/written_lines.h"

#include "morl/compiler/morl_node.h"

#include <algorithm>
#include <functional>
#include <numeric>

namespace ns_ruke {

WrittenLines::WrittenLines(const MorlProgram& program, const LinkReport& newLink) : link(newLink)
{
    listed.reserve(program.inputs.size() + program.outputs.size() + program.uniforms.size());
    // Declarations are written up to four times, most statements in one line.
    const std::size_t statements = link.origins.empty() ? 0 : link.origins.back().sentences;
    marks.reserve(4 * listed.capacity() + 2 * statements);
    declares.reserve(listed.capacity());
    starts = {0, program.inputs.size(), program.inputs.size() + program.outputs.size()};
    List(program.inputs, &LinkOrigin::inputs);
    List(program.outputs, &LinkOrigin::outputs);
    List(program.uniforms, &LinkOrigin::uniforms);
}

void WrittenLines::List(const std::vector<MorlDeclare*>& list, std::size_t LinkOrigin::*end)
{
    std::size_t i = 0;
    for (std::size_t node = 0; node < link.origins.size(); ++node) {
        for (; i < link.origins[node].*end; ++i) {
            listed.push_back({list[i], static_cast<int>(node), false});
        }
    }
}

// Most lists are written in their order, from their start.
std::size_t WrittenLines::IndexOf(const MorlDeclare* declare)
{
    const auto isAt = [&](std::size_t index) {
        return index < listed.size() && listed[index].declare == declare;
    };
    std::size_t index = next;
    if (!isAt(index)) {
        const auto* const start = std::find_if(starts.begin(), starts.end(), isAt);
        index = start != starts.end() ? *start : Search(declare);
    }
    next = index + 1;
    return index;
}

std::size_t WrittenLines::Search(const MorlDeclare* declare)
{
    const auto isBefore = [](const MorlDeclare* a, const MorlDeclare* b) {
        return std::less<>()(a, b);
    };
    if (byPointer.empty()) {
        byPointer.resize(listed.size());
        std::iota(byPointer.begin(), byPointer.end(), std::size_t{0});
        std::sort(byPointer.begin(), byPointer.end(), [&](std::size_t a, std::size_t b) {
            return isBefore(listed[a].declare, listed[b].declare);
        });
    }
    return *std::lower_bound(
        byPointer.begin(), byPointer.end(), declare,
        [&](std::size_t a, const MorlDeclare* b) { return isBefore(listed[a].declare, b); });
}

void WrittenLines::Mark(const Text& text, const MorlDeclare* declare)
{
    ListedDeclare& entry = listed[IndexOf(declare)];
    if (!entry.isMarked) {
        entry.isMarked = true;
        declares.push_back(declare);
    }
    marks.push_back({text.Size(), entry.node, declare->offset});
}

void WrittenLines::MarkAt(std::size_t position, std::uint32_t offset)
{
    marks.push_back({position, static_cast<int>(statementOrigin), offset});
}

void WrittenLines::BeginStatement(std::size_t index)
{
    while (link.origins[statementOrigin].sentences <= index) {
        ++statementOrigin;
    }
}

std::vector<ReportLine> WrittenLines::Resolve(std::string_view code) const
{
    std::vector<ReportLine> lines;
    lines.reserve(marks.size() + 16);
    auto mark = marks.begin();
    for (std::size_t start = 0; start < code.size();) {
        const std::size_t end = std::min(code.find('\n', start), code.size() - 1) + 1;
        ReportLine& line = lines.emplace_back();
        if (mark != marks.end() && mark->position < end) {
            const MorlNode* node = link.origins[static_cast<std::size_t>(mark->node)].node;
            line = {mark->node, node->PlaceOf(mark->offset).line};
        }
        while (mark != marks.end() && mark->position < end) {
            ++mark;
        }
        start = end;
    }
    return lines;
}

}  // namespace ns_ruke
