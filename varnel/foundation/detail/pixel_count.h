// From fractions to whole pixels.
#pragma once

#include <algorithm>

namespace varnel::detail {

/// A number of pixels truncated toward zero; beyond what images can have it is cut off, and what is
/// not a number is 0.
inline int PixelCount(double pixels) {
    constexpr double kMost = 1 << 24;
    if (!(pixels == pixels)) return 0;
    return static_cast<int>(std::clamp(pixels, -kMost, kMost));
}

}  // namespace varnel::detail
