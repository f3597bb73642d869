// Lines as areas of the screen: a band along a polyline, with round joins and ends, or its dashes.
//
// Everything is in pixels from the viewport's lower left corner; depth and colour of what lies
// between two points are interpolated. The pieces are convex and may overlap, all in the line's own
// colour. What lies outside the viewport is left out, so that a line of any length costs what can
// be seen of it.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <span>

#include "varnel/render/detail/primitive_batch.h"

namespace varnel::detail {

struct StrokePoint {
    double x, y;  ///< pixels
    double z;     ///< depth, device units
    PackedColor color;
};

struct StrokeStyle {
    double width = 1.0;                ///< pixels, above 0
    double bit = 1.0;                  ///< length of each bit of the pattern, pixels, above 0
    unsigned short pattern = 0xFFFFU;  ///< the lowest bit first; a bit that is set is drawn
    double viewWidth = 0.0;            ///< of the viewport, pixels
    double viewHeight = 0.0;

    bool IsSolid() const { return pattern == 0xFFFFU; }
};

/// Corners of a full circle of a radius in pixels that strays from it by a tenth of a pixel at
/// most; 6..96.
inline int CircleCorners(double radius) {
    constexpr double kStray = 0.1;
    const double step = 2.0 * std::acos(std::max(1.0 - kStray / std::max(radius, kStray), 0.0));
    return static_cast<int>(std::clamp(std::ceil(2.0 * std::numbers::pi / step), 6.0, 96.0));
}

/// Finds the pieces of one line after the other.
class Stroker {
 public:
    explicit Stroker(const StrokeStyle& style);

    /// Calls emit(const StrokePoint* corners, int n) with each piece of a polyline. Solid lines end
    /// in half circles, and a single point is a dot; dashes end straight.
    template <class Emit>
    void Walk(std::span<const StrokePoint> points, Emit&& emit) const;

 private:
    struct Direction {
        double x, y;
    };

    /// The part of the way from a to b, 0..1, that is near enough to the viewport to be seen; false
    /// when none is.
    bool SeenPart(const StrokePoint& a, const StrokePoint& b, double& from, double& to) const;
    double Period() const { return 16.0 * m_Style.bit; }
    bool IsDrawn(double along) const;
    template <class Emit>
    void Band(const StrokePoint& a, const StrokePoint& b, Direction d, Emit&& emit) const;
    /// The sector about p from the direction `from` on, turned by an angle.
    template <class Emit>
    void Sector(const StrokePoint& p, Direction from, double angle, Emit&& emit) const;
    template <class Emit>
    void Dashes(const StrokePoint& a, const StrokePoint& b, double start, double length,
                Direction d, Emit&& emit) const;
    template <class Emit>
    void Join(const StrokePoint& p, Direction in, Direction out, Emit&& emit) const;

