// SPDX-License-Identifier: MIT
#pragma once

#include "build/unused_names.h"
#include "check/units.h"

#include <morl/morl.h>
#include <cstddef>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

namespace morlc {

/// A distinct text of one pass, with the report of the first unit that has it.
struct CheckedText {
    std::size_t unit = 0;  ///< the number of that unit
    std::string code;
    ns_ruke::PassReport report;
};

/// What is kept of a checked unit; a manifest may have a hundred thousand.
struct CheckedUnit {
    std::vector<ns_ruke::ReportFault> faults;
    std::vector<ns_ruke::ReportWarning> warnings;
    const CheckedText* vertex = nullptr;    ///< null: no such pass, or not sound
    const CheckedText* fragment = nullptr;  ///< likewise
};

struct CheckedPass;
struct CheckedPasses;

/// Runs the requests of all units, on several threads, and keeps what they gave.
class CheckedUnits {
public:
    /// @param units must outlive this object
    /// @param jobs the threads to use; 0: one per processor
    CheckedUnits(const std::vector<Unit>& units, const ns_ruke::MorlCompiler& compiler,
                 std::size_t jobs);

    const CheckedUnit& operator[](std::size_t unit) const { return checked[unit]; }

    /// What the passes of a shader have asked for.
    UsedNames& UsedBy(std::size_t shader) { return used[shader]; }

    /// Whether a shader has faults, so that it may have lost some of its uniforms.
    bool IsBroken(std::size_t shader) const { return broken.count(shader) > 0; }

private:
    void Keep(std::size_t number, CheckedPasses passes);
    const CheckedText* KeepText(std::size_t number, const std::string& kind, CheckedPass& pass);

    const std::vector<Unit>& units;
    std::vector<CheckedUnit> checked;  ///< by unit
    std::mutex mutex;                  ///< protects the next three members
    std::unordered_map<std::string, std::unique_ptr<CheckedText>> texts;  ///< by target and code
    std::set<std::size_t> broken;                                         ///< shaders with faults
    std::map<std::size_t, UsedNames> used;                                ///< by shader
};

}  // namespace morlc
