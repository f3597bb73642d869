// Planes: data and transform to thin slabs, as visit(i, prism) for point i.
#pragma once

#include <cstddef>
#include <span>

#include "varnel/chartobj/detail/chart_data.h"
#include "varnel/chartobj/detail/prism.h"
#include "varnel/transform/transform.h"

namespace varnel::detail {

/// One slab per point, which is its lower corner; 0.1 working units thick whatever the scales are,
/// or a share of the working range of z when extents are exact.
template <class Visit>
void WalkPlanes3D(const CTransform3D& t, std::span<const point3Dtype> points, double indWidth,
                  double depthWidth, double thicknessFactor, bool exact, Visit&& visit) {
    const double thickness = exact ? t.GetWorkingRange().z * thicknessFactor : 0.1;
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (!IsData(points[i])) continue;
        Prism slab = FootInSpace(t, points[i], indWidth, depthWidth, exact);
        slab.z = t.CVTWS(2, points[i].z);
        slab.dz = thickness;
        visit(i, slab);
    }
}

/// One slab per point at the height of its datum, a share of the working range of z thick. Unlike
/// those of bars, the widths are converted by themselves unless extents are exact.
template <class Visit>
void WalkPlanes25D(const CTransform3D& t, const Data25D& data, double thicknessFactor,
                   Visit&& visit) {
    const double dx = t.CVTWS(0, BarExtentX(data));
    const double dy = t.CVTWS(1, BarExtentY(data));
    const double thickness = t.GetWorkingRange().z * thicknessFactor;
    const std::size_t n = Shortest(data.ind, data.dep);
    for (std::size_t i = 0; i < n; ++i) {
        if (!IsData(data.ind[i]) || !IsData(data.dep[i])) continue;
        Prism slab = BarFoot(t, data, data.ind[i]);
        if (!data.exact) {
            slab.dx = dx;
            slab.dy = dy;
        }
        slab.z = t.CVTWS(2, data.dep[i]);
        slab.dz = thickness;
        visit(i, slab);
    }
}

}  // namespace varnel::detail
