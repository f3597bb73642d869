// Upright boxes of bar, plane, price and box charts, in working coordinates.
#pragma once

#include "varnel/chartobj/detail/chart_data.h"
#include "varnel/render/opengl.h"
#include "varnel/transform/transform.h"

namespace varnel::detail {

/// A corner and three extents, which may be negative.
struct Prism {
    double x, y, z;
    double dx, dy, dz;
};

inline void Draw(COpenGL& gl, const Prism& p, const RGBDType& fill, const RGBDType& frame) {
    gl.DrawPrism3D(p.x, p.y, p.z, p.dx, p.dy, p.dz, fill, frame);
}

/// The corner of a 2.5D chart's bar or slab at an independent value, at height 0.
inline point3Dtype BarCorner(const CTransform3D& t, const Data25D& data, double ind) {
    const Orientation o{data.indAxis == 1};
    return o.Place(t.CVTWS(o.IndAxis(), ind) + data.indOffset,
                   t.CVTWS(o.DepthAxis(), data.constValue) + data.depthOffset, 0.0);
}

/// The extent of such a bar along x and y; an axis code other than 0 and 1 gives both the depth
/// width.
inline double BarExtentX(const Data25D& data) {
    return data.indAxis != 0 ? data.depthWidth : data.indWidth;
}
inline double BarExtentY(const Data25D& data) {
    return data.indAxis == 1 ? data.indWidth : data.depthWidth;
}

}  // namespace varnel::detail
