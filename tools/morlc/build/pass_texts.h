// SPDX-License-Identifier: MIT
#pragma once

#include "build/manifest.h"

#include <morl/morl.h>
#include <cstddef>
#include <deque>
#include <mutex>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace morlc {

/// One of the distinct texts of a pass.
struct PassText {
    std::size_t first = 0;         ///< the first variant that has it
    ns_ruke::ShaderOutput output;  ///< with the code
    ns_ruke::PassReport report;    ///< of the request with the lowest key that gave this text
    std::string reportKey;
    std::set<std::string> macros;  ///< those that any of these requests asked for
    std::string semantics;         ///< those of the output, as one text
};

/// The distinct texts of one pass among the variants of a shader in one target. They may be added
/// and looked up by several threads.
class PassTexts {
public:
    /// Takes the text that a variant already has because it equals another one, or null if none
    /// with this key is known.
    /// @param key whatever the text depends on: see KeyOf.
    const PassText* Reuse(std::size_t variant, const std::string& key);

    /// Keeps the text of a variant, and what was reported about it.
    /// @param mayReuse whether other variants with this key may take it
    const PassText* Add(std::size_t variant, const std::string& key, bool mayReuse,
                        ns_ruke::ShaderOutput output, ns_ruke::PassReport report);

    /// The texts in the order in which they were first added, and each variant with its text. Use
    /// these only after all threads have added theirs.
    std::deque<PassText> texts;
    std::vector<std::pair<std::size_t, const PassText*>> byVariant;

private:
    const PassText* Take(std::size_t variant, PassText& text);

    std::mutex mutex;
    std::unordered_map<std::string_view, PassText*> byCode;
    std::unordered_map<std::string, PassText*> byKey;
};

/// Whether a source has a name as a whole word.
bool Mentions(const std::string& source, const std::string& name);

/// The macros that the sources of these nodes mention, in ascending order; no others can change
/// what is made from them.
std::vector<std::string> MentionedMacros(const ns_ruke::MorlCompiler& compiler,
                                         const std::vector<std::string>& nodes,
                                         const std::vector<MacroRange>& macros);

/// What the text of a pass depends on, among the variants of one shader in one target.
/// @param mentioned the macros that its nodes mention
/// @param semantics those that the vertex pass has assigned, as one text
std::string KeyOf(const std::vector<std::string>& mentioned, const MacroValues& values,
                  const std::string& semantics);

}  // namespace morlc