    StrokeStyle m_Style;
    double m_Radius;
    double m_Step;  ///< angle of a corner of a round join
};

/// The point of the way from a to b at t, 0..1.
StrokePoint Between(const StrokePoint& a, const StrokePoint& b, double t);

template <class Emit>
void Stroker::Band(const StrokePoint& a, const StrokePoint& b, Direction d, Emit&& emit) const {
    const double nx = -d.y * m_Radius;
    const double ny = d.x * m_Radius;
    const StrokePoint corners[4] = {{a.x + nx, a.y + ny, a.z, a.color},
                                    {a.x - nx, a.y - ny, a.z, a.color},
                                    {b.x - nx, b.y - ny, b.z, b.color},
                                    {b.x + nx, b.y + ny, b.z, b.color}};
    emit(corners, 4);
}

template <class Emit>
void Stroker::Sector(const StrokePoint& p, Direction from, double angle, Emit&& emit) const {
    constexpr int kMost = 98;
    const int steps =
        std::clamp(static_cast<int>(std::ceil(std::fabs(angle) / m_Step)), 1, kMost - 2);
    StrokePoint corners[kMost];
    corners[0] = p;
    for (int i = 0; i <= steps; ++i) {
        const double turn = angle * i / steps;
        const double c = std::cos(turn) * m_Radius;
        const double s = std::sin(turn) * m_Radius;
        corners[i + 1] = {p.x + c * from.x - s * from.y, p.y + s * from.x + c * from.y, p.z,
                          p.color};
    }
    emit(corners, steps + 2);
}

template <class Emit>
void Stroker::Join(const StrokePoint& p, Direction in, Direction out, Emit&& emit) const {
    // Gaps that are narrower than this many pixels at the line's border cannot be seen.
    constexpr double kUnseen = 0.02;
    const double angle = std::atan2(in.x * out.y - in.y * out.x, in.x * out.x + in.y * out.y);
    if (std::fabs(angle) * m_Radius < kUnseen) return;
    // The gap is on the outer side of the turn.
    const double side = angle > 0.0 ? -1.0 : 1.0;
    Sector(p, {-in.y * side, in.x * side}, angle, emit);
}

template <class Emit>
void Stroker::Dashes(const StrokePoint& a, const StrokePoint& b, double start, double length,
                     Direction d, Emit&& emit) const {
    double from = 0.0;
    double to = 1.0;
    if (!SeenPart(a, b, from, to)) return;
    if (m_Style.IsSolid()) return Band(Between(a, b, from), Between(a, b, to), d, emit);
    // Of a line whose ends are so far off that its places have no pixels any more, all is drawn.
    const double seen = (to - from) * length;
    if (!(seen <= 4.0 * (m_Style.viewWidth + m_Style.viewHeight + m_Style.width)))
        return Band(Between(a, b, from), Between(a, b, to), d, emit);
    const double first = std::fmod(start + from * length, Period());
    const auto place = [&](double at) { return Between(a, b, from + (at - first) / length); };
    double at = first;
    for (double bit = std::floor(at / m_Style.bit); at < first + seen;) {
        const bool drawn = IsDrawn((bit + 0.5) * m_Style.bit);
        do
            ++bit;
        while (bit * m_Style.bit < first + seen && IsDrawn((bit + 0.5) * m_Style.bit) == drawn);
        const double until = std::min(bit * m_Style.bit, first + seen);
        if (drawn && until > at) Band(place(at), place(until), d, emit);
        at = until;
    }
}

template <class Emit>
void Stroker::Walk(std::span<const StrokePoint> points, Emit&& emit) const {
    // Points closer to the one before, in pixels and in depth, change nothing that can be seen.
    constexpr double kSame = 0.05;
    constexpr double kSameDepth = 1e-3;
    if (points.empty() || m_Style.pattern == 0) return;
    const StrokePoint* last = &points.front();
    const bool solid = m_Style.IsSolid();
    Direction before{1.0, 0.0};
    double along = 0.0;
    bool moved = false;
    for (std::size_t i = 1; i < points.size(); ++i) {
        const StrokePoint& p = points[i];
        const double dx = p.x - last->x;
        const double dy = p.y - last->y;
        const double length = std::hypot(dx, dy);
        const bool isLast = i + 1 == points.size();
        // Straight away from the viewer: the line goes on at the other depth.
        if (length == 0.0 && p.color == last->color) {
            last = &p;
            continue;
        }
        if (!(length > 0.0) || !std::isfinite(length) ||
            (length < kSame && !isLast && std::fabs(p.z - last->z) < kSameDepth &&
             p.color == last->color))
            continue;
        const Direction d{dx / length, dy / length};
        double from = 0.0;
        double to = 1.0;
        if (SeenPart(*last, *last, from, to)) {
            if (!moved && solid)
                Sector(*last, {-d.y, d.x}, std::numbers::pi, emit);
            else if (moved && IsDrawn(along))
                Join(*last, before, d, emit);
        }
        Dashes(*last, p, along, length, d, emit);
        along = std::fmod(along + length, Period());
        before = d;
        last = &p;
        moved = true;
    }
    double from = 0.0;
    double to = 1.0;
    if (!solid || !SeenPart(*last, *last, from, to)) return;
    Sector(*last, {before.y, -before.x}, std::numbers::pi, emit);
    if (!moved) Sector(*last, {-before.y, before.x}, std::numbers::pi, emit);
}

}  // namespace varnel::detail
