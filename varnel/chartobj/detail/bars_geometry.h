// Bars: data and transform to prisms. Visitors are called as visit(i, prism) for point i, or
// visit(i, g, prism) for point i of group g.
#pragma once

#include <cmath>
#include <cstddef>
#include <span>

#include "varnel/chartobj/detail/chart_data.h"
#include "varnel/chartobj/detail/extent.h"
#include "varnel/chartobj/detail/prism.h"
#include "varnel/transform/transform.h"

namespace varnel::detail {

/// One bar per point: the point is its upper corner, heights[i] the level of its foot, 0 where none
/// are stored.
template <class Visit>
void WalkBars3D(const CTransform3D& t, std::span<const point3Dtype> points,
                std::span<const double> heights, double indWidth, double depthWidth, bool exact,
                Visit&& visit) {
    for (std::size_t i = 0; i < points.size(); ++i) {
        const double height = i < heights.size() ? heights[i] : 0.0;
        if (!IsData(points[i]) || !IsData(height)) continue;
        Prism bar = FootInSpace(t, points[i], indWidth, depthWidth, exact);
        if (exact)
            SetHeight(bar, Convert(t, 2, height), Convert(t, 2, points[i].z));
        else
            SetHeight(bar, t.CVTWS(2, height), t.CVTWS(2, points[i].z));
        visit(i, bar);
    }
}

/// From the base value to the datum. Unless extents are exact the difference of the two is
/// converted, not its ends.
template <class Visit>
void WalkBars25D(const CTransform3D& t, const Data25D& data, Visit&& visit) {
    const double foot = data.exact ? Convert(t, 2, data.baseValue) : t.CVTWS(2, data.baseValue);
    const std::size_t n = Shortest(data.ind, data.dep);
    for (std::size_t i = 0; i < n; ++i) {
        if (!IsData(data.ind[i]) || !IsData(data.dep[i])) continue;
        Prism bar = BarFoot(t, data, data.ind[i]);
        bar.z = foot;
        bar.dz = data.exact ? Convert(t, 2, data.dep[i]) - foot
                            : t.CVTWS(2, data.dep[i] - data.baseValue);
        visit(i, bar);
    }
}

/// From the datum downward by the height, whose conversion is taken off unless extents are exact.
template <class Visit>
void WalkFloatingBars(const CTransform3D& t, const Data25D& data, Visit&& visit) {
    const std::size_t n = Shortest(data.ind, data.dep, data.heights);
    for (std::size_t i = 0; i < n; ++i) {
        const double top = data.dep[i];
        const double height = data.heights[i];
        if (!IsData(data.ind[i]) || !IsData(top) || !IsData(height)) continue;
        Prism bar = BarFoot(t, data, data.ind[i]);
        if (data.exact) {
            SetHeight(bar, Convert(t, 2, top - height), Convert(t, 2, top));
        } else {
            bar.dz = t.CVTWS(2, height);
            bar.z = t.CVTWS(2, top) - bar.dz;
        }
        visit(i, bar);
    }
}

/// The foot of a bar that spans `width` from an independent value on; both ends of it and of the
/// depth are converted, and the extents are their distances.
inline Prism GroupBarFoot(const CTransform3D& t, const Data25D& data, double ind, double width) {
    const Orientation o{data.indAxis == 1};
    const auto ends = [&](int axis, double value, double offset, double extent) {
        if (data.exact) return WidthExtent(t, axis, value, offset, extent, true);
        return Extent{t.CVTWS(axis, value) + offset, t.CVTWS(axis, value + extent) + offset};
    };
    const Extent u = ends(o.IndAxis(), ind, data.indOffset, width);
    const Extent d = ends(o.DepthAxis(), data.constValue, data.depthOffset, data.depthWidth);
    const point3Dtype corner = o.Place(u.from, d.from, 0.0);
    const point3Dtype extent = o.Place(std::abs(u.Size()), std::abs(d.Size()), 0.0);
    return {corner.x, corner.y, 0.0, extent.x, extent.y, 0.0};
}

/// The groups of a point share the width of one bar; each rises from the base by its absolute
/// value, or goes from the base to its value when extents are exact.
template <class Visit>
void WalkBarsSideBySide(const CTransform3D& t, const Data25D& data, Visit&& visit) {
    const double width = data.indWidth / data.groups.numGroups;
    const double foot = data.exact ? Convert(t, 2, data.baseValue) : t.CVTWS(2, data.baseValue);
    const std::size_t numGroups = data.groups.StoredGroups();
    for (std::size_t i = 0; i < data.ind.size(); ++i) {
        if (!IsData(data.ind[i])) continue;
        for (std::size_t g = 0; g < numGroups; ++g) {
            const double datum = data.groups.At(g, i);
            if (!IsData(datum)) continue;
            const double start = data.ind[i] + static_cast<double>(g) * width;
            Prism bar = GroupBarFoot(t, data, start, width);
            bar.z = foot;
            bar.dz = data.exact ? Convert(t, 2, datum) - foot : std::abs(t.CVTWS(2, datum));
            visit(i, g, bar);
        }
    }
}

/// The groups of a point are piled up from 0; a negative datum lowers the running total, and its
/// bar stands on the total that it started from. When extents are exact there are two piles, of
/// what is positive upward and of what is negative downward, and the first bar of each goes from
/// the base to its value.
template <class Visit>
void WalkStackedBars(const CTransform3D& t, const Data25D& data, Visit&& visit) {
    const std::size_t numGroups = data.groups.StoredGroups();
    for (std::size_t i = 0; i < data.ind.size(); ++i) {
        if (!IsData(data.ind[i])) continue;
        Prism bar = GroupBarFoot(t, data, data.ind[i], data.indWidth);
        double total = 0.0;
        Pile up{data.baseValue};
        Pile down{data.baseValue};
        for (std::size_t g = 0; g < numGroups; ++g) {
            const double datum = data.groups.At(g, i);
            if (!IsData(datum)) continue;
            if (data.exact) {
                const Extent ends = (datum < 0.0 ? down : up).Add(datum);
                SetHeight(bar, Convert(t, 2, ends.from), Convert(t, 2, ends.to));
                // The lid of a part of nothing would colour the one below.
                if (bar.dz == 0.0) continue;
            } else {
                bar.z = t.CVTWS(2, total);
                total += datum;
                bar.dz = std::abs(t.CVTWS(2, total) - bar.z);
            }
            visit(i, g, bar);
        }
    }
}

}  // namespace varnel::detail
