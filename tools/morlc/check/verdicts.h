// SPDX-License-Identifier: MIT
#pragma once

#include "check/checked_units.h"
#include "check/units.h"
#include "check/verdict.h"

#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace morlc {

/// The verdicts on the texts of some units. Texts that several units have are judged once.
class Verdicts {
public:
    /// @param units, checked must outlive this object
    /// @param jobs the threads to use; 0: one per processor
    /// @param isQuiet no progress is shown
    Verdicts(const std::vector<Unit>& units, const CheckedUnits& checked, std::size_t jobs,
             bool isQuiet);

    /// What a compiler says about the texts of a unit; nothing about one that is not sound.
    const std::vector<VerdictMessage>& operator[](std::size_t unit) const
    {
        return verdicts[byUnit[unit]];
    }

private:
    using TextPair = std::pair<const CheckedText*, const CheckedText*>;

    void Plan(const std::vector<Unit>& units, const CheckedUnits& checked);
    void JudgePairs(std::size_t jobs, bool isQuiet);

    std::vector<std::pair<std::string, TextPair>> pairs;  ///< with their targets
    std::vector<std::size_t> byUnit;                      ///< the pair of each unit
    std::vector<std::vector<VerdictMessage>> verdicts;    ///< by pair
};

}  // namespace morlc
