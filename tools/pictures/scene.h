// SPDX-License-Identifier: MIT
#pragma once

#include "pictures/image.h"

#include <array>
#include <string>
#include <vector>

namespace pictures {

constexpr std::size_t kPictureSize = 256;  ///< pixels, both ways

/// A mesh of triangles. Every attribute has the same number of vertices.
struct Mesh {
    struct Attribute {
        std::string name;  ///< as the sample nodes call it
        int components;
        std::vector<float> values;
    };

    std::vector<Attribute> attributes;
    std::vector<unsigned short> indices;
};

/// A textured ball, slightly bent by its bones.
const Mesh& Sphere();

/// A quad over the whole screen.
const Mesh& Quad();

/// The values of a uniform of the sample nodes; matrices column after column. `bones` holds several
/// matrices.
/// @throws std::logic_error for one that is not known
const std::vector<float>& UniformValues(const std::string& name);

/// The picture behind a sampler of the sample nodes; not for cube maps.
/// @throws std::logic_error for one that is not known
Image TexturePicture(const std::string& name);

/// The six sides of the surroundings: +x, -x, +y, -y, +z, -z.
std::array<Image, 6> CubePictures();

}  // namespace pictures
