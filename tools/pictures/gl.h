// SPDX-License-Identifier: MIT
#pragma once

#include "pictures/image.h"

#include <memory>
#include <stdexcept>
#include <string>

namespace pictures {

/// A compiler or linker does not take a text.
class Refused : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

enum class GlApi { Core, Es2 };

/// An OpenGL implementation without a display, drawing in software: a core context or one of
/// OpenGL ES 2.
class GlContext {
public:
    /// @throws std::runtime_error when there is no such implementation
    explicit GlContext(GlApi api);
    GlContext(const GlContext&) = delete;
    GlContext& operator=(const GlContext&) = delete;
    ~GlContext();

    /// Draws a shader with the mesh, the uniforms and the textures of the scene that it asks for: a
    /// quad for shaders that have no matrix, otherwise the ball.
    /// @throws Refused when the texts are not accepted; std::logic_error when the scene lacks what
    /// they ask for
    Image Draw(const std::string& vertex, const std::string& fragment);

    /// Compiles and links a shader.
    /// @throws Refused when the texts are not accepted
    void Link(const std::string& vertex, const std::string& fragment);

    /// What the implementation calls itself.
    std::string Name() const;

private:
    struct State;

    std::unique_ptr<State> state;
};

}  // namespace pictures
