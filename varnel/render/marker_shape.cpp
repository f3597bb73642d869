#include "varnel/render/detail/marker_shape.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "varnel/render/codes.h"
#include "varnel/render/detail/stroke.h"

namespace varnel::detail {
namespace {

using std::numbers::pi;

/// A regular polygon whose first corner lies at an angle, its border `apothem` from the middle.
std::vector<MarkerCorner> Regular(int n, double apothem, double first) {
    std::vector<MarkerCorner> ring;
    const double radius = apothem / std::cos(pi / n);
    for (int i = 0; i < n; ++i) {
        const double angle = first + 2.0 * pi * i / n;
        ring.push_back({radius * std::cos(angle), radius * std::sin(angle)});
    }
    return ring;
}

/// A middle and four arms, turned by an angle.
MarkerShape Cross(double half, double thick, double turn) {
    const double c = std::cos(turn);
    const double s = std::sin(turn);
    MarkerShape shape;
    const auto add = [&](double left, double bottom, double right, double top) {
        std::vector<MarkerCorner> ring = {
            {left, bottom}, {right, bottom}, {right, top}, {left, top}};
        for (MarkerCorner& p : ring)
            p = {c * p.x - s * p.y, s * p.x + c * p.y};
        shape.push_back(ring);
    };
    add(-thick, -thick, thick, thick);
    add(thick, -thick, half, thick);
    add(-half, -thick, -thick, thick);
    add(-thick, thick, thick, half);
    add(-thick, -half, thick, -thick);
    return shape;
}

/// Five kites from the middle, the tips `radius` away.
MarkerShape Star(double radius) {
    constexpr double kInner = 0.5;
    const auto at = [](double r, double step) {
        const double angle = pi / 2.0 + step * pi / 5.0;
        return MarkerCorner{r * std::cos(angle), r * std::sin(angle)};
    };
    MarkerShape shape;
    for (int i = 0; i < 5; ++i)
        shape.push_back({{0.0, 0.0},
                         at(kInner * radius, 2 * i - 1),
                         at(radius, 2 * i),
                         at(kInner * radius, 2 * i + 1)});
    return shape;
}

}  // namespace

MarkerShape MakeMarkerShape(int kind, double size, double margin) {
    // Half the size of each kind beside that of the circle, by which they look alike.
    constexpr double kSquare = 0.89;
    constexpr double kTriangle = 0.68;  // of its inscribed circle
    constexpr double kArm = 1.1;
    constexpr double kThick = 0.32;
    constexpr double kStar = 1.3;
    constexpr double kStarBorder = 0.4426;  // distance of a star's sides from its middle
    const double half = size / 2.0;
    const auto grown = [&](double share) { return std::max(share * half + margin, 0.0); };
    switch (kind) {
        case MARKER_CIRCLE:
            return {Regular(CircleCorners(grown(1.0)), grown(1.0), 0.0)};
        case MARKER_SQUARE:
            return {Regular(4, grown(kSquare), pi / 4.0)};
        case MARKER_TRIANGLE:
            return {Regular(3, grown(kTriangle), pi / 2.0)};
        case MARKER_DIAMOND:
            return {Regular(4, grown(kSquare), pi / 2.0)};
        case MARKER_CROSS:
            return Cross(grown(kArm), grown(kThick), pi / 4.0);
        case MARKER_PLUS:
            return Cross(grown(kArm), grown(kThick), 0.0);
        case MARKER_STAR:
            return Star(grown(kStar * kStarBorder) / kStarBorder);
        default:
            return {};
    }
}

}  // namespace varnel::detail
