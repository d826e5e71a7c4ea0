// SPDX-License-Identifier: MIT
#pragma once

#include "support/samples.h"

namespace pictures {

/// Makes GLSL 4.10 of HLSL by glslangValidator and spirv-cross. The varyings of the two stages meet
/// as in Direct3D: for shader model 3 (`isModel3`) by semantic, for Direct3D 10 by place in the
/// structs. Names of uniforms stand behind a dot, those of attributes behind "input_".
/// @throws std::runtime_error with the messages of the compiler that refuses the text.
morl_test::SampleTexts GlslOfHlsl(const morl_test::SampleTexts& texts, bool isModel3);

}  // namespace pictures
