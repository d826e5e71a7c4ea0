// SPDX-License-Identifier: MIT
#pragma once

#include "morl/translator/morl_translator.h"
#include "morl/translator/spellings.h"

#include <string>
#include <string_view>
#include <unordered_map>

namespace ns_ruke {

// What several back ends answer alike, and what their layouts are made of.

/// The stages that change what is written; every other stage is neither.
constexpr int kVertexStage = 0;
constexpr int kFragmentStage = 1;

/// Makes room in a new text for the lines of this many declarations.
inline void ReserveLines(std::string& text, std::size_t count)
{
    constexpr std::size_t kUsualLine = 48;
    if (count > 0) {
        text.reserve(count * kUsualLine);
    }
}

/// Room for an entry function with few statements.
constexpr std::size_t kUsualMain = 512;

/// The semantic that a declaration is bound to. Without a binding it is TOKEN_NONE, which no table
/// lists.
ENUM_TOKEN BindingToken(const MorlDeclare* declare);

/// The token's text as a string.
std::string Spell(const SpellingTable& table, ENUM_TOKEN token);

/// A storage word in this stage.
std::string StageBuffer(const StageSpellings& buffers, int stage, ENUM_TOKEN token);

/// The name of a called function: the target's own, or as the source has it.
std::string FunctionName(const SpellingTable& functions, const MorlFunctionCall* call);

/// The name under which a variable is written.
std::string RenamedVariable(const std::unordered_map<std::string, std::string>& names,
                            const MorlVariable* variable);

/// The declared type, or for `auto` the type that the translator concludes from the semantic.
std::string DeclaredType(MorlTranslator& translator, const MorlDeclare* declare);

/// A binding as far as a table spells it: nothing without one, otherwise " : " and the name in
/// parentheses or the semantic's text.
std::string BindingText(const SpellingTable& semantics, const MorlRegister* binding);

/// A sampler or texture register, such as "register(s2)". A name without a number gets 0.
std::string SamplerRegister(char kind, std::unordered_map<std::string, int>& registers,
                            const std::string& name);

}  // namespace ns_ruke
