// Lines as areas of the screen: a band along a polyline, with joins and ends, or its dashes.
//
// Everything is in pixels from the viewport's lower left corner; depth and colour of what lies
// between two points are interpolated. The pieces are convex and may overlap, all in the line's own
// colour; those of lines that can be seen through lie beside each other, as far as the line has
// room for that at its turns. What lies outside the viewport is left out, so that a line of any
// length costs what can be seen of it.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <span>

#include "varnel/foundation/detail/whole_within.h"
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
    /// Joins are pointed where the point is no farther than that many widths from the inner
    /// corner, and cut off elsewhere, and ends are straight; 0: joins and ends are round.
    double mitre = 0.0;
    bool apart = false;  ///< pieces do not overlap

    bool IsSolid() const { return pattern == 0xFFFFU; }
};

/// Corners of a full circle of a radius in pixels that strays from it by a tenth of a pixel at
/// most; 6..96.
inline int CircleCorners(double radius) {
    constexpr double kStray = 0.1;
    const double step = 2.0 * std::acos(std::max(1.0 - kStray / std::max(radius, kStray), 0.0));
    return WholeWithin(std::ceil(2.0 * std::numbers::pi / step), 6, 96);
}

/// Finds the pieces of one line after the other.
class Stroker {
 public:
    explicit Stroker(const StrokeStyle& style);

    /// Calls emit(const StrokePoint* corners, int n) with each piece of a polyline. A single point
    /// is a dot where ends are round; dashes end straight. The points that change nothing are taken
    /// out of `points`.
    template <class Emit>
    void Walk(std::span<StrokePoint> points, Emit&& emit) const;
    /// The same for the joins alone, of a solid line.
    template <class Emit>
    void WalkJoins(std::span<StrokePoint> points, Emit&& emit) const;

 private:
    struct Direction {
        double x = 1.0, y = 0.0;
    };
    /// How much shorter a band is at its corners, for it ends at a join, pixels.
    struct Trim {
        double left = 0.0, right = 0.0;
    };
    /// One straight part of a line.
    struct Segment {
        const StrokePoint* a;
        const StrokePoint* b;
        double length = 0.0;  ///< pixels
        Direction d;
        Trim atStart{}, atEnd{};
    };
    /// A turn from one direction to another.
    struct Turn {
        Direction in, out;
        double angle = 0.0;  ///< counter-clockwise
        double trim = 0.0;   ///< of the bands on the inner side; 0: they overlap
    };

    /// Leaves the points that change something; how many those are.
    static std::size_t Reduce(std::span<StrokePoint> points);
    /// Whether a point lies straight behind or before the one that comes before it. Of what Reduce
    /// leaves, only inner points do, and never two in a row.
    static bool IsStep(std::span<const StrokePoint> points, std::size_t i);
    /// The point, i or the next one, at whose depth the line goes on behind point i.
    static std::size_t GoesOn(std::span<const StrokePoint> points, std::size_t i);
    static Segment Straight(const StrokePoint& a, const StrokePoint& b);
    Turn TurnBetween(const Segment& in, const Segment& out) const;
    static Trim TrimOf(const Turn& turn);
    /// The part of the way from a to b, 0..1, that is near enough to the viewport to be seen; false
    /// when none is.
    bool SeenPart(const StrokePoint& a, const StrokePoint& b, double& from, double& to) const;
    bool IsSeen(const StrokePoint& p) const;
    double Period() const { return 16.0 * m_Style.bit; }
    bool IsDrawn(double along) const;
    /// Whether the pattern is drawn as far as that to both sides of a place.
    bool ReachesAround(double along, double far) const;
    template <class Emit>
    void Band(const StrokePoint& a, const StrokePoint& b, Direction d, const Trim& atStart,
              const Trim& atEnd, Emit&& emit) const;
    /// The sector about p from the direction `from` on, turned by an angle; its point is `tip`.
    template <class Emit>
    void Sector(const StrokePoint& p, const StrokePoint& tip, Direction from, double angle,
                Emit&& emit) const;
    template <class Emit>
    void Dashes(const Segment& segment, double start, Emit&& emit) const;
    template <class Emit>
    void Join(const StrokePoint& p, const Turn& turn, Emit&& emit) const;

