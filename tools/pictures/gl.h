// SPDX-License-Identifier: MIT
#pragma once

#include "pictures/image.h"

#include <memory>
#include <string>

namespace pictures {

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
    /// @throws std::runtime_error when the texts are not accepted, or ask for what the scene lacks
    Image Draw(const std::string& vertex, const std::string& fragment);

    /// Compiles and links a shader.
    /// @throws std::runtime_error when the texts are not accepted
    void Link(const std::string& vertex, const std::string& fragment);

    /// What the implementation calls itself.
    std::string Name() const;

private:
    struct State;

    std::unique_ptr<State> state;
};

}  // namespace pictures
