// The one-line frame around a view or a chart.
#pragma once

#include "varnel/render/opengl.h"

namespace varnel::detail {

/// Draws a frame just inside a viewport of width x height pixels, behind everything else. The
/// matrix must be the identity.
inline void DrawViewportBorder(COpenGL& gl, int width, int height, double thickness,
                               const RGBDType& color) {
    constexpr double kInset = 0.999;  // a line on -1 itself would be cut away
    constexpr double kDepth = 0.998;
    const double pixels = thickness * gl.GetLineUnit();
    const double sx = 2.0 / (width - pixels);
    const double sy = 2.0 / (height - pixels);
    const double left = -kInset + sx;
    const double right = kInset - sx;
    const double bottom = -kInset + sy;
    const double top = kInset - sy;
    gl.SetLineWidth3D(thickness);
    gl.SetFillStyle3D(color, color, color);
    const point3Dtype frame[5] = {{left, top, kDepth, 0},
                                  {right, top, kDepth, 0},
                                  {right, bottom, kDepth, 0},
                                  {left, bottom, kDepth, 0},
                                  {left, top, kDepth, 0}};
    gl.Frame3D(frame, 5);
}

}  // namespace varnel::detail
