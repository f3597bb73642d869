// Marks beside the data, in working coordinates: error bars, arrows and stretches of walls.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <span>

#include "varnel/chartobj/detail/chart_data.h"
#include "varnel/chartobj/detail/extent.h"
#include "varnel/foundation/planes.h"
#include "varnel/transform/transform.h"

namespace varnel::detail {

inline point3Dtype Moved(const point3Dtype& p, const point3Dtype& way, double share = 1.0) {
    return {p.x + share * way.x, p.y + share * way.y, p.z + share * way.z, 0.0};
}

/// How much of each axis, in working units, is a device unit of the chart's box.
inline point3Dtype DeviceUnit(const CTransform3D& t) {
    const point3Dtype range = t.GetWorkingRange();
    const point3Dtype rect = t.GetDrawnRect();
    return {range.x / (2 * rect.x), range.y / (2 * rect.y), range.z / (2 * rect.z), 0.0};
}

/// For each point with two errors, which are taken without their signs, visit(i, p, q) for the bar
/// along `axis` and a cap at either end, relSize / 10 device units long: along x, or along z for
/// errors along x. Nothing for another axis than 0, 1 and 2.
template <class Visit>
void WalkErrorBars(const CTransform3D& t, std::span<const point3Dtype> points,
                   std::span<const double> below, std::span<const double> above, int axis,
                   double relSize, Visit&& visit) {
    if (axis < 0 || axis > 2) return;
    const int capAxis = axis == 0 ? 2 : 0;
    const double half = GetCoord3D(DeviceUnit(t), capAxis) * relSize / 20;
    const std::size_t n = Shortest(points, below, above);
    for (std::size_t i = 0; i < n; ++i) {
        if (!IsData(points[i]) || !IsData(below[i]) || !IsData(above[i])) continue;
        const double value = GetCoord3D(points[i], axis);
        std::array<point3Dtype, 2> ends = {t.CPTWS(points[i]), t.CPTWS(points[i])};
        coordassign(ends[0], axis, Convert(t, axis, value - std::abs(below[i])));
        coordassign(ends[1], axis, Convert(t, axis, value + std::abs(above[i])));
        visit(i, ends[0], ends[1]);
        for (const point3Dtype& end : ends) {
            point3Dtype left = end;
            point3Dtype right = end;
            coordassign(left, capAxis, GetCoord3D(end, capAxis) - half);
            coordassign(right, capAxis, GetCoord3D(end, capAxis) + half);
            visit(i, left, right);
        }
    }
}

/// An arrow from a point along a vector, both in data values. Its head keeps its shape whatever the
/// axes are.
class Arrow {
 public:
    /// `head` is the length of the head in device units; a shorter arrow is all head.
    Arrow(const CTransform3D& t, const point3Dtype& from, const point3Dtype& vector, double scale,
          double head)
        : m_Unit(DeviceUnit(t)), m_Start(t.CPTWS(from)) {
        for (int axis = 0; axis < 3; ++axis)
            coordassign(
                m_Tip, axis,
                Convert(t, axis, GetCoord3D(from, axis) + scale * GetCoord3D(vector, axis)));
        m_Way = ToDevice({m_Tip.x - m_Start.x, m_Tip.y - m_Start.y, m_Tip.z - m_Start.z, 0.0});
        const double length = std::sqrt(Dot(m_Way, m_Way));
        m_Head = std::min(head, length);
        if (length > 0.0) m_Way = {m_Way.x / length, m_Way.y / length, m_Way.z / length, 0.0};
    }

    const point3Dtype& GetStart() const { return m_Start; }
    /// Where the head begins.
    point3Dtype GetNeck() const { return FromTip(m_Way, -m_Head); }

    /// The head as a cone a third as thick as it is long, polygon by polygon, closed, each running
    /// so that CalcNormal of its first three points points outward.
    template <class Visit>
    void WalkCone(Visit&& visit) const {
        if (m_Head <= 0.0) return;
        constexpr int kSides = 12;
        const point3Dtype u = Across({m_Way.y, m_Way.z, m_Way.x, 0.0});
        const point3Dtype v = Cross(m_Way, u);
        const point3Dtype neck = GetNeck();
        const point3Dtype inside = FromTip(m_Way, -0.7 * m_Head);
        std::array<point3Dtype, kSides + 1> base;
        for (int k = 0; k <= kSides; ++k) {
            const double angle = 2 * 3.14159265358979323846 * (k % kSides) / kSides;
            const double radius = m_Head / 6;
            base[static_cast<std::size_t>(k)] =
                Moved(Moved(neck, ToWorking(u), radius * std::cos(angle)), ToWorking(v),
                      radius * std::sin(angle));
        }
        for (std::size_t k = 0; k < kSides; ++k)
            Outward(std::array{m_Tip, base[k], base[k + 1], m_Tip}, inside, visit);
        Outward(base, inside, visit);
    }

