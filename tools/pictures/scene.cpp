// SPDX-License-Identifier: MIT
#include "pictures/scene.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <stdexcept>

namespace pictures {
namespace {

constexpr float kPi = 3.14159265F;

using Row = std::array<float, 4>;
using Matrix = std::array<Row, 4>;  ///< by rows, for column vectors

Matrix Multiply(const Matrix& a, const Matrix& b)
{
    Matrix product{};
    for (std::size_t i = 0; i < 4; ++i) {
        for (std::size_t j = 0; j < 4; ++j) {
            for (std::size_t k = 0; k < 4; ++k) {
                product[i][j] += a[i][k] * b[k][j];
            }
        }
    }
    return product;
}

/// About the y axis, then moved.
Matrix Turn(float angle, float x, float y, float z)
{
    const float c = std::cos(angle);
    const float s = std::sin(angle);
    return {{{c, 0, s, x}, {0, 1, 0, y}, {-s, 0, c, z}, {0, 0, 0, 1}}};
}

/// Looks along -z from z = 3.
Matrix Camera()
{
    constexpr float kFocus = 2.2F;
    constexpr float kNear = 1.0F;
    constexpr float kFar = 10.0F;
    const Matrix projection = {
        {{kFocus, 0, 0, 0},
         {0, kFocus, 0, 0},
         {0, 0, -(kFar + kNear) / (kFar - kNear), -2 * kFar * kNear / (kFar - kNear)},
         {0, 0, -1, 0}}};
    return Multiply(projection, Turn(0, 0, 0, -3));
}

/// The nodes multiply row vectors, so the columns of their matrices are the rows of these.
std::vector<float> Flatten(const std::vector<Matrix>& matrices)
{
    std::vector<float> values;
    for (const Matrix& matrix : matrices) {
        for (const Row& row : matrix) {
            values.insert(values.end(), row.begin(), row.end());
        }
    }
    return values;
}

std::vector<Matrix> Bones()
{
    std::vector<Matrix> bones;
    for (int i = 0; i < 24; ++i) {
        const auto bend = static_cast<float>(i % 4);
        bones.push_back(Turn(0.15F * bend, 0.1F * bend, -0.08F * bend, 0));
    }
    return bones;
}

std::map<std::string, std::vector<float>> MakeUniforms()
{
    const Matrix world = Turn(0.5F, 0, 0, 0);
    const Matrix shadow = {
        {{0.9F, 0, 0, 0.1F}, {0, 0.9F, 0, 0.2F}, {0, 0, -0.3F, 0.5F}, {0, 0, 0, 1}}};
    return {
        {"world", Flatten({world})},
        {"worldViewProj", Flatten({Multiply(Camera(), world)})},
        {"shadowMatrix", Flatten({shadow})},
        {"bones", Flatten(Bones())},
        {"uvTransform", {2, 1.5F, 0.1F, 0.2F}},
        {"eyePosition", {0, 0, 3}},
        {"surfaceColor", {0.8F, 0.5F, 0.3F, 1}},
        {"objectColor", {0.1F, 0.7F, 0.4F, 1}},
        {"alphaReference", {0.5F}},
        {"bumpiness", {1}},
        {"shadowBias", {0.02F}},
        {"ambientColor", {0.12F, 0.13F, 0.16F}},
        {"light_0", {0.5F, 0.7F, 0.6F, 0}},
        {"lightColor_0", {0.7F, 0.65F, 0.55F}},
        {"light_1", {-1.6F, 0.4F, 1.2F, 0.3F}},
        {"lightColor_1", {0.3F, 0.4F, 0.9F}},
        {"light_2", {1.2F, -1.3F, 1.0F, 0.4F}},
        {"lightColor_2", {0.8F, 0.3F, 0.2F}},
        {"light_3", {0, 1.8F, 0.6F, 0.4F}},
        {"lightColor_3", {0.3F, 0.8F, 0.3F}},
        {"specularColor", {0.5F, 0.5F, 0.5F}},
        {"shininess", {24}},
        {"reflectivity", {0.35F}},
        {"fogColor", {0.55F, 0.6F, 0.7F}},
        {"fogRange", {2.3F, 2.75F, 0.12F}},
        {"blurStep", {0.012F, 0.006F}},
        {"blurCenter", {0.2F}},
        {"blurWeight_1", {0.12F}},
        {"blurWeight_2", {0.09F}},
        {"blurWeight_3", {0.07F}},
        {"blurWeight_4", {0.05F}},
        {"blurWeight_5", {0.03F}},
        {"blurWeight_6", {0.02F}},
        {"blurWeight_7", {0.02F}},
        {"bloomThreshold", {0.5F}},
        {"bloomKnee", {0.3F}},
        {"bloomStrength", {0.6F}},
        {"exposure", {0.8F}},
        {"gradeLift", {0.02F, 0.01F, 0.03F}},
        {"gradeGain", {1.05F, 1.0F, 0.9F}},
        {"gradeSaturation", {1.2F}},
        {"gradeContrast", {1.1F}},
        {"vignetteShape", {0.6F, 1.1F}},
        // Of the probes of docs/targets.md: three columns of four, alone and as a matrix.
        {"probeColumn0", {0.5F, 0.2F, -0.1F, 0.1F}},
        {"probeColumn1", {-0.3F, 0.6F, 0.2F, 0}},
        {"probeColumn2", {0.1F, -0.4F, 0.7F, 0.2F}},
        {"probeMatrix", {0.5F, 0.2F, -0.1F, 0.1F, -0.3F, 0.6F, 0.2F, 0, 0.1F, -0.4F, 0.7F, 0.2F}},
        {"probeCount", {5}},
        {"probeColors", {1, 0.2F, 0.1F, 1, 0.1F, 0.9F, 0.3F, 1, 0.2F, 0.3F, 1, 1, 1, 1, 0, 1}},
    };
}

std::uint8_t Channel(float value)
{
    return static_cast<std::uint8_t>(std::lround(std::clamp(value, 0.0F, 1.0F) * 255));
}

Pixel Colour(float red, float green, float blue, float alpha)
{
    return {Channel(red), Channel(green), Channel(blue), Channel(alpha)};
}

/// Calls `colour` with the place of each pixel, from 0 to 1 both ways.
template <class Make>
Image Paint(std::size_t size, const Make& colour)
{
    Image image(size, size);
    for (std::size_t y = 0; y < size; ++y) {
        for (std::size_t x = 0; x < size; ++x) {
            image.At(x, y) = colour((static_cast<float>(x) + 0.5F) / static_cast<float>(size),
                                    (static_cast<float>(y) + 0.5F) / static_cast<float>(size));
        }
    }
    return image;
}

bool IsDark(float x, float y)
{
    return (static_cast<int>(x * 8) + static_cast<int>(y * 8)) % 2 == 1;
}

/// A checked cloth, with holes for alpha tests.
Pixel Cloth(float x, float y)
{
    const float fx = x * 8 - std::floor(x * 8) - 0.5F;
    const float fy = y * 8 - std::floor(y * 8) - 0.5F;
    const float alpha = fx * fx + fy * fy < 0.05F ? 0.0F : 1.0F;
    return IsDark(x, y) ? Colour(0.75F, 0.2F + 0.3F * y, 0.15F, alpha)
                        : Colour(0.9F, 0.85F, 0.7F - 0.3F * x, alpha);
}

/// Round bumps, as a normal map.
Pixel Bumps(float x, float y)
{
    const float dx = 0.45F * std::sin(x * 16 * kPi);
    const float dy = 0.45F * std::sin(y * 12 * kPi);
    return Colour(0.5F + 0.5F * dx, 0.5F + 0.5F * dy,
                  0.5F + 0.5F * std::sqrt(1 - dx * dx - dy * dy), 1);
}

/// What casts a shadow: near the middle, and nothing elsewhere.
Pixel Occluder(float x, float y)
{
    const bool isNear = std::abs(x - 0.62F) < 0.13F || std::abs(y - 0.75F) < 0.06F;
    const float depth = isNear ? 0.1F : 1.0F;
    return Colour(depth, depth, depth, 1);
}

/// A sky, hills, and a sun that is too bright.
Pixel Landscape(float x, float y)
{
    const float hill = 0.55F + 0.12F * std::sin(x * 9) + 0.05F * std::sin(x * 23);
    if (y > hill) {
        return Colour(0.15F + 0.2F * x, 0.45F - 0.2F * y, 0.12F, 1);
    }
    const float sun = (x - 0.7F) * (x - 0.7F) + (y - 0.25F) * (y - 0.25F);
    return sun < 0.008F ? Colour(1, 0.95F, 0.8F, 1)
                        : Colour(0.35F + 0.3F * y, 0.5F + 0.3F * y, 0.85F, 1);
}

Pixel Glow(float x, float y)
{
    const float sun = (x - 0.7F) * (x - 0.7F) + (y - 0.25F) * (y - 0.25F);
    const float glow = std::exp(-sun * 25);
    return Colour(glow, 0.8F * glow, 0.5F * glow, 1);
}

void Push(std::vector<float>& values, std::initializer_list<float> more)
{
    values.insert(values.end(), more);
}

Mesh MakeSphere()
{
    constexpr unsigned kAcross = 48;
    constexpr unsigned kDown = 24;
    Mesh mesh;
    mesh.attributes = {{"position", 3, {}},    {"normal", 3, {}}, {"uv", 2, {}},
                       {"tangent", 4, {}},     {"color", 4, {}},  {"blendIndices", 4, {}},
                       {"blendWeights", 4, {}}};
    for (unsigned row = 0; row <= kDown; ++row) {
        for (unsigned column = 0; column <= kAcross; ++column) {
            const float u = static_cast<float>(column) / kAcross;
            const float v = static_cast<float>(row) / kDown;
            const float around = u * 2 * kPi;
            const float ring = std::sin(v * kPi);
            const float x = ring * std::sin(around);
            const float y = std::cos(v * kPi);
            const float z = ring * std::cos(around);
            Push(mesh.attributes[0].values, {x, y, z});
            Push(mesh.attributes[1].values, {x, y, z});
            Push(mesh.attributes[2].values, {u * 2, v});
            Push(mesh.attributes[3].values, {std::cos(around), 0, -std::sin(around), 1});
            Push(mesh.attributes[4].values, {0.5F + 0.5F * x, 0.5F + 0.5F * y, 0.5F + 0.5F * z, 1});
            Push(mesh.attributes[5].values, {0, 1, 2, 3});
            Push(mesh.attributes[6].values, {0.7F - 0.4F * v, 0.4F * v, 0.2F, 0.1F});
        }
    }
    for (unsigned row = 0; row < kDown; ++row) {
        for (unsigned column = 0; column < kAcross; ++column) {
            const unsigned first = row * (kAcross + 1) + column;
            const unsigned below = first + kAcross + 1;
            for (const unsigned index : {first, below, first + 1, first + 1, below, below + 1}) {
                mesh.indices.push_back(static_cast<unsigned short>(index));
            }
        }
    }
    return mesh;
}

}  // namespace

const Mesh& Sphere()
{
    static const Mesh mesh = MakeSphere();
    return mesh;
}

const Mesh& Quad()
{
    static const Mesh mesh = {{{"position", 3, {-1, -1, 0, 1, -1, 0, -1, 1, 0, 1, 1, 0}},
                               {"uv", 2, {0, 1, 1, 1, 0, 0, 1, 0}}},
                              {0, 1, 2, 2, 1, 3}};
    return mesh;
}

const std::vector<float>& UniformValues(const std::string& name)
{
    static const std::map<std::string, std::vector<float>> uniforms = MakeUniforms();
    const auto found = uniforms.find(name);
    if (found == uniforms.end()) {
        throw std::logic_error("the scene has no uniform " + name);
    }
    return found->second;
}

Image TexturePicture(const std::string& name)
{
    static const std::map<std::string, Pixel (*)(float, float)> pictures = {
        {"albedoMap", Cloth},
        {"normalMap", Bumps},
        {"shadowMapSun", Occluder},
        {"sceneMap", Landscape},
        {"bloomMap", Glow}};
    const auto found = pictures.find(name);
    if (found == pictures.end()) {
        throw std::logic_error("the scene has no texture " + name);
    }
    return Paint(128, found->second);
}

std::array<Image, 6> CubePictures()
{
    const auto side = [](float red, float green, float blue) {
        return Paint(64, [&](float x, float y) {
            const float shade = IsDark(x, y) ? 0.75F : 1.0F;
            return Colour(red * shade, green * shade, (blue + 0.2F * y) * shade, 1);
        });
    };
    return {side(0.9F, 0.4F, 0.3F),  side(0.3F, 0.8F, 0.4F), side(0.6F, 0.8F, 1.0F),
            side(0.3F, 0.25F, 0.2F), side(0.9F, 0.8F, 0.3F), side(0.6F, 0.4F, 0.8F)};
}

}  // namespace pictures
