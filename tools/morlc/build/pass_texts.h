// SPDX-License-Identifier: MIT
#pragma once

#include <morl/morl.h>
#include <cstddef>
#include <mutex>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace morlc {

/// The distinct texts of one pass among the variants of a shader in one target.
class PassTexts {
public:
    /// Keeps the text of a variant. Safe to call from several threads.
    void Add(std::size_t variant, const ns_ruke::ShaderOutput& output);

    /// For each variant, calls `use` with the variant, the first variant that has the same text,
    /// the text, and the rest of the output (a ShaderOutput without its code). Call this only after
    /// all threads have added their texts.
    template <class Use>
    void ForEach(const Use& use) const
    {
        for (const auto& [variant, text] : byVariant) {
            use(variant, text->first, *text->code, text->output);
        }
    }

private:
    struct Text {
        std::size_t first = 0;              ///< the first variant that has it
        const std::string* code = nullptr;  ///< the key of its entry
        ns_ruke::ShaderOutput output;       ///< without the code
    };

    std::mutex mutex;
    std::unordered_map<std::string, Text> texts;
    std::vector<std::pair<std::size_t, const Text*>> byVariant;
};

}  // namespace morlc
