// SPDX-License-Identifier: MIT
#include "check/verdicts.h"

#include "parallel.h"
#include "progress.h"

namespace morlc {

Verdicts::Verdicts(const std::vector<Unit>& units, const CheckedUnits& checked, std::size_t jobs,
                   bool isQuiet)
{
    Plan(units, checked);
    JudgePairs(jobs, isQuiet);
}

void Verdicts::Plan(const std::vector<Unit>& units, const CheckedUnits& checked)
{
    // The first pair stands for the units that are not sound: without a text.
    std::map<TextPair, std::size_t> numbers = {{TextPair(), 0}};
    pairs.emplace_back();
    for (std::size_t i = 0; i < units.size(); ++i) {
        const TextPair pair = {checked[i].vertex, checked[i].fragment};
        const auto [known, isNew] = numbers.try_emplace(pair, pairs.size());
        if (isNew) {
            pairs.emplace_back(units[i].context.target, pair);
        }
        byUnit.push_back(known->second);
    }
}

void Verdicts::JudgePairs(std::size_t jobs, bool isQuiet)
{
    const auto codeOf = [](const CheckedText* text) {
        return text != nullptr ? text->code : std::string();
    };
    verdicts.resize(pairs.size());
    const std::size_t count = pairs.size() - 1;
    Progress progress(count, "texts", isQuiet);
    RunParallel(ThreadCount(jobs, count), count, [&](std::size_t /*thread*/, std::size_t i) {
        const auto& [target, pair] = pairs[i + 1];
        verdicts[i + 1] = Judge(target, codeOf(pair.first), codeOf(pair.second));
        progress.Advance(1);
    });
}

}  // namespace morlc
