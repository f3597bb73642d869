// Surfaces: the polygons of a mesh in working coordinates, as they are or flattened onto a plane.
#pragma once

#include <cstddef>
#include <span>

#include "varnel/chartobj/detail/chart_data.h"
#include "varnel/surface/polysurface.h"
#include "varnel/transform/transform.h"

namespace varnel::detail {

/// Where a flattened surface lies: plane 0 sets z to the level, 1 y, 2 x; any other flattens
/// nothing.
struct Flattening {
    int plane = -1;
    double level = 0.0;
};

/// Calls visit(points, n, first, second) for each polygon: n points, the last equal to the first,
/// and its two colours. `scratch` has room for GetPSLargestPolygon() + 1 points.
template <class Visit>
void WalkSurface(const CTransform3D& t, const CPolysurface& surface, const Flattening& flat,
                 point3Dtype* scratch, Visit&& visit) {
    for (int k = 0; k < surface.GetPSNumPolygons(); ++k) {
        int corners = 0;
        RGBDType first;
        RGBDType second;
        surface.GetPolysurfacePolygon(k, scratch, corners, first, second);
        if (corners <= 0) continue;
        const std::span<point3Dtype> points(scratch, static_cast<std::size_t>(corners) + 1);
        bool complete = true;
        for (point3Dtype& p : points) {
            complete = complete && IsData(p);
            if (flat.plane >= 0 && flat.plane <= 2) coordassign(p, 2 - flat.plane, flat.level);
        }
        if (!complete) continue;
        t.C3DATWS(scratch, corners + 1);
        visit(scratch, corners + 1, first, second);
    }
}

}  // namespace varnel::detail
