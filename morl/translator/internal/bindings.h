// SPDX-License-Identifier: MIT
#pragma once

#include "morl/ast/declarations.h"
#include "morl/compiler/pass_property.h"
#include "morl/core/string_helper.h"
#include "morl/translator/internal/text.h"

#include <string>
#include <string_view>
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

/// The register of a sampler that is bound to SAUTO: 0, unless the request gives one.
inline int SamplerRegister(const PassProperty& pass, const std::string& name)
{
    const auto found = pass.samplerRegisters.find(name);
    return found != pass.samplerRegisters.end() ? found->second : 0;
}

/// A sampler or texture register, such as "register(s2)".
inline void AppendRegister(Text& text, char kind, int number)
{
    text.Append("register(", kind, StringHelper::ConvertToString(number, 10), ')');
}

/// What the names of the local copies of inputs begin with, and in GLSL those of outputs.
constexpr std::string_view kInputLocal = "i";
constexpr std::string_view kOutputLocal = "ret";

/// What precedes the number of a texture coordinate.
constexpr std::string_view kTexcoord = "TEXCOORD";

/// Whether a texture is a shadow map, judging by its name. Shadow maps are sampled by comparison.
inline bool IsShadowMap(std::string_view texture)
{
    constexpr std::string_view kShadowMap = "shadowMap";
    return texture.substr(0, kShadowMap.size()) == kShadowMap;
}

}  // namespace ns_ruke
