#include "varnel/vector/detail/smooth_pieces.h"

#include <algorithm>
#include <cmath>

#include "varnel/vector/detail/hiding.h"
#include "varnel/vector/detail/shades.h"

namespace varnel::detail {
namespace {

/// Colours of one piece differ by at most this many of 255 levels.
constexpr double kLevels = 2.0;
constexpr int kDeepest = 3;
constexpr double kSteps = 255.0 / kShadeStep;

double Component(const RGBDType& c, std::size_t i) {
    return i == 0 ? c.r : i == 1 ? c.g : c.b;
}

double Spread(const SmoothTriangle& t, std::size_t component) {
    const auto [low, high] =
        std::minmax({Component(t.colors[0], component), Component(t.colors[1], component),
                     Component(t.colors[2], component)});
    return high - low;
}

RGBDType Mix(const RGBDType& a, const RGBDType& b, double t) {
    return {a.r + t * (b.r - a.r), a.g + t * (b.g - a.g), a.b + t * (b.b - a.b),
            a.a + t * (b.a - a.a)};
}

GridPoint Middle(const GridPoint& a, const GridPoint& b) {
    return {(a.x + b.x) / 2, (a.y + b.y) / 2};
}

/// Twice the area of a triangle, positive where it turns left.
double Turn(const GridPoint& a, const GridPoint& b, const GridPoint& c) {
    return static_cast<double>(b.x - a.x) * (c.y - a.y) -
           static_cast<double>(c.x - a.x) * (b.y - a.y);
}

}  // namespace

void ValuedRing::Cut(double sign, double at) {
    const ValuedRing whole = *this;
    count = 0;
    for (std::size_t i = 0; i < whole.count; ++i) {
        const auto& [p, v] = whole.corners[i];
        const auto& [q, w] = whole.corners[(i + 1) % whole.count];
        const double sv = sign * (v - at);
        const double sw = sign * (w - at);
        if (sv >= 0.0) corners[count++] = whole.corners[i];
        if ((sv >= 0.0) == (sw >= 0.0)) continue;
        const double t = sv / (sv - sw);
        corners[count++] = {{p.x + t * (q.x - p.x), p.y + t * (q.y - p.y), p.z + t * (q.z - p.z)},
                            at};
    }
}

void ShadePieces::Add(Area area, const RGBDType& color) {
    const RGBDType snapped = Snapped(color);
    Shade& shade = shades[ColorKey(snapped)];
    shade.color = snapped;
    shade.areas.push_back(std::move(area));
}

void ShadePieces::Subdivide(const SmoothTriangle& t, int depth) {
    const auto& [a, b, c] = t.colors;
    const bool even = std::max({Spread(t, 0), Spread(t, 1), Spread(t, 2)}) * 255.0 <= kLevels;
    if (even || depth >= kDeepest) {
        Add({{t.corners.begin(), t.corners.end()}}, Mix(Mix(a, b, 0.5), c, 1.0 / 3.0));
        return;
    }
    const std::array<GridPoint, 3> p = {Middle(t.corners[0], t.corners[1]),
                                        Middle(t.corners[1], t.corners[2]),
                                        Middle(t.corners[2], t.corners[0])};
    const std::array<RGBDType, 3> m = {Mix(a, b, 0.5), Mix(b, c, 0.5), Mix(c, a, 0.5)};
    Subdivide({{t.corners[0], p[0], p[2]}, {a, m[0], m[2]}}, depth + 1);
    Subdivide({{p[0], t.corners[1], p[1]}, {m[0], b, m[1]}}, depth + 1);
    Subdivide({{p[2], p[1], t.corners[2]}, {m[2], m[1], c}}, depth + 1);
    Subdivide({{p[0], p[1], p[2]}, {m[0], m[1], m[2]}}, depth + 1);
}

std::optional<StraightGradient> FindGradient(const SmoothTriangle& t) {
    std::size_t leading = 0;
    for (std::size_t k = 1; k < 3; ++k)
        if (Spread(t, k) > Spread(t, leading)) leading = k;
    const auto value = [&t](std::size_t corner, std::size_t k) {
        return Component(t.colors[corner], k);
    };
    std::array<std::size_t, 3> order = {0, 1, 2};
    std::sort(order.begin(), order.end(),
              [&](std::size_t i, std::size_t k) { return value(i, leading) < value(k, leading); });
    const auto [low, middle, high] = order;
    const double range = value(high, leading) - value(low, leading);
    if (!(range * 255.0 > kLevels)) return std::nullopt;
    const double share = (value(middle, leading) - value(low, leading)) / range;
    for (std::size_t k = 0; k < 3; ++k) {
        const double even = value(low, k) + share * (value(high, k) - value(low, k));
        if (std::fabs(even - value(middle, k)) * 255.0 > kLevels) return std::nullopt;
    }
    // The colour's place along the line from low to end is where the foot of a place on it is.
    const double ax = t.corners[middle].x - t.corners[low].x;
    const double ay = t.corners[middle].y - t.corners[low].y;
    const double bx = t.corners[high].x - t.corners[low].x;
    const double by = t.corners[high].y - t.corners[low].y;
    const double area = ax * by - bx * ay;
    if (std::fabs(area) < 1.0) return std::nullopt;
    const double gx = (share * by - ay) / area;
    const double gy = (ax - share * bx) / area;
    const double square = gx * gx + gy * gy;
    const GridPoint& from = t.corners[low];
    return StraightGradient{
        from,
        {from.x + gx / square, from.y + gy / square},
        t.colors[low],
        t.colors[high],
        {value(0, leading) * kSteps, value(1, leading) * kSteps, value(2, leading) * kSteps}};
}

bool CutShades(const SmoothTriangle& t, const StraightGradient& gradient, double mostSteps,
               ShadePieces& pieces) {
    const auto [low, high] =
        std::minmax({gradient.values[0], gradient.values[1], gradient.values[2]});
    if (high - low > mostSteps) return false;
    ValuedRing triangle;
    for (std::size_t i = 0; i < 3; ++i)
        triangle.corners[triangle.count++] = {
            {t.corners[i].x / kGridPerPixel, t.corners[i].y / kGridPerPixel, 0.0},
            gradient.values[i]};
    for (double step = std::round(low); step <= std::round(high); step += 1.0) {
        ValuedRing piece = triangle;
        piece.Cut(1.0, step - 0.5);
        piece.Cut(-1.0, step + 0.5);
        Ring ring;
        for (std::size_t i = 0; i < piece.count; ++i)
            ring.push_back(ToGrid(piece.corners[i].place));
        const double share = std::clamp((step - low) / (high - low), 0.0, 1.0);
        if (ring.size() >= 3) pieces.Add({ring}, Mix(gradient.low, gradient.high, share));
    }
    return true;
}

bool CutTriangles(const SmoothTriangle& t, Ring outline, std::vector<SmoothTriangle>& pieces) {
    const auto& a = t.corners[0];
    const auto& b = t.corners[1];
    const auto& c = t.corners[2];
    const double whole = Turn(a, b, c);
    if (whole == 0.0) return false;
    const auto colorAt = [&](const GridPoint& p) {
        const double u = Turn(a, p, c) / whole;
        const double v = Turn(a, b, p) / whole;
        const auto mix = [&](double x, double y, double z) {
            return std::clamp(x + u * (y - x) + v * (z - x), 0.0, 1.0);
        };
        const auto& [ca, cb, cc] = t.colors;
        return RGBDType{mix(ca.r, cb.r, cc.r), mix(ca.g, cb.g, cc.g), mix(ca.b, cb.b, cc.b), ca.a};
    };
    // Ears are cut off: corners that turn left and have no other corner in their triangle.
    const std::size_t first = pieces.size();
    while (outline.size() >= 3) {
        const std::size_t n = outline.size();
        std::size_t ear = 0;
        for (; ear < n; ++ear) {
            const GridPoint& p = outline[(ear + n - 1) % n];
            const GridPoint& q = outline[ear];
            const GridPoint& r = outline[(ear + 1) % n];
            if (Turn(p, q, r) < 0.0) continue;
            const bool empty =
                std::none_of(outline.begin(), outline.end(), [&](const GridPoint& x) {
                    return !(x == p) && !(x == q) && !(x == r) && Turn(p, q, x) >= 0.0 &&
                           Turn(q, r, x) >= 0.0 && Turn(r, p, x) >= 0.0;
                });
            if (!empty) continue;
            if (Turn(p, q, r) > 0.0)
                pieces.push_back({{p, q, r}, {colorAt(p), colorAt(q), colorAt(r)}});
            break;
        }
        if (ear == n) {
            pieces.resize(first);
            return false;
        }
        outline.erase(outline.begin() + static_cast<std::ptrdiff_t>(ear));
    }
    return true;
}

}  // namespace varnel::detail
