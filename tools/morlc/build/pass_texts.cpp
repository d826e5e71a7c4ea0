// SPDX-License-Identifier: MIT
#include "build/pass_texts.h"

#include <algorithm>

namespace morlc {

void PassTexts::Add(std::size_t variant, const ns_ruke::ShaderOutput& output)
{
    const std::lock_guard<std::mutex> lock(mutex);
    const auto [entry, isNew] = texts.try_emplace(output.code);
    Text& text = entry->second;
    if (isNew) {
        // The text determines the rest: it spells every uniform and every semantic.
        text.first = variant;
        text.output = output;
        text.output.code.clear();
        text.code = &entry->first;
    }
    text.first = std::min(text.first, variant);
    byVariant.emplace_back(variant, &text);
}

}  // namespace morlc
