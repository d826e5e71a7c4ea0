// SPDX-License-Identifier: MIT
#pragma once

#include "support/samples.h"

namespace pictures {

/// Makes GLSL 4.10 of HLSL by glslangValidator and spirv-cross. The varyings of the two stages meet
/// as in Direct3D: for shader model 3 (`isModel3`) by semantic, for Direct3D 10 by place in the
/// structs, where the semantics must agree. Names of uniforms are prefixed with their block's name
/// and a dot, those of attributes with "input_".
/// @throws Refused with the messages of the compiler that does not take the text, or when the
/// stages do not meet.
morl_test::SampleTexts GlslOfHlsl(const morl_test::SampleTexts& texts, bool isModel3);

}  // namespace pictures
