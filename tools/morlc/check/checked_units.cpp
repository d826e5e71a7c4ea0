// SPDX-License-Identifier: MIT
#include "check/checked_units.h"

#include "nodes/node_files.h"
#include "parallel.h"
#include "report/diagnostics.h"

#include <iterator>
#include <optional>
#include <utility>

namespace morlc {

using ns_ruke::MorlCompiler;
using ns_ruke::PassProperty;
using ns_ruke::PassReport;
using ns_ruke::ReportWarning;
using ns_ruke::ShaderOutput;

/// What one pass of a unit gave.
struct CheckedPass {
    bool exists = false;
    ShaderOutput output;
    PassReport report;
    std::vector<ReportWarning> warnings;

    /// Whether a compiler can say more about it than the faults do.
    bool IsSound() const { return exists && !output.code.empty() && report.faults.empty(); }
};

/// Both passes of a unit, and what does not fit between them.
struct CheckedPasses {
    CheckedPass vertex;
    CheckedPass fragment;
    std::vector<ReportWarning> stageWarnings;
};

namespace {

CheckedPass CheckOne(MorlCompiler& compiler, std::optional<PassProperty> pass)
{
    CheckedPass result;
    if (pass) {
        result.exists = true;
        compiler.CompileReported(*pass, result.output, result.report, result.warnings);
    }
    return result;
}

/// Stands in for a vertex pass that is not checked: a texture coordinate for each input that needs
/// one.
void AssignTexcoords(MorlCompiler& compiler, PassProperty& pass)
{
    const CheckedPass first = CheckOne(compiler, pass);
    for (const ns_ruke::ReportDeclare& input : first.report.inputs) {
        if (input.semantic == "TEXAUTO") {
            pass.semantics[input.name] = "TEXCOORD" + std::to_string(pass.semantics.size());
        }
    }
}

CheckedPasses CheckPasses(MorlCompiler& compiler, Unit unit)
{
    const LogCollection log(compiler, LogCollection::Mode::Keep);
    CheckedPasses result;
    result.vertex = CheckOne(compiler, unit.vertex);
    if (unit.fragment && unit.vertex) {
        unit.fragment->semantics = result.vertex.output.semantics;
    } else if (unit.fragment) {
        AssignTexcoords(compiler, *unit.fragment);
    }
    result.fragment = CheckOne(compiler, unit.fragment);
    if (result.vertex.IsSound() && result.fragment.IsSound()) {
        ns_ruke::CheckStages(result.vertex.report, result.fragment.report, unit.context.target,
                             result.stageWarnings);
    }
    return result;
}

template <class Element>
void AppendTo(std::vector<Element>& list, std::vector<Element>&& more)
{
    std::move(more.begin(), more.end(), std::back_inserter(list));
}

}  // namespace

CheckedUnits::CheckedUnits(const std::vector<Unit>& newUnits, const MorlCompiler& compiler,
                           std::size_t jobs)
    : units(newUnits), checked(newUnits.size())
{
    const std::size_t threads = ThreadCount(jobs, units.size());
    std::vector<std::unique_ptr<MorlCompiler>> copies;
    for (std::size_t i = 0; i < threads; ++i) {
        copies.push_back(CopyNodes(compiler));
    }
    RunParallel(threads, units.size(), [&](std::size_t thread, std::size_t i) {
        Keep(i, CheckPasses(*copies[thread], units[i]));
    });
}

/// Keeps what is needed of the passes of a unit.
void CheckedUnits::Keep(std::size_t number, CheckedPasses passes)
{
    const Unit& unit = units[number];
    CheckedUnit& result = checked[number];
    for (CheckedPass* pass : {&passes.vertex, &passes.fragment}) {
        AppendTo(result.faults, std::move(pass->report.faults));
        AppendTo(result.warnings, std::move(pass->warnings));
        pass->report.faults.clear();
    }
    AppendTo(result.warnings, std::move(passes.stageWarnings));
    const bool isSound = result.faults.empty();
    const std::lock_guard<std::mutex> lock(mutex);
    if (!isSound) {
        broken.insert(unit.shader);
    }
    for (CheckedPass* pass : {&passes.vertex, &passes.fragment}) {
        used[unit.shader].Add(pass->report);
        if (isSound && pass->exists) {
            const bool isVertex = pass == &passes.vertex;
            (isVertex ? result.vertex : result.fragment) =
                KeepText(number, unit.context.target + (isVertex ? "v" : "f"), *pass);
        }
    }
}

const CheckedText* CheckedUnits::KeepText(std::size_t number, const std::string& kind,
                                          CheckedPass& pass)
{
    std::unique_ptr<CheckedText>& text = texts[kind + pass.output.code];
    if (!text || number < text->unit) {
        if (!text) {
            text = std::make_unique<CheckedText>();
        }
        text->unit = number;
        text->code = std::move(pass.output.code);
        text->report = std::move(pass.report);
    }
    return text.get();
}

}  // namespace morlc
