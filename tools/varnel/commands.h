// The commands of the program. Each returns the program's exit status, 0 for success, and tells
// failures in one sentence on standard error.
#pragma once

#include <string>

namespace tool {

struct PictureSize {
    int width = 900;
    int height = 650;
};

/// Shows a chart file in a window.
int View(const std::string& file, const PictureSize& size, int samples);

/// Draws a chart file into a picture file, .png or .bmp.
int Render(const std::string& file, const std::string& picture, const PictureSize& size,
           int samples);

/// Lists what a chart file holds.
int Info(const std::string& file);

}  // namespace tool
