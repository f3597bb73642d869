// The geometric decisions behind the triangulation, each of them exact.
//
// A decision is first taken in plain doubles together with a bound on what rounding can have done
// to it; only when the two are comparable is it taken again in exact arithmetic (J. R. Shewchuk,
// "Adaptive Precision Floating-Point Arithmetic and Fast Robust Geometric Predicates", Discrete &
// Computational Geometry 18, 1997). Contradictory answers, which would break or trap the
// triangulation, cannot happen.
//
// Coordinates are multiples of kSiteUnit and at most kSiteLimit in size, so that no product of four
// differences overflows or loses a bit below the smallest double. SiteScale brings any finite
// coordinates into that range.
#pragma once

#include <cmath>

namespace varnel::detail {

inline constexpr double kSiteUnit = 0x1p-268;
inline constexpr double kSiteLimit = 0x1p+200;

/// A point of the plane.
struct Site {
    double x;
    double y;
};

/// Multiplication by a power of two, which no finite coordinate up to a given size overflows.
/// Coordinates less than 2^-468 of that size are rounded to kSiteUnit.
class SiteScale {
 public:
    explicit SiteScale(double largest);

    double operator()(double v) const {
        const double s = v * m_First * m_Second;
        // Adding and subtracting a large number rounds to the last place of that number.
        constexpr double kRound = 0x1.8p-216;
        return std::abs(s) < 0x1p-216 ? (s + kRound) - kRound : s;
    }

 private:
    // One factor alone can be beyond the range of doubles.
    double m_First;
    double m_Second;
};

/// The sign of (a - p) x (b - p) in exact arithmetic: 1 when p lies left of a -> b, -1 right, 0 on
/// the line.
int ExactOrientation(const Site& a, const Site& b, const Site& p);

/// The sign of the sine of the sum of the angles at v3 and at p in the quadrilateral v1 p v2 v3.
int ExactAngleSum(const Site& v1, const Site& v2, const Site& v3, const Site& p);

/// The sign of a * (to.x - from.x) + b * (to.y - from.y) for small whole numbers a and b.
int SideSign(double a, double b, const Site& from, const Site& to);

inline int Sign(double v) {
    return (v > 0.0) - (v < 0.0);
}

/// 1 when p lies left of a -> b, -1 right, 0 on the line.
inline int Orientation(const Site& a, const Site& b, const Site& p) {
    const double left = (a.x - p.x) * (b.y - p.y);
    const double right = (a.y - p.y) * (b.x - p.x);
    const double det = left - right;
    constexpr double kBound = 0x1p-51;
    // The bound is 0 only where both products are, and then so is the determinant.
    if (std::abs(det) >= kBound * (std::abs(left) + std::abs(right))) return Sign(det);
    return ExactOrientation(a, b, p);
}

/// Whether p lies strictly inside the circle through v1, v2, v3 (counter-clockwise), where p and v3
/// are on opposite sides of v1 v2. That is so exactly when the angles under which v1 v2 is seen
/// from v3 (a) and from p (b) add up to more than half a turn, sin(a + b) < 0:
///
///              v3
///             /a \           cos a ~ (v1 - v3) . (v2 - v3)    sin a ~ (v1 - v3) x (v2 - v3)
///           v1----v2
///             \b /           cos b ~ (v2 - p) . (v1 - p)      sin b ~ (v2 - p) x (v1 - p)
///              p
inline bool InsideCircle(const Site& v1, const Site& v2, const Site& v3, const Site& p) {
    const double x13 = v1.x - v3.x, y13 = v1.y - v3.y, x23 = v2.x - v3.x, y23 = v2.y - v3.y;
    const double x1p = v1.x - p.x, y1p = v1.y - p.y, x2p = v2.x - p.x, y2p = v2.y - p.y;
    const double ca1 = x13 * x23, ca2 = y13 * y23, sa1 = x13 * y23, sa2 = x23 * y13;
    const double cb1 = x2p * x1p, cb2 = y1p * y2p, sb1 = x2p * y1p, sb2 = x1p * y2p;
    const double det = (sa1 - sa2) * (cb1 + cb2) + (sb1 - sb2) * (ca1 + ca2);
    const double size = (std::abs(sa1) + std::abs(sa2)) * (std::abs(cb1) + std::abs(cb2)) +
                        (std::abs(sb1) + std::abs(sb2)) * (std::abs(ca1) + std::abs(ca2));
    // Ten roundings of 2^-53 reach the determinant. As above, a bound of 0 leaves no doubt; the
    // corners of an upright rectangle, say.
    constexpr double kBound = 12 * 0x1p-53;
    if (std::abs(det) >= kBound * size) return det < 0.0;
    return ExactAngleSum(v1, v2, v3, p) < 0;
}

}  // namespace varnel::detail
