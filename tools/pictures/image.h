// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <vector>

namespace pictures {

using Pixel = std::array<std::uint8_t, 4>;  ///< red, green, blue, alpha

/// A picture, from the top left corner, row by row.
struct Image {
    Image(std::size_t newWidth, std::size_t newHeight)
        : width(newWidth), height(newHeight), pixels(width * height)
    {
    }

    Pixel& At(std::size_t x, std::size_t y) { return pixels[y * width + x]; }
    const Pixel& At(std::size_t x, std::size_t y) const { return pixels[y * width + x]; }

    /// Copies a picture to a place in this one, which must have room for it.
    void Put(const Image& other, std::size_t left, std::size_t top);

    std::size_t width;
    std::size_t height;
    std::vector<Pixel> pixels;
};

/// Where the colours differ: the absolute differences of the channels, amplified.
Image Difference(const Image& a, const Image& b);

/// How many pixels have a channel that differs by more than implementations may round: 2 of 255.
std::size_t CountDifferent(const Image& a, const Image& b);

/// Whether no more pixels differ than may at edges: 24.
bool LooksSame(const Image& a, const Image& b);

/// Writes a PNG file without alpha. Makes the directory.
/// @throws std::runtime_error when it cannot be written.
void WritePng(const std::filesystem::path& path, const Image& image);

}  // namespace pictures
