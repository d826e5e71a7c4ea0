// SPDX-License-Identifier: MIT
#include "pictures/image.h"

#include <png.h>
#include <algorithm>
#include <cstdlib>
#include <stdexcept>

namespace pictures {
namespace {

/// How far the channels of two pixels are apart at most.
int Distance(const Pixel& a, const Pixel& b)
{
    int distance = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        distance = std::max(distance, std::abs(a[i] - b[i]));
    }
    return distance;
}

}  // namespace

void Image::Put(const Image& other, std::size_t left, std::size_t top)
{
    for (std::size_t y = 0; y < other.height; ++y) {
        std::copy_n(&other.At(0, y), other.width, &At(left, top + y));
    }
}

Image Difference(const Image& a, const Image& b)
{
    constexpr int kAmplification = 16;
    Image difference(a.width, a.height);
    for (std::size_t i = 0; i < a.pixels.size(); ++i) {
        for (std::size_t channel = 0; channel < 3; ++channel) {
            const int apart = std::abs(a.pixels[i][channel] - b.pixels[i][channel]);
            difference.pixels[i][channel] =
                static_cast<std::uint8_t>(std::min(apart * kAmplification, 255));
        }
    }
    return difference;
}

std::size_t CountDifferent(const Image& a, const Image& b)
{
    constexpr int kTolerance = 2;
    std::size_t count = 0;
    for (std::size_t i = 0; i < a.pixels.size(); ++i) {
        count += Distance(a.pixels[i], b.pixels[i]) > kTolerance ? 1 : 0;
    }
    return count;
}

bool LooksSame(const Image& a, const Image& b)
{
    constexpr std::size_t kEdgePixels = 24;
    return CountDifferent(a, b) <= kEdgePixels;
}

void WritePng(const std::filesystem::path& path, const Image& image)
{
    std::filesystem::create_directories(path.parent_path());
    std::vector<std::uint8_t> colours;
    for (const Pixel& pixel : image.pixels) {
        colours.insert(colours.end(), pixel.begin(), pixel.begin() + 3);
    }
    png_image png = {};
    png.version = PNG_IMAGE_VERSION;
    png.width = static_cast<png_uint_32>(image.width);
    png.height = static_cast<png_uint_32>(image.height);
    png.format = PNG_FORMAT_RGB;
    if (png_image_write_to_file(&png, path.c_str(), 0, colours.data(), 0, nullptr) == 0) {
        throw std::runtime_error("cannot write " + path.string() + ": " + png.message);
    }
}

}  // namespace pictures
