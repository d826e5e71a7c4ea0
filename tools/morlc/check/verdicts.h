// SPDX-License-Identifier: MIT
#pragma once

#include "check/checked_units.h"
#include "check/judge.h"
#include "check/units.h"

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace morlc {

/// The compilers that this tool can ask.
class Judges {
public:
    /// @param direct3dCompiler the file of Microsoft's compiler; empty: the system's
    /// @throws std::runtime_error if that file cannot be loaded
    explicit Judges(const std::string& direct3dCompiler);

    /// Who judges a target; null: nobody.
    const Judge* For(const ns_ruke::TargetInfo& target) const;

    /// Which of some targets nobody judges, and why, a sentence each.
    std::vector<std::string> DescribeMissing(const std::vector<std::string>& targets) const;

private:
    std::vector<std::unique_ptr<Judge>> judges;  ///< the first one that takes a target judges it
    std::string direct3dReason;                  ///< why Microsoft's compiler is missing
};

/// The verdicts on the texts of some units. Each distinct text is judged once, and each pair whose
/// declarations are a new combination, since nothing else decides whether stages fit.
class Verdicts {
public:
    /// @param judges, units, checked must outlive this object
    /// @param jobs the threads to use; 0: one per processor
    /// @param isQuiet no progress is shown
    Verdicts(const Judges& judges, const std::vector<Unit>& units, const CheckedUnits& checked,
             std::size_t jobs, bool isQuiet);

    /// What compilers say about the texts of a unit; nothing about one that is not sound.
    Verdict Of(std::size_t unit) const;

private:
    /// What one request to a judge is about.
    struct Question {
        const Judge* judge;
        const ns_ruke::TargetInfo* target;
        const CheckedText* vertex;    ///< null: the question is about the other text alone
        const CheckedText* fragment;  ///< likewise
        Verdict answer;
    };
    using PairKey = std::tuple<std::string, std::string, std::string>;

    void AskAboutTexts(const Judges& judges);
    void AskAboutPairs();
    void AddText(const Judges& judges, const std::string& target, const CheckedText* vertex,
                 const CheckedText* fragment);
    void AskAll(std::vector<Question>& questions) const;
    static Verdict Ask(const Question& question);
    static PairKey KeyOf(const std::string& target, const CheckedUnit& unit);

    const std::vector<Unit>& units;
    const CheckedUnits& checked;
    std::size_t jobs;
    bool isQuiet;
    std::vector<Question> texts;
    std::map<const CheckedText*, std::size_t> textNumbers;
    std::vector<Question> pairs;
    std::map<PairKey, std::size_t> pairNumbers;
};

}  // namespace morlc
