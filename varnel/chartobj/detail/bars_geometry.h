// Bars: data and transform to prisms. Visitors are called as visit(i, prism) for point i, or
// visit(i, g, prism) for point i of group g.
#pragma once

#include <cmath>
#include <cstddef>
#include <span>

#include "varnel/chartobj/detail/chart_data.h"
#include "varnel/chartobj/detail/prism.h"
#include "varnel/transform/transform.h"

namespace varnel::detail {

/// One bar per point: the point is its upper corner, heights[i] the level of its foot, 0 where none
/// are stored.
template <class Visit>
void WalkBars3D(const CTransform3D& t, std::span<const point3Dtype> points,
                std::span<const double> heights, double indWidth, double depthWidth,
                Visit&& visit) {
    const double dx = t.CVTWS(0, indWidth);
    const double dy = t.CVTWS(1, depthWidth);
    for (std::size_t i = 0; i < points.size(); ++i) {
        const double height = i < heights.size() ? heights[i] : 0.0;
        if (!IsData(points[i]) || !IsData(height)) continue;
        const double foot = t.CVTWS(2, height);
        const point3Dtype w = t.CPTWS(points[i]);
        visit(i, Prism{w.x, w.y, foot, dx, dy, w.z - foot});
    }
}

/// From the base value to the datum; the difference of the two is converted, not its ends.
template <class Visit>
void WalkBars25D(const CTransform3D& t, const Data25D& data, Visit&& visit) {
    const double foot = t.CVTWS(2, data.baseValue);
    const double dx = BarExtentX(data);
    const double dy = BarExtentY(data);
    const std::size_t n = Shortest(data.ind, data.dep);
    for (std::size_t i = 0; i < n; ++i) {
        if (!IsData(data.ind[i]) || !IsData(data.dep[i])) continue;
        const point3Dtype corner = BarCorner(t, data, data.ind[i]);
        const double height = t.CVTWS(2, data.dep[i] - data.baseValue);
        visit(i, Prism{corner.x, corner.y, foot, dx, dy, height});
    }
}

/// From the datum downward by the height.
template <class Visit>
void WalkFloatingBars(const CTransform3D& t, const Data25D& data, Visit&& visit) {
    const double dx = BarExtentX(data);
    const double dy = BarExtentY(data);
    const std::size_t n = Shortest(data.ind, data.dep, data.heights);
    for (std::size_t i = 0; i < n; ++i) {
        if (!IsData(data.ind[i]) || !IsData(data.dep[i]) || !IsData(data.heights[i])) continue;
        const point3Dtype corner = BarCorner(t, data, data.ind[i]);
        const double height = t.CVTWS(2, data.heights[i]);
        const double top = t.CVTWS(2, data.dep[i]);
        visit(i, Prism{corner.x, corner.y, top - height, dx, dy, height});
    }
}

/// The foot of a bar that spans `width` from an independent value on; both ends of it and of the
/// depth are converted, and the extents are their distances.
inline Prism GroupBarFoot(const CTransform3D& t, const Data25D& data, double ind, double width) {
    const Orientation o{data.indAxis == 1};
    const double u0 = t.CVTWS(o.IndAxis(), ind) + data.indOffset;
    const double u1 = t.CVTWS(o.IndAxis(), ind + width) + data.indOffset;
    const double d0 = t.CVTWS(o.DepthAxis(), data.constValue) + data.depthOffset;
    const double d1 = t.CVTWS(o.DepthAxis(), data.constValue + data.depthWidth) + data.depthOffset;
    const point3Dtype corner = o.Place(u0, d0, 0.0);
    const point3Dtype extent = o.Place(std::abs(u1 - u0), std::abs(d1 - d0), 0.0);
    return {corner.x, corner.y, 0.0, extent.x, extent.y, 0.0};
}

/// The groups of a point share the width of one bar; each rises from the base by its absolute
/// value.
template <class Visit>
void WalkBarsSideBySide(const CTransform3D& t, const Data25D& data, Visit&& visit) {
    const double width = data.indWidth / data.groups.numGroups;
    const double foot = t.CVTWS(2, data.baseValue);
    const std::size_t numGroups = data.groups.StoredGroups();
    for (std::size_t i = 0; i < data.ind.size(); ++i) {
        if (!IsData(data.ind[i])) continue;
        for (std::size_t g = 0; g < numGroups; ++g) {
            const double datum = data.groups.At(g, i);
            if (!IsData(datum)) continue;
            const double start = data.ind[i] + static_cast<double>(g) * width;
            Prism bar = GroupBarFoot(t, data, start, width);
            bar.z = foot;
            bar.dz = std::abs(t.CVTWS(2, datum));
            visit(i, g, bar);
        }
    }
}

/// The groups of a point are piled up from 0; a negative datum lowers the running total, and its
/// bar stands on the total that it started from.
template <class Visit>
void WalkStackedBars(const CTransform3D& t, const Data25D& data, Visit&& visit) {
    const std::size_t numGroups = data.groups.StoredGroups();
    for (std::size_t i = 0; i < data.ind.size(); ++i) {
        if (!IsData(data.ind[i])) continue;
        Prism bar = GroupBarFoot(t, data, data.ind[i], data.indWidth);
        double total = 0.0;
        for (std::size_t g = 0; g < numGroups; ++g) {
            const double datum = data.groups.At(g, i);
            if (!IsData(datum)) continue;
            bar.z = t.CVTWS(2, total);
            total += datum;
            bar.dz = std::abs(t.CVTWS(2, total) - bar.z);
            visit(i, g, bar);
        }
    }
}

}  // namespace varnel::detail
