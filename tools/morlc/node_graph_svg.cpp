// SPDX-License-Identifier: MIT
#include "node_graph.h"
#include "text.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <map>

namespace morlc {
namespace {

// All lengths are in units of the canvas, one pixel each.
constexpr double kBoxHeight = 36;
constexpr double kCharacter = 8;    ///< width of a character of the font, about
constexpr double kBoxPadding = 16;  ///< beside the text
constexpr double kMargin = 40;
constexpr double kTitle = 44;         ///< height of a panel's head
constexpr double kGap = 14;           ///< between boxes that would cover each other
constexpr std::size_t kMaxName = 60;  ///< how much of a name is shown, in characters

constexpr const char* kStyle =
    "  <style>\n"
    "    text { font: 13px 'DejaVu Sans', sans-serif; fill: #1f2933; }\n"
    "    .title { font-size: 15px; font-weight: bold; fill: #52606d; }\n"
    "    .panel { fill: #f5f7fa; stroke: #cbd2d9; }\n"
    "    .box { fill: #ffffff; stroke: #486581; stroke-width: 1.5; }\n"
    "    .cycle { fill: #ffe3e3; stroke: #d64545; stroke-width: 3; }\n"
    "    .missing { fill: #fff5f5; stroke: #d64545; stroke-width: 1.5; stroke-dasharray: 5 4; }\n"
    "    .missingText { fill: #ba2525; font-style: italic; }\n"
    "    .arrow { fill: none; stroke: #829ab1; stroke-width: 1.5; marker-end: url(#head); }\n"
    "    .other { stroke: #b44d12; stroke-opacity: 0.55; stroke-dasharray: 2 3; }\n"
    "    .cycleArrow { stroke: #d64545; stroke-width: 3; marker-end: url(#redHead); }\n"
    "    .brokenArrow { stroke: #d64545; stroke-dasharray: 5 4; marker-end: url(#redHead); }\n"
    "  </style>\n";

std::string Marker(const char* id, const char* colour)
{
    return std::string("    <marker id=\"") + id +
           "\" viewBox=\"0 0 10 10\" refX=\"9\" refY=\"5\" markerWidth=\"9\" markerHeight=\"9\" "
           "markerUnits=\"userSpaceOnUse\" orient=\"auto\"><path d=\"M0 0 L10 5 L0 10 z\" fill=\"" +
           colour + "\"/></marker>\n";
}

std::string Escaped(const std::string& text)
{
    std::string escaped;
    for (const char c : Printable(ValidUtf8(text))) {
        switch (c) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        default:
            escaped += c;
        }
    }
    return escaped;
}

/// A name as it is shown in its box.
std::string Shown(const std::string& name)
{
    std::size_t end = 0;
    for (std::size_t characters = 0; end < name.size(); ++end) {
        characters += IsContinuation(name[end]) ? 0 : 1;
        if (characters > kMaxName) {
            return name.substr(0, end) + "...";
        }
    }
    return name;
}

std::string Number(double value)
{
    std::string text(32, '\0');
    text.resize(static_cast<std::size_t>(std::snprintf(text.data(), text.size(), "%.1f", value)));
    return text;
}

struct Box {
    double x = 0;
    double y = 0;
    double width = 0;

    bool Covers(const Box& other) const
    {
        return x < other.x + other.width && other.x < x + width &&
               std::abs(y - other.y) < kBoxHeight + kGap;
    }
};

/// The boxes of one panel by the cells of a grid, so that a box is compared with its neighbours
/// only.
class Neighbours {
public:
    void Add(const Box& box)
    {
        ForCells(box, 0, [&](Cell cell) { cells[cell].push_back(box); });
    }

    /// A box that this one covers, or null.
    const Box* Covered(const Box& box) const
    {
        const Box* covered = nullptr;
        ForCells(box, 1, [&](Cell cell) {
            const auto found = cells.find(cell);
            if (found == cells.end() || covered != nullptr) {
                return;
            }
            for (const Box& other : found->second) {
                if (box.Covers(other)) {
                    covered = &other;
                }
            }
        });
        return covered;
    }

private:
    using Cell = std::pair<long, long>;

    /// Calls `use` with the cells that a box touches, and with as many rows above and below.
    template <class Use>
    static void ForCells(const Box& box, long rows, const Use& use)
    {
        constexpr double kCellWidth = 200;
        const auto row = static_cast<long>(std::floor(box.y / (kBoxHeight + kGap)));
        const auto last = static_cast<long>(std::floor((box.x + box.width) / kCellWidth));
        for (auto column = static_cast<long>(std::floor(box.x / kCellWidth)); column <= last;
             ++column) {
            for (long near = row - rows; near <= row + rows; ++near) {
                use(Cell(column, near));
            }
        }
    }

    std::map<Cell, std::vector<Box>> cells;
};

struct Panel {
    double top = 0;
    double width = 0;
    double height = 0;
};

/// Where everything stands: the panels below each other, each with the nodes of one file at their
/// own positions. Boxes that would cover each other make way downwards.
class Layout {
public:
    explicit Layout(const NodeGraph& newGraph) : graph(newGraph), boxes(newGraph.nodes.size())
    {
        for (const std::string& file : graph.Files()) {
            PlacePanel(file);
        }
    }

