// SPDX-License-Identifier: MIT
#include "morl/translator/internal/written_lines.h"

#include "morl/compiler/morl_node.h"

#include <algorithm>
#include <functional>

namespace ns_ruke {

WrittenLines::WrittenLines(const MorlProgram& program, const LinkReport& newLink) : link(newLink)
{
    listed.reserve(program.inputs.size() + program.outputs.size() + program.uniforms.size());
    List(program.inputs, &LinkOrigin::inputs);
    List(program.outputs, &LinkOrigin::outputs);
    List(program.uniforms, &LinkOrigin::uniforms);
    std::sort(listed.begin(), listed.end(), [](const ListedDeclare& a, const ListedDeclare& b) {
        return std::less<>()(a.declare, b.declare);
    });
}

void WrittenLines::List(const std::vector<MorlDeclare*>& list, std::size_t LinkOrigin::*end)
{
    std::size_t i = 0;
    for (const LinkOrigin& origin : link.origins) {
        for (; i < origin.*end; ++i) {
            listed.push_back({list[i], origin.node, false});
        }
    }
}

std::size_t WrittenLines::IndexOf(const MorlDeclare* declare) const
{
    const auto found = std::lower_bound(
        listed.begin(), listed.end(), declare,
        [](const ListedDeclare& a, const MorlDeclare* b) { return std::less<>()(a.declare, b); });
    return static_cast<std::size_t>(found - listed.begin());
}

const MorlNode* WrittenLines::NodeOf(const MorlDeclare* declare) const
{
    return listed[IndexOf(declare)].node;
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
    marks.push_back({position, link.origins[statementOrigin].node, offset});
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
            line.node = mark->node->name;
            line.line = mark->node->PlaceOf(mark->offset).line;
        }
        while (mark != marks.end() && mark->position < end) {
            ++mark;
        }
        start = end;
    }
    return lines;
}

}  // namespace ns_ruke
