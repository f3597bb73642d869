// Polylines: data and transform to vertices in working coordinates.
#pragma once

#include <cstddef>
#include <span>

#include "varnel/chartobj/detail/chart_data.h"
#include "varnel/transform/transform.h"

namespace varnel::detail {

/// Walks n points as polylines, interrupted at points that are no data. `at(i, p)` sets p to point
/// i or returns false; the visitor is called as Start(p), Append(i, p) and End(i, p). A run of one
/// point starts and ends there.
template <class PointAt, class Visitor>
void WalkPolyline(std::size_t n, PointAt&& at, Visitor&& visitor) {
    point3Dtype last;
    std::size_t lastIndex = 0;
    std::size_t run = 0;
    for (std::size_t i = 0; i < n; ++i) {
        point3Dtype p;
        if (!at(i, p)) {
            if (run > 0) visitor.End(lastIndex, last);
            run = 0;
            continue;
        }
        if (run == 0) visitor.Start(p);
        if (run > 1) visitor.Append(lastIndex, last);
        last = p;
        lastIndex = i;
        ++run;
    }
    if (run > 0) visitor.End(lastIndex, last);
}

template <class Visitor>
void WalkLine3D(const CTransform3D& t, std::span<const point3Dtype> points, Visitor&& visitor) {
    const auto at = [&](std::size_t i, point3Dtype& p) {
        p = t.CPTWS(points[i]);
        return IsData(points[i]);
    };
    WalkPolyline(points.size(), at, visitor);
}

template <class Visitor>
void WalkLine25D(const CTransform3D& t, const Data25D& data, Visitor&& visitor) {
    const Orientation o{data.indAxis != 0};
    const auto at = [&](std::size_t i, point3Dtype& p) {
        p = t.CPTWS(o.Place(data.ind[i], data.constValue, data.dep[i]));
        return IsData(data.ind[i]) && IsData(data.dep[i]);
    };
    WalkPolyline(Shortest(data.ind, data.dep), at, visitor);
}

/// The projection onto plane 0 (z), 1 (y) or 2 (x) at `level`; nothing for any other plane.
template <class Visitor>
void WalkProjectedLine(const CTransform3D& t, std::span<const point3Dtype> points, int plane,
                       double level, Visitor&& visitor) {
    if (plane < 0 || plane > 2) return;
    const auto at = [&](std::size_t i, point3Dtype& p) {
        p = points[i];
        coordassign(p, 2 - plane, level);
        p = t.CPTWS(p);
        return IsData(points[i]);
    };
    WalkPolyline(points.size(), at, visitor);
}

/// The line from a world point to its projection onto planes 0 and 3 (z), 1 and 4 (y) or 2 and 5
/// (x) at `level`; false for any other plane.
inline bool ProjectPoint(const CTransform3D& t, const point3Dtype& p, int plane, double level,
                         point3Dtype& from, point3Dtype& to) {
    if (plane < 0 || plane > 5) return false;
    const int axis = 2 - plane % 3;
    from = t.CPTWS(p);
    to = from;
    coordassign(to, axis, t.CVTWS(axis, level));
    return true;
}

}  // namespace varnel::detail