    double Width() const { return width + 2 * kMargin; }
    double Height() const { return bottom + kMargin; }
    const Box& Of(std::size_t node) const { return boxes[node]; }
    const std::map<std::string, Panel>& Panels() const { return panels; }

private:
    void PlacePanel(const std::string& file)
    {
        std::vector<std::size_t> members;
        double left = std::numeric_limits<double>::max();
        double top = std::numeric_limits<double>::max();
        for (std::size_t i = 0; i < graph.nodes.size(); ++i) {
            if (graph.nodes[i].file == file) {
                members.push_back(i);
                left = std::min(left, graph.nodes[i].x);
                top = std::min(top, graph.nodes[i].y);
            }
        }
        Panel panel;
        panel.top = bottom + kMargin;
        Neighbours placed;
        for (const std::size_t member : members) {
            const GraphNode& node = graph.nodes[member];
            Box box;
            box.x = 2 * kMargin + node.x - left;
            box.y = panel.top + kTitle + node.y - top;
            box.width = 2 * kBoxPadding + kCharacter * static_cast<double>(Shown(node.name).size());
            if (MakeWay(box, placed)) {
                placed.Add(box);
            }
            boxes[member] = box;
            panel.width = std::max(panel.width, box.x + box.width);
            panel.height = std::max(panel.height, box.y + kBoxHeight + kMargin - panel.top);
        }
        width = std::max(width, panel.width);
        bottom = panel.top + panel.height;
        panels[file] = panel;
    }

    /// Moves the box down until it covers no other one. Gives up, with false, after some tries: a
    /// canvas that is full of boxes at one place is no use anyway.
    static bool MakeWay(Box& box, const Neighbours& placed)
    {
        constexpr int kTries = 100;
        for (int i = 0; i < kTries; ++i) {
            const Box* const covered = placed.Covered(box);
            if (covered == nullptr) {
                return true;
            }
            box.y = covered->y + kBoxHeight + kGap;
        }
        return false;
    }

    const NodeGraph& graph;
    std::vector<Box> boxes;
    std::map<std::string, Panel> panels;
    double width = 0;
    double bottom = 0;
};

/// An arrow that leaves and arrives level: between facing sides, or, where one box stands above the
/// other, along their right sides downwards and along their left sides upwards.
std::string ArrowPath(const Box& from, const Box& to)
{
    const bool leftward = to.x + to.width <= from.x;
    const bool rightward = from.x + from.width <= to.x;
    const bool downward = to.y > from.y;
    const bool leavesLeft = leftward || (!rightward && !downward);
    const bool arrivesLeft = rightward || (!leftward && !downward);
    const double startX = leavesLeft ? from.x : from.x + from.width;
    const double endX = arrivesLeft ? to.x : to.x + to.width;
    const double startY = from.y + kBoxHeight / 2;
    const double endY = to.y + kBoxHeight / 2;
    const double bend = std::max(40.0, std::abs(endX - startX) / 2);
    return "M" + Number(startX) + " " + Number(startY) + " C" +
           Number(startX + (leavesLeft ? -bend : bend)) + " " + Number(startY) + " " +
           Number(endX + (arrivesLeft ? -bend : bend)) + " " + Number(endY) + " " + Number(endX) +
           " " + Number(endY);
}

std::string Arrow(const NodeGraph& graph, const Layout& layout, const GraphEdge& edge)
{
    const GraphNode& from = graph.nodes[edge.from];
    const GraphNode& to = graph.nodes[edge.to];
    std::string kind = "arrow";
    kind += edge.isBroken ? " brokenArrow" : edge.isInCycle ? " cycleArrow" : "";
    kind += from.file != to.file && !edge.isInCycle ? " other" : "";
    return "  <path class=\"" + kind + "\" d=\"" +
           ArrowPath(layout.Of(edge.from), layout.Of(edge.to)) + "\"><title>" +
           Escaped(from.name + " refers to " + to.name) + "</title></path>\n";
}

std::string Rectangle(const char* kind, double x, double y, double width, double height,
                      double radius)
{
    return std::string("  <rect class=\"") + kind + "\" x=\"" + Number(x) + "\" y=\"" + Number(y) +
           "\" width=\"" + Number(width) + "\" height=\"" + Number(height) + "\" rx=\"" +
           Number(radius) + "\"/>\n";
}

std::string Text(const char* kind, double x, double y, const std::string& text)
{
    return std::string("  <text class=\"") + kind + "\" x=\"" + Number(x) + "\" y=\"" + Number(y) +
           "\">" + Escaped(text) + "</text>\n";
}

std::string DrawBox(const GraphNode& node, const Box& box)
{
    const char* const kind = node.isMissing ? "missing" : node.isInCycle ? "cycle" : "box";
    return Rectangle(kind, box.x, box.y, box.width, kBoxHeight, 6) +
           Text(node.isMissing ? "missingText" : "name", box.x + kBoxPadding,
                box.y + kBoxHeight / 2 + 5, Shown(node.name));
}

}  // namespace

std::string NodeGraph::FormatSvg() const
{
    const Layout layout(*this);
    const std::string width = Number(layout.Width());
    const std::string height = Number(layout.Height());
    std::string text = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + width +
                       "\" height=\"" + height + "\" viewBox=\"0 0 " + width + " " + height +
                       "\">\n" + kStyle + "  <defs>\n" + Marker("head", "#829ab1") +
                       Marker("redHead", "#d64545") + "  </defs>\n" +
                       "  <rect width=\"100%\" height=\"100%\" fill=\"#ffffff\"/>\n";
    for (const auto& [file, panel] : layout.Panels()) {
        text +=
            Rectangle("panel", kMargin, panel.top, layout.Width() - 2 * kMargin, panel.height, 8) +
            Text("title", kMargin + 16, panel.top + 26, file);
    }
    // The boxes cover the arrows, and arrows that matter the others.
    for (const bool matters : {false, true}) {
        for (const GraphEdge& edge : edges) {
            if ((edge.isBroken || edge.isInCycle) == matters) {
                text += Arrow(*this, layout, edge);
            }
        }
    }
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        text += DrawBox(nodes[i], layout.Of(i));
    }
    return text + "</svg>\n";
}

}  // namespace morlc
