// SPDX-License-Identifier: MIT
#pragma once

#include <morl/morl.h>
#include <string>
#include <unordered_map>
#include <vector>

namespace morl_test {

/// One variant of a sample shader in one target: what examples/shaders.json says, expanded.
struct SampleRequest {
    std::string shader;
    std::string target;
    std::string variant;  ///< the macro values, such as "FOG=1,LIGHTS=2"; for messages
    ns_ruke::PassProperty vertex;
    ns_ruke::PassProperty fragment;
};

/// The texts of one request.
struct SampleTexts {
    std::string vertex;
    std::string fragment;
};

/// Every variant of every sample shader, in all four targets.
std::vector<SampleRequest> SampleGrid();

/// The variant of each sample shader with the largest macro values, in all four targets.
std::vector<SampleRequest> RichestSamples();

/// Runs both passes; the vertex pass's table goes to the fragment pass.
SampleTexts CompileSample(ns_ruke::MorlCompiler& compiler, SampleRequest request);

}  // namespace morl_test
