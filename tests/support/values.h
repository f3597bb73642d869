// Colours and numbers that many tests use, and comparing numbers.
#pragma once

#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "varnel/foundation/colors.h"

namespace varnel::test {

inline constexpr RGBDType kRed{1, 0, 0, 1};
inline constexpr RGBDType kGreen{0, 1, 0, 1};
inline constexpr RGBDType kBlue{0, 0, 1, 1};
inline constexpr RGBDType kBlack{0, 0, 0, 1};

inline constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
inline constexpr double kInf = std::numeric_limits<double>::infinity();

inline bool Same(const RGBDType& a, const RGBDType& b) {
    return a.r == b.r && a.g == b.g && a.b == b.b && a.a == b.a;
}

/// Numbers of any kind side by side, for comparing several at once.
template <class... T>
std::vector<double> Row(const T&... values) {
    return {static_cast<double>(values)...};
}

inline void ExpectNear(const std::vector<double>& is, const std::vector<double>& should,
                       double tolerance) {
    ASSERT_EQ(is.size(), should.size());
    for (std::size_t i = 0; i < is.size(); ++i)
        EXPECT_NEAR(is[i], should[i], tolerance) << "number " << i;
}

}  // namespace varnel::test
