// SPDX-License-Identifier: MIT
#pragma once

#include "morl/ast/declarations.h"
#include "morl/core/string_helper.h"
#include "morl/translator/internal/target_spellings.h"
#include "morl/translator/internal/text.h"

#include <string>
#include <vector>

namespace ns_ruke {

using Declares = std::vector<MorlDeclare*>;

/// The semantic that a declaration is bound to. Without a binding it is TOKEN_NONE, which no table
/// lists.
inline ENUM_TOKEN BindingToken(const MorlDeclare* declare)
{
    return declare->registerBinding != nullptr ? declare->registerBinding->registerToken
                                               : TOKEN_NONE;
}

/// A sampler or texture register, such as "register(s2)".
inline void AppendRegister(Text& text, char kind, int number)
{
    text.Append("register(", kind, StringHelper::ConvertToString(number, 10), ')');
}

/// Appends the part of a binding that does not depend on the stage: " : " and the semantic, the
/// name in parentheses or the sampler's register. Nothing without a binding.
template <class Answers>
void AppendBinding(Text& text, const TargetSpellings& spellings, Answers& answers,
                   const MorlDeclare* declare, const MorlRegister* binding)
{
    if (binding == nullptr) {
        return;
    }
    const bool isNamed = binding->registerToken == TOKEN_IDENTIFIER;
    text.Append(" : ", isNamed ? std::string_view(binding->name)
                               : spellings.semantics.Text(binding->registerToken));
    if (binding->registerToken == TOKEN_SAUTO) {
        AppendRegister(text, spellings.registerKind, answers.SamplerNumber(declare->name));
    }
}

}  // namespace ns_ruke