    StrokeStyle m_Style;
    double m_Radius;
    double m_Step;  ///< angle of a corner of a round join
};

/// The point of the way from a to b at t, 0..1.
StrokePoint Between(const StrokePoint& a, const StrokePoint& b, double t);

template <class Emit>
void Stroker::Band(const StrokePoint& a, const StrokePoint& b, Direction d, const Trim& atStart,
                   const Trim& atEnd, Emit&& emit) const {
    const double nx = -d.y * m_Radius;
    const double ny = d.x * m_Radius;
    const auto corner = [&d](const StrokePoint& p, double x, double y, double along) {
        return StrokePoint{p.x + x + d.x * along, p.y + y + d.y * along, p.z, p.color};
    };
    const StrokePoint corners[4] = {
        corner(a, nx, ny, atStart.left), corner(a, -nx, -ny, atStart.right),
        corner(b, -nx, -ny, -atEnd.right), corner(b, nx, ny, -atEnd.left)};
    emit(corners, 4);
}

template <class Emit>
void Stroker::Sector(const StrokePoint& p, const StrokePoint& tip, Direction from, double angle,
                     Emit&& emit) const {
    constexpr int kMost = 98;
    const int steps = WholeWithin(std::ceil(std::fabs(angle) / m_Step), 1, kMost - 2);
    StrokePoint corners[kMost];
    corners[0] = tip;
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
void Stroker::Join(const StrokePoint& p, const Turn& turn, Emit&& emit) const {
    // Gaps that are narrower than this many pixels at the line's border cannot be seen.
    constexpr double kUnseen = 0.02;
    if (std::fabs(turn.angle) * m_Radius < kUnseen && turn.trim == 0.0) return;
    // The gap is on the outer side of the turn.
    const double side = turn.angle > 0.0 ? -1.0 : 1.0;
    const Direction from{-turn.in.y * side, turn.in.x * side};
    const Direction to{-turn.out.y * side, turn.out.x * side};
    StrokePoint tip = p;
    if (turn.trim > 0.0) {
        tip.x -= from.x * m_Radius + turn.in.x * turn.trim;
        tip.y -= from.y * m_Radius + turn.in.y * turn.trim;
    }
    if (!(m_Style.mitre > 0.0)) return Sector(p, tip, from, turn.angle, emit);
    const auto corner = [&](double x, double y) {
        return StrokePoint{p.x + x * m_Radius, p.y + y * m_Radius, p.z, p.color};
    };
    const double half = std::fabs(turn.angle) / 2.0;
    const double reach = std::tan(half);
    const bool pointed = std::cos(half) * m_Style.mitre >= 1.0;
    const StrokePoint corners[4] = {
        tip, corner(from.x, from.y),
        pointed ? corner(from.x + turn.in.x * reach, from.y + turn.in.y * reach)
                : corner(to.x, to.y),
        corner(to.x, to.y)};
    emit(corners, pointed ? 4 : 3);
}

template <class Emit>
void Stroker::Dashes(const Segment& segment, double start, Emit&& emit) const {
    const StrokePoint& a = *segment.a;
    const StrokePoint& b = *segment.b;
    double from = 0.0;
    double to = 1.0;
    if (!SeenPart(a, b, from, to)) return;
    // The joins shorten only what reaches to them.
    const Trim atStart = from > 0.0 ? Trim{} : segment.atStart;
    const Trim atEnd = to < 1.0 ? Trim{} : segment.atEnd;
    const Direction d = segment.d;
    if (m_Style.IsSolid())
        return Band(Between(a, b, from), Between(a, b, to), d, atStart, atEnd, emit);
    // Of a line whose ends are so far off that its places have no pixels any more, all is drawn;
    // and of one with more dashes than can be seen, since they are far below a pixel or the line is
    // far wider than the viewport.
    const double length = segment.length;
    const double seen = (to - from) * length;
    const double view = m_Style.viewWidth + m_Style.viewHeight;
    if (!(seen <= 4.0 * (view + m_Style.width)) || !(seen <= 20.0 * view * m_Style.bit))
        return Band(Between(a, b, from), Between(a, b, to), d, atStart, atEnd, emit);
    const double first = std::fmod(start + from * length, Period());
    const double end = first + seen;
    const auto place = [&](double at) { return Between(a, b, from + (at - first) / length); };
    double at = first;
    for (double bit = std::floor(at / m_Style.bit); at < end;) {
        const bool drawn = IsDrawn((bit + 0.5) * m_Style.bit);
        do
            ++bit;
        while (bit * m_Style.bit < end && IsDrawn((bit + 0.5) * m_Style.bit) == drawn);
        const double until = std::min(bit * m_Style.bit, end);
        if (drawn && until > at)
            Band(place(at), place(until), d, at > first ? Trim{} : atStart,
                 until < end ? Trim{} : atEnd, emit);
        at = until;
    }
}

template <class Emit>
void Stroker::Walk(std::span<StrokePoint> points, Emit&& emit) const {
    if (points.empty() || m_Style.pattern == 0) return;
    points = points.first(Reduce(points));
    const StrokePoint& front = points.front();
    const StrokePoint& back = points.back();
    const std::size_t n = points.size() - 1;  // segments
    const bool capped = m_Style.IsSolid() && !(m_Style.mitre > 0.0);
    if (n == 0) {
        if (!capped || !IsSeen(front)) return;
        Sector(front, front, {0.0, 1.0}, std::numbers::pi, emit);
        return Sector(front, front, {0.0, -1.0}, std::numbers::pi, emit);
    }
    // The ends of a ring are joined, where they would not be round in any case.
    const bool ring = m_Style.IsSolid() && (m_Style.mitre > 0.0 || m_Style.apart) && n > 2 &&
                      front.x == back.x && front.y == back.y;
    Segment segment = Straight(points[0], points[1]);
    Turn closing;
    if (ring) {
        closing = TurnBetween(Straight(points[n - 1], points[n]), segment);
        segment.atStart = TrimOf(closing);
        if (IsSeen(front)) Join(front, closing, emit);
    } else if (capped && IsSeen(front)) {
        Sector(front, front, {-segment.d.y, segment.d.x}, std::numbers::pi, emit);
    }
    double along = 0.0;
    for (std::size_t i = 1; i <= n; ++i) {
        if (i == n) {
            segment.atEnd = TrimOf(closing);
            Dashes(segment, along, emit);
            break;
        }
        i = GoesOn(points, i);
        Segment next = Straight(points[i], points[i + 1]);
        const double until = std::fmod(along + segment.length, Period());
        bool joined = m_Style.IsSolid() || IsDrawn(until);
        Turn turn = joined ? TurnBetween(segment, next) : Turn{};
        if (!m_Style.IsSolid() && !ReachesAround(until, turn.trim)) {
            joined = false;
            turn = {};
        }
        segment.atEnd = next.atStart = TrimOf(turn);
        Dashes(segment, along, emit);
        if (joined && IsSeen(points[i])) Join(points[i], turn, emit);
        along = until;
        segment = next;
    }
    if (capped && !ring && IsSeen(back))
        Sector(back, back, {segment.d.y, -segment.d.x}, std::numbers::pi, emit);
}

template <class Emit>
void Stroker::WalkJoins(std::span<StrokePoint> points, Emit&& emit) const {
    if (points.empty()) return;
    points = points.first(Reduce(points));
    const std::size_t n = points.size() - 1;
    const bool ring =
        n > 2 && points.front().x == points.back().x && points.front().y == points.back().y;
    for (std::size_t i = ring ? 0 : 1; i < n; ++i) {
        const Segment before =
            i > 0 ? Straight(points[i - 1], points[i]) : Straight(points[n - 1], points[n]);
        i = GoesOn(points, i);
        if (IsSeen(points[i]))
            Join(points[i], TurnBetween(before, Straight(points[i], points[i + 1])), emit);
    }
}

}  // namespace varnel::detail
