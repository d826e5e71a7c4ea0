// SPDX-License-Identifier: MIT
#pragma once

#include "morl/ast/declarations.h"
#include "morl/translator/internal/spelling_table.h"

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

namespace ns_ruke {

/// An empty text with room for the lines of these declarations.
inline std::string ListText(const std::vector<MorlDeclare*>& declares)
{
    constexpr std::size_t kUsualLine = 48;
    std::string text;
    if (!declares.empty()) {
        text.reserve(declares.size() * kUsualLine);
    }
    return text;
}

/// Room for an entry function with few statements, in bytes.
constexpr std::size_t kUsualMain = 512;

/// The semantic that a declaration is bound to. Without a binding it is TOKEN_NONE, which no table
/// lists.
ENUM_TOKEN BindingToken(const MorlDeclare* declare);

/// The part of a binding that a table can spell: " : " and the semantic's text or the name in
/// parentheses. Empty without a binding.
std::string BindingText(const SpellingTable& semantics, const MorlRegister* binding);

/// A sampler or texture register, such as "register(s2)". A name without a number gets 0, which is
/// stored in `registers`.
std::string SamplerRegister(char kind, std::unordered_map<std::string, int>& registers,
                            const std::string& name);

}  // namespace ns_ruke
