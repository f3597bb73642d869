// Upright boxes of bar, plane, price and box charts, in working coordinates.
#pragma once

#include "varnel/chartobj/detail/chart_data.h"
#include "varnel/chartobj/detail/extent.h"
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

/// The extent of a 2.5D chart's bar along x and y, not converted; an axis code other than 0 and 1
/// gives both the depth width.
inline double BarExtentX(const Data25D& data) {
    return data.indAxis != 0 ? data.depthWidth : data.indWidth;
}
inline double BarExtentY(const Data25D& data) {
    return data.indAxis == 1 ? data.indWidth : data.depthWidth;
}

/// The foot of a 2.5D chart's bar or slab at an independent value, at height 0.
inline Prism BarFoot(const CTransform3D& t, const Data25D& data, double ind) {
    const Orientation o{data.indAxis == 1};
    const Extent u = WidthExtent(t, o.IndAxis(), ind, data.indOffset, data.indWidth, data.exact);
    const Extent d = WidthExtent(t, o.DepthAxis(), data.constValue, data.depthOffset,
                                 data.depthWidth, data.exact);
    const point3Dtype corner = o.Place(u.from, d.from, 0.0);
    if (!data.exact) return {corner.x, corner.y, 0.0, BarExtentX(data), BarExtentY(data), 0.0};
    const point3Dtype extent = o.Place(u.Size(), d.Size(), 0.0);
    return {corner.x, corner.y, 0.0, extent.x, extent.y, 0.0};
}

/// The foot of a bar or slab in space, whose point is its corner.
inline Prism FootInSpace(const CTransform3D& t, const point3Dtype& p, double indWidth,
                         double depthWidth, bool exact) {
    if (!exact)
        return {t.CVTWS(0, p.x),      t.CVTWS(1, p.y),        0.0,
                t.CVTWS(0, indWidth), t.CVTWS(1, depthWidth), 0.0};
    const Extent x = WidthExtent(t, 0, p.x, 0.0, indWidth, true);
    const Extent y = WidthExtent(t, 1, p.y, 0.0, depthWidth, true);
    return {x.from, y.from, 0.0, x.Size(), y.Size(), 0.0};
}

inline void SetHeight(Prism& prism, double from, double to) {
    prism.z = from;
    prism.dz = to - from;
}

}  // namespace varnel::detail
