// SPDX-License-Identifier: MIT
#include "diagnostics.h"

#include <algorithm>
#include <cstdio>
#include <numeric>
#include <string_view>
#include <utility>
#include <vector>

namespace morlc {
namespace {

using ns_ruke::LogLevel;
using ns_ruke::LogLine;
using ns_ruke::TamberLogSystem;

/// How many insertions, deletions and replacements make one name of the other.
std::size_t EditDistance(std::string_view a, std::string_view b)
{
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i);
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t replaced = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
            diagonal = std::exchange(row[j], std::min({replaced, row[j] + 1, row[j - 1] + 1}));
        }
    }
    return row.back();
}

/// The name most like `wanted`; empty when none is like it.
std::string Nearest(const std::vector<std::string>& names, const std::string& wanted)
{
    std::string nearest;
    std::size_t best = wanted.size() / 3 + 2;
    for (const std::string& name : names) {
        const std::size_t distance = EditDistance(name, wanted);
        if (distance < best) {
            best = distance;
            nearest = name;
        }
    }
    return nearest;
}

/// The text on one line and without control characters, whatever the names in it hold.
std::string Printable(std::string text)
{
    for (char& c : text) {
        if (static_cast<unsigned char>(c) < ' ' || c == '\x7f') {
            c = '?';
        }
    }
    return text;
}

}  // namespace

Diagnostics::Diagnostics(bool showParseLines) : showParses(showParseLines)
{
    previous = TamberLogSystem::SetSink(
        [this](LogLevel level, const std::string& /*category*/, const std::string& message) {
            Print(LogLine(level, message));
        });
}

Diagnostics::~Diagnostics()
{
    TamberLogSystem::SetSink(std::move(previous));
}

void Diagnostics::SetCompiler(const ns_ruke::MorlCompiler* newCompiler)
{
    compiler = newCompiler;
}

void Diagnostics::Error(const std::string& text)
{
    hasErrors = true;
    const std::string line = "morlc: error: " + Printable(text) + "\n";
    std::fwrite(line.data(), 1, line.size(), stderr);
}

void Diagnostics::Print(const LogLine& log)
{
    hasErrors = hasErrors || log.IsError();
    if (log.IsParseMark() && !showParses) {
        return;
    }
    std::string line = log.node.empty() ? "morlc" : "node " + log.node;
    if (log.line > 0) {
        line += ":" + std::to_string(log.line) + ":" + std::to_string(log.column);
    }
    line += log.IsError() ? ": error: " : ": info: ";
    line += log.text + Hint(log.text);
    line = Printable(std::move(line)) + "\n";
    std::fwrite(line.data(), 1, line.size(), stderr);
}

std::string Diagnostics::Hint(const std::string& text) const
{
    constexpr std::string_view kUnknownNode = "Morl Compiler: unknown node: ";
    if (compiler == nullptr || text.compare(0, kUnknownNode.size(), kUnknownNode) != 0) {
        return {};
    }
    const std::string nearest = Nearest(compiler->GetNodeNames(), text.substr(kUnknownNode.size()));
    return nearest.empty() ? "" : " (did you mean '" + nearest + "'?)";
}

}  // namespace morlc
