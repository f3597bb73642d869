// Colours and numbers that many tests use.
#pragma once

#include <limits>

#include "varnel/foundation/colors.h"

namespace varnel::test {

inline constexpr RGBDType kRed{1, 0, 0, 1};
inline constexpr RGBDType kGreen{0, 1, 0, 1};
inline constexpr RGBDType kBlue{0, 0, 1, 1};
inline constexpr RGBDType kBlack{0, 0, 0, 1};

inline constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
inline constexpr double kInf = std::numeric_limits<double>::infinity();

}  // namespace varnel::test
