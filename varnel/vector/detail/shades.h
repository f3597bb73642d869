// Colours in steps, so that neighbouring pieces of a surface that look the same are one area.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "varnel/foundation/colors.h"

namespace varnel::detail {

/// Of 255 levels of a component. No colour moves by more than two.
constexpr int kShadeStep = 5;

inline RGBDType Snapped(const RGBDType& c) {
    constexpr double kSteps = 255.0 / kShadeStep;
    const auto snap = [](double v) { return std::round(v * kSteps) / kSteps; };
    return {snap(c.r), snap(c.g), snap(c.b), c.a};
}

/// A colour as its 32 bits, by which what looks the same is put together.
inline std::uint32_t ColorKey(const RGBDType& c) {
    const auto level = [](double v) {
        return static_cast<std::uint32_t>(std::lround(std::clamp(v, 0.0, 1.0) * 255.0));
    };
    return level(c.a) << 24U | level(c.r) << 16U | level(c.g) << 8U | level(c.b);
}

}  // namespace varnel::detail
