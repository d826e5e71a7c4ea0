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

/// The different texts that one pass has over the variants of a shader in one target.
class PassTexts {
public:
    /// Keeps the text of a variant. Safe to be called by several threads.
    void Add(std::size_t variant, const ns_ruke::ShaderOutput& output);

    /// Calls `use` with each variant, the first variant of the same text, that text, and what
    /// belongs to it (a ShaderOutput without its code). To be called when no thread adds anything
    /// any more.
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
