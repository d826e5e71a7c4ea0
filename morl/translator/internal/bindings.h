// SPDX-License-Identifier: MIT
#pragma once

#include "morl/ast/declarations.h"
#include "morl/ast/stage.h"
#include "morl/core/string_helper.h"
#include "morl/translator/internal/target_spellings.h"
#include "morl/translator/internal/text.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
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

/// The automatic texture coordinates that a stage has assigned.
struct AssignedTexcoords {
    std::unordered_map<std::string, std::string>& semantics;  ///< by declaration name
    std::uint32_t& counter;                                   ///< the number of the next one
};

/// Appends what a declaration bound to TEXAUTO gets: in the fragment stage the texture coordinate
/// that the vertex stage assigned to its name, in other stages the next one.
template <class Answers>
void AppendTexcoord(Text& text, Answers& answers, const AssignedTexcoords& texcoords,
                    const std::string& name)
{
    if (answers.Stage() == kFragmentStage) {
        text.Append(answers.InputSemantic(name));
        return;
    }
    std::string& semantic = texcoords.semantics[name];
    semantic = "TEXCOORD" + StringHelper::ConvertToString(texcoords.counter, 10);
    text.Append(semantic);
    ++texcoords.counter;
}

/// Appends a binding: " : " and the semantic, the name in parentheses, the sampler's register or,
/// where shaders contain bindings, the texture coordinate. Nothing without a binding. The stage is
/// only read for TEXAUTO.
template <class Answers>
void AppendBinding(Text& text, const TargetSpellings& spellings, Answers& answers,
                   const AssignedTexcoords& texcoords, const MorlDeclare* declare,
                   const MorlRegister* binding)
{
    if (binding == nullptr) {
        return;
    }
    const ENUM_TOKEN token = binding->registerToken;
    text.Append(" : ", token == TOKEN_IDENTIFIER ? std::string_view(binding->name)
                                                 : spellings.semantics.Text(token));
    if (token == TOKEN_SAUTO) {
        AppendRegister(text, spellings.registerKind, answers.SamplerNumber(declare->name));
    } else if (token == TOKEN_TEXAUTO && spellings.writesBindings) {
        AppendTexcoord(text, answers, texcoords, declare->name);
    }
}

}  // namespace ns_ruke
