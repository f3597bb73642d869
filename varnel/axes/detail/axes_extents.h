// What axes draw, in pixels of the viewport from its lower left corner, for layouts that make room
// for it, and the way back from a pixel to where a text object puts its letters.
#pragma once

#include <algorithm>
#include <vector>

#include "varnel/axes/detail/axes_layout.h"

namespace varnel::detail {

/// The planes of the box by their normal axis and end.
inline int PlaneAt(int normal, bool atMax) {
    return 2 - normal + (atMax ? 3 : 0);
}

inline Matrix4 MatrixOf(const double* m) {
    Matrix4 matrix;
    std::copy(m, m + 16, matrix.m.begin());
    return matrix;
}

/// A text that axes draw.
struct AxesText {
    int axis = 0;  ///< 0 x, 1 y, 2 z
    bool isTitle = false;
    CString text;
    PixelBox box;     ///< around it, turned or not
    PixelQuad shape;  ///< itself
};

struct AxesExtents {
    PixelBox bounds;  ///< of all that is drawn: the box, walls, tics and texts
    std::vector<AxesText> texts;
};

/// Where a text object that faces the viewer starts for its letters to begin at a pixel.
struct TextPlace {
    double em = 0.0;   ///< in pixels, of a text of size 1
    Matrix4 toDevice;  ///< of normalized points, a rotation and a shift, before `units`
    point3Dtype units{1.0, 1.0, 1.0, 0.0};  ///< factors to device coordinates, across and up
    double depth = 0.0;  ///< device coordinate of the letters, in front of the box
    double width = 0.0;  ///< of the viewport in pixels
    double height = 0.0;

    point3Dtype Normalized(PixelPoint pixel) const {
        const double shifted[3] = {(2.0 * pixel.x / width - 1.0) / units.x - toDevice.At(0, 3),
                                   (2.0 * pixel.y / height - 1.0) / units.y - toDevice.At(1, 3),
                                   depth - toDevice.At(2, 3)};
        double p[3] = {};
        for (int axis = 0; axis < 3; ++axis)
            for (int row = 0; row < 3; ++row)
                p[axis] += toDevice.At(row, axis) * shifted[row];
        return {p[0], p[1], p[2], 0.0};
    }
};

}  // namespace varnel::detail
