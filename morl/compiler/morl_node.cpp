// SPDX-License-Identifier: MIT
#include "morl/compiler/morl_node.h"

#include "morl/ast/program.h"
#include "morl/check/author_faults.h"
#include "morl/check/hints.h"
#include "morl/core/internal/fault_collector.h"
#include "morl/core/log_scope.h"
#include "morl/parser/morl_parser.h"

#include <algorithm>
#include <utility>

namespace ns_ruke {

MorlNode::MorlNode() = default;

MorlNode::~MorlNode()
{
    delete program;
}

void MorlNode::SetName(std::string newName)
{
    name = std::move(newName);
}

std::string MorlNode::GetName() const
{
    return name;
}

void MorlNode::SetPosition(float newX, float newY)
{
    x = newX;
    y = newY;
}

float MorlNode::GetX() const
{
    return x;
}

float MorlNode::GetY() const
{
    return y;
}

void MorlNode::SetContent(std::string newContent)
{
    content = std::move(newContent);
    lines.reset();
}

std::string MorlNode::GetContent() const
{
    return content;
}

void MorlNode::AddReference(std::string reference)
{
    references.push_back(std::move(reference));
}

std::vector<std::string> MorlNode::GetReference() const
{
    return references;
}

bool MorlNode::NeedCompile(std::string target) const
{
    return program == nullptr || compiledTarget != target;
}

void MorlNode::Compile(MorlParser* parser, std::string target)
{
    const LogScope scope(name);
    delete program;
    program = nullptr;
    program = new MorlProgram;
    compiledTarget = std::move(target);
    faults.clear();
    FaultCollector collector;
    try {
        parser->Parse(content, *program);
        faults = AuthorFaults(content, std::move(collector.faults));
        AddHints();
    } catch (...) {
        // The next request must not mistake half a program for the node's program.
        delete program;
        program = nullptr;
        throw;
    }
}

// Nobody reads thousands of hints, and finding them takes time.
void MorlNode::AddHints()
{
    constexpr std::size_t kMostHints = 100;
    if (faults.empty()) {
        return;
    }
    for (std::size_t i = 0; i < std::min(faults.size(), kMostHints); ++i) {
        ReportFault& fault = faults[i];
        fault.hint = HintFor(ExcerptAt(content, Lines(), {fault.line, fault.column}), fault.text);
    }
    const std::string whole = HintForSource(content);
    faults.front().hint = whole.empty() ? faults.front().hint : whole;
}

void MorlNode::TakeProgram(MorlNode& other) noexcept
{
    if (content == other.content) {
        std::swap(program, other.program);
        compiledTarget.swap(other.compiledTarget);
        faults.swap(other.faults);
    }
}

TextPlace MorlNode::PlaceOf(std::uint32_t offset) const
{
    return Lines().PlaceOf(offset);
}

const TextLines& MorlNode::Lines() const
{
    if (!lines) {
        lines.emplace(content);
    }
    return *lines;
}

MorlProgram* MorlNode::GetProgram()
{
    return program;
}

}  // namespace ns_ruke
