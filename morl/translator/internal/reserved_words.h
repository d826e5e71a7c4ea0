// SPDX-License-Identifier: MIT
// The words that a target's language has, and Morl has not. They are what compilers refuse of the
// candidates in tests/pictures/words.txt: Microsoft's of HLSL, and of GLSL glslang, Mesa and
// WebGL as Chromium has it; and the words that the standards reserve besides.
#pragma once

#include "morl/translator/internal/word_list.h"

namespace ns_ruke {

/// What Microsoft's compiler refuses for shader model 3 or Direct3D 10 as a name of anything, what
/// it takes for types, and the names that the entry function declares.
extern const WordList kHlslWords;

/// Of both GLSL 1.50 and GLSL ES 1.00.
extern const WordList kGlslWords;

/// Further ones of GLSL 1.50.
extern const WordList kGlslWordsOf150;

inline constexpr WordList kNoMoreWords;

}  // namespace ns_ruke
