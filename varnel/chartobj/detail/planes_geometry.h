// Planes: data and transform to thin slabs, as visit(i, prism) for point i.
#pragma once

#include <cstddef>
#include <span>

#include "varnel/chartobj/detail/chart_data.h"
#include "varnel/chartobj/detail/prism.h"
#include "varnel/transform/transform.h"

namespace varnel::detail {

/// One slab per point, which is its lower corner; 0.1 working units thick whatever the scales are.
template <class Visit>
void WalkPlanes3D(const CTransform3D& t, std::span<const point3Dtype> points, double indWidth,
                  double depthWidth, Visit&& visit) {
    const double dx = t.CVTWS(0, indWidth);
    const double dy = t.CVTWS(1, depthWidth);
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (!IsData(points[i])) continue;
        const point3Dtype w = t.CPTWS(points[i]);
        visit(i, Prism{w.x, w.y, w.z, dx, dy, 0.1});
    }
}

/// One slab per point at the height of its datum, a share of the working range of z thick. Unlike
/// those of bars, the widths are converted.
template <class Visit>
void WalkPlanes25D(const CTransform3D& t, const Data25D& data, double thicknessFactor,
                   Visit&& visit) {
    const double dx = t.CVTWS(0, BarExtentX(data));
    const double dy = t.CVTWS(1, BarExtentY(data));
    const double thickness = t.GetWorkingRange().z * thicknessFactor;
    const std::size_t n = Shortest(data.ind, data.dep);
    for (std::size_t i = 0; i < n; ++i) {
        if (!IsData(data.ind[i]) || !IsData(data.dep[i])) continue;
        const point3Dtype corner = BarCorner(t, data, data.ind[i]);
        visit(i, Prism{corner.x, corner.y, t.CVTWS(2, data.dep[i]), dx, dy, thickness});
    }
}

}  // namespace varnel::detail
