// SPDX-License-Identifier: MIT
#pragma once

#include "morl/core/export.h"
#include "morl/translator/glsl.h"
#include "morl/translator/glsles.h"
#include "morl/translator/hlsl.h"
#include "morl/translator/hlsl10.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace ns_ruke {

/// What a target's shaders are written in, as a set of bits. Rules that hold for some targets only,
/// such as those of the checks, ask for these instead of names.
enum TargetTraits : std::uint8_t {
    kHlsl = 1,             ///< HLSL: matches stages by semantic, and matrices are rows
    kGlsl = 2,             ///< GLSL of any kind: matches stages by name, and matrices are columns
    kDesktopGlsl = 4,      ///< GLSL that is not GLSL ES
    kGlslEs = 8,           ///< GLSL ES
    kTextureObjects = 16,  ///< textures apart from samplers; matches stages also by place
    kPlainSamplers = 32,   ///< textures and samplers are one
};

/// What is known of a target.
struct TargetInfo {
    std::string_view name;
    unsigned traits = 0;  ///< TargetTraits
    int version = 0;      ///< of the language: what "#version" says, or the shader model times 10

    constexpr bool Has(unsigned wanted) const { return (traits & wanted) != 0; }
};

/// The target languages that can be asked for, in a fixed order.
MORL_API std::vector<std::string> MorlTargets();

/// What is known of a target; null if no target has exactly this name.
MORL_API const TargetInfo* FindTargetInfo(std::string_view target);

/// A new back end for a target, or null if no target has exactly this name.
[[nodiscard]] MORL_API std::unique_ptr<MorlTranslator> MakeTranslator(const std::string& target);

}  // namespace ns_ruke
