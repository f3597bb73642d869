// Where working coordinates are seen while a chart object is drawn.
#pragma once

#include <cmath>

#include "varnel/render/opengl.h"
#include "varnel/surface/detail/contour_labels.h"
#include "varnel/transform/transform.h"

namespace varnel::detail {

/// From working coordinates to pixels, and a step towards the viewer.
class Screen {
 public:
    Screen(COpenGL& gl, const CTransform3D& transform) : m(transform.GetGraphTransform()) {
        gl.GetViewport(m_Viewport);
    }

    double GetWidth() const { return m_Viewport.width; }
    double GetHeight() const { return m_Viewport.height; }

    ScreenPoint Pixel(const point3Dtype& p) const {
        return {(Row(0, p) + m[12] + 1.0) / 2 * m_Viewport.width,
                (Row(1, p) + m[13] + 1.0) / 2 * m_Viewport.height};
    }

    /// In device units, -1 next to the viewer; larger values are farther away.
    double Depth(const point3Dtype& p) const { return Row(2, p) + m[14]; }

    /// The rotation, in whole degrees, of a text that faces the viewer so that it runs at an angle
    /// of degrees on the screen: texts are turned before the picture's proportions stretch them.
    int TextRotation(double angle) const {
        constexpr double kDegrees = 57.29577951308232;
        const double across = std::cos(angle / kDegrees) / m_Viewport.width;
        const double up = std::sin(angle / kDegrees) / m_Viewport.height;
        return static_cast<int>(std::lround(std::atan2(up, across) * kDegrees));
    }

    /// The way in working coordinates that leads `depth` device units straight at the viewer.
    point3Dtype Towards(double depth) const {
        // Where the first two rows of the matrix are 0: along their cross product.
        const point3Dtype way{m[4] * m[9] - m[8] * m[5], m[8] * m[1] - m[0] * m[9],
                              m[0] * m[5] - m[4] * m[1], 0.0};
        const double reach = Row(2, way);
        if (reach == 0.0) return {};
        const double share = -depth / reach;
        return {way.x * share, way.y * share, way.z * share, 0.0};
    }

 private:
    double Row(int k, const point3Dtype& p) const {
        return m[k] * p.x + m[k + 4] * p.y + m[k + 8] * p.z;
    }

    const double* m;
    GLViewportType m_Viewport;
};

}  // namespace varnel::detail
