// SPDX-License-Identifier: MIT
#pragma once

#include "support/graph.h"
#include "support/samples.h"

#include <string>
#include <vector>

namespace morl_test {

/// A shader in one target with words of other languages as the names of something, none of which
/// the checks warn of. Every compiler should take it.
struct WordShader {
    std::string name;  ///< "TARGET_WHAT_NUMBER"
    std::string target;
    std::vector<std::string> words;
    NodeSource vertex;
    NodeSource fragment;
};

/// All words of tests/pictures/words.txt, as everything that has a name: local variables, uniforms,
/// vertex inputs, what goes between the stages, and fragment outputs. Words of Morl itself are left
/// out, and those that the checks warn of.
std::vector<WordShader> WordShaders();

/// The texts of such a shader.
SampleTexts TextsOf(const WordShader& shader);

}  // namespace morl_test
