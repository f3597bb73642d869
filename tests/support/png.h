// Pictures that programs wrote, and how far they differ.
#pragma once

#include <png.h>

#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <vector>

namespace varnel::test {

/// A picture's pixels, red, green and blue; without any when the file is no picture.
struct Pixels {
    unsigned width = 0;
    unsigned height = 0;
    std::vector<png_byte> rgb;
};

inline Pixels ReadPng(const std::filesystem::path& file) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_file(&image, file.c_str()) == 0) return {};
    image.format = PNG_FORMAT_RGB;
    Pixels pixels{image.width, image.height, std::vector<png_byte>(PNG_IMAGE_SIZE(image))};
    if (png_image_finish_read(&image, nullptr, pixels.rgb.data(), 0, nullptr) == 0) return {};
    return pixels;
}

/// The mean difference of a component, of 255, which is also that of different sizes. Drivers
/// differ in the pixels along edges.
inline double MeanDifference(const Pixels& a, const Pixels& b) {
    if (a.width != b.width || a.rgb.size() != b.rgb.size() || a.rgb.empty()) return 255;
    double sum = 0;
    for (std::size_t i = 0; i < a.rgb.size(); ++i)
        sum += std::abs(a.rgb[i] - b.rgb[i]);
    return sum / static_cast<double>(a.rgb.size());
}

}  // namespace varnel::test
