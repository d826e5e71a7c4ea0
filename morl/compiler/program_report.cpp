// SPDX-License-Identifier: MIT
#include "morl/compiler/program_report.h"

#include "morl/check/stages.h"

#include <cstddef>
#include <string_view>
#include <unordered_map>

namespace ns_ruke {
namespace {

/// Joins two lists of declarations by name.
/// @param Entry has a name, and an index into each list
/// @param isWanted whether a declaration takes part
template <class Entry, class Predicate>
std::vector<Entry> Join(const std::vector<ReportDeclare>& first, int Entry::*inFirst,
                        const std::vector<ReportDeclare>& second, int Entry::*inSecond,
                        const Predicate& isWanted)
{
    std::vector<Entry> joined;
    std::unordered_map<std::string_view, std::size_t> places;
    const auto add = [&](const std::vector<ReportDeclare>& list, int Entry::*index) {
        for (std::size_t i = 0; i < list.size(); ++i) {
            const ReportDeclare& declare = list[i];
            if (!isWanted(declare)) {
                continue;
            }
            const auto [place, isNew] = places.emplace(declare.name, joined.size());
            if (isNew) {
                joined.emplace_back().name = declare.name;
            }
            joined[place->second].*index = static_cast<int>(i);
        }
    };
    add(first, inFirst);
    add(second, inSecond);
    return joined;
}

}  // namespace

ProgramReport ReportProgram(const PassReport& vertex, const PassReport& fragment,
                            const std::string& target)
{
    ProgramReport report;
    report.uniforms = Join(vertex.uniforms, &ProgramUniform::vertex, fragment.uniforms,
                           &ProgramUniform::fragment, [](const ReportDeclare&) { return true; });
    report.varyings = Join(vertex.outputs, &ProgramVarying::output, fragment.inputs,
                           &ProgramVarying::input, IsVarying);
    CheckStages(vertex, fragment, target, report.warnings);
    return report;
}

}  // namespace ns_ruke
