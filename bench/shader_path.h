// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace morl_bench {

// What a user would otherwise run. Call glslang::InitializeProcess first.

/// Parses a shader with glslang, as the language that it is in.
/// @param target "hlsl10", "glsl" or "glsles".
/// @throws std::runtime_error if glslang refuses it.
void ParseWithGlslang(const std::string& target, const std::string& text, int stage);

/// Translates a Direct3D 10 shader with glslang to SPIR-V, and from there with SPIRV-Cross.
/// @param target the language to translate to, any of MorlTargets().
/// @return the bytes of the text.
/// @throws std::runtime_error if either of them fails.
std::size_t TranslateWithSpirvCross(const std::string& target, const std::string& text, int stage);

}  // namespace morl_bench
