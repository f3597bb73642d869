// From fractions to whole numbers, where these have limits.
#pragma once

namespace varnel::detail {

/// The whole part of v within least..most; what is not a number is the least.
constexpr int WholeWithin(double v, int least, int most) {
    if (!(v > least)) return least;
    return v < most ? static_cast<int>(v) : most;
}

}  // namespace varnel::detail