    /// The head as a triangle that is seen from `viewer`, a way in working coordinates.
    template <class Visit>
    void WalkFlatHead(const point3Dtype& viewer, Visit&& visit) const {
        if (m_Head <= 0.0) return;
        const point3Dtype side = ToWorking(Across(Cross(m_Way, ToDevice(viewer))));
        const point3Dtype neck = GetNeck();
        Outward(
            std::array{m_Tip, Moved(neck, side, m_Head / 6), Moved(neck, side, -m_Head / 6), m_Tip},
            Moved(neck, viewer, -1.0), visit);
    }

 private:
    static double Dot(const point3Dtype& a, const point3Dtype& b) {
        return a.x * b.x + a.y * b.y + a.z * b.z;
    }
    static point3Dtype Cross(const point3Dtype& a, const point3Dtype& b) {
        return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x, 0.0};
    }
    point3Dtype ToDevice(const point3Dtype& w) const {
        return {w.x / m_Unit.x, w.y / m_Unit.y, w.z / m_Unit.z, 0.0};
    }
    point3Dtype ToWorking(const point3Dtype& d) const {
        return {d.x * m_Unit.x, d.y * m_Unit.y, d.z * m_Unit.z, 0.0};
    }
    point3Dtype FromTip(const point3Dtype& way, double length) const {
        return Moved(m_Tip, ToWorking(way), length);
    }
    /// The part of a direction across the arrow, of length 1; another one where there is none.
    point3Dtype Across(const point3Dtype& d) const {
        for (const point3Dtype& way : {d, point3Dtype{1, 0, 0, 0}, point3Dtype{0, 1, 0, 0}}) {
            const double along = Dot(way, m_Way);
            const point3Dtype across{way.x - along * m_Way.x, way.y - along * m_Way.y,
                                     way.z - along * m_Way.z, 0.0};
            const double length = std::sqrt(Dot(across, across));
            if (length > 1e-6)
                return {across.x / length, across.y / length, across.z / length, 0.0};
        }
        return {0.0, 0.0, 1.0, 0.0};
    }
    /// A closed ring, turned round where its normal points at `inside`.
    template <std::size_t N, class Visit>
    static void Outward(std::array<point3Dtype, N> ring, const point3Dtype& inside, Visit&& visit) {
        point3Dtype normal;
        CalcNormal(ring[0], ring[1], ring[2], normal);
        if (Dot(normal, Moved(ring[0], inside, -1.0)) < 0.0) std::reverse(ring.begin(), ring.end());
        visit(std::span<const point3Dtype>(ring));
    }

    point3Dtype m_Unit;
    point3Dtype m_Start;
    point3Dtype m_Tip;
    point3Dtype m_Way;  ///< of length 1, in device units
    double m_Head;
};

/// A stretch of a wall of the box: corners 0 and 1 at the first value, 2 and 3 at the second.
struct WallBand {
    std::array<point3Dtype, 4> corners;
};

/// The stretch of wall `plane` (0..2 at the minimum of z, y, x, 3..5 at the maximum) between two
/// values of `axis`, as far as it lies inside the box. False when nothing of it does, when the wall
/// does not run along the axis, or for a plane or an axis that is none.
inline bool FindWallBand(const CTransform3D& t, int axis, double from, double to, int plane,
                         WallBand& band) {
    if (plane < 0 || plane > 5 || axis < 0 || axis > 2) return false;
    const int normal = GetNormalAxis(plane);
    if (normal == axis) return false;
    const int free = 3 - normal - axis;
    point3Dtype min;
    point3Dtype max;
    t.GetWorkingScale(min, max);
    const double low = std::min(GetCoord3D(min, axis), GetCoord3D(max, axis));
    const double high = std::max(GetCoord3D(min, axis), GetCoord3D(max, axis));
    double a = Convert(t, axis, std::min(from, to));
    double b = Convert(t, axis, std::max(from, to));
    if (!(a <= high && b >= low)) return false;
    a = std::max(a, low);
    b = std::min(b, high);
    for (std::size_t k = 0; k < 4; ++k) {
        point3Dtype& corner = band.corners[k];
        coordassign(corner, normal, GetCoord3D(plane < 3 ? min : max, normal));
        coordassign(corner, axis, k < 2 ? a : b);
        coordassign(corner, free, GetCoord3D(k == 0 || k == 3 ? min : max, free));
    }
    return true;
}

}  // namespace varnel::detail
