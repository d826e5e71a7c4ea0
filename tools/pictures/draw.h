// SPDX-License-Identifier: MIT
#pragma once

#include "pictures/gl.h"
#include "support/samples.h"

namespace pictures {

/// Takes a shader's texts as their target is meant: GLSL in a core context, GLSL ES in one of
/// OpenGL ES 2, HLSL by way of glslang and SPIRV-Cross.
class Painter {
public:
    /// @throws Refused when the texts are not accepted
    Image Draw(const std::string& target, const morl_test::SampleTexts& texts);

    /// @throws Refused when the texts are not accepted
    void Link(const std::string& target, const morl_test::SampleTexts& texts);

    /// The implementations, for messages.
    std::string Names() const { return core.Name() + "; " + es.Name(); }

private:
    GlContext& ContextOf(const std::string& target);

    GlContext core{GlApi::Core};
    GlContext es{GlApi::Es2};
};

}  // namespace pictures
