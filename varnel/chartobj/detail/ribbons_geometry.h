// Ribbons: one tilted quadrilateral per pair of neighbouring points, in working coordinates.
#pragma once

#include <array>
#include <cstddef>

#include "varnel/chartobj/detail/chart_data.h"
#include "varnel/chartobj/detail/extent.h"
#include "varnel/transform/transform.h"

namespace varnel::detail {

/// Calls visit(i, quadrilateral) for the segment that ends at point i; the fifth point closes it.
template <class Visit>
void WalkRibbon(const CTransform3D& t, const Data25D& data, Visit&& visit) {
    const Orientation o{data.indAxis != 0};
    Extent depth = WidthExtent(t, o.DepthAxis(), data.constValue, data.depthOffset, data.depthWidth,
                               data.exact);
    // Unless extents are exact the near edge is converted twice on its way to the far one.
    if (!data.exact) depth.to = t.CVTWS(o.DepthAxis(), depth.to);
    const auto [d0, d1] = depth;
    const std::size_t n = Shortest(data.ind, data.dep);
    for (std::size_t i = 1; i < n; ++i) {
        if (!IsData(data.ind[i - 1]) || !IsData(data.ind[i])) continue;
        if (!IsData(data.dep[i - 1]) || !IsData(data.dep[i])) continue;
        const double u0 = t.CVTWS(o.IndAxis(), data.ind[i - 1]);
        const double u1 = t.CVTWS(o.IndAxis(), data.ind[i]) - data.gap;
        const double z0 = t.CVTWS(2, data.dep[i - 1]);
        const double z1 = t.CVTWS(2, data.dep[i]);
        visit(i, std::array{o.Place(u0, d0, z0), o.Place(u1, d0, z1), o.Place(u1, d1, z1),
                            o.Place(u0, d1, z0), o.Place(u0, d0, z0)});
    }
}

}  // namespace varnel::detail
