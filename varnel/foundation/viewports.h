// Viewports: a rectangle of the view, in pixels or in fractions of the view's size.
//
// The origin is the lower left corner of the view, as in OpenGL.
#pragma once

#include "varnel/foundation/export.h"

namespace varnel {

/// A viewport in device pixels.
struct GLViewportType {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

/// A viewport in fractions of the view: x and width of its width, y and height of its height.
struct GLViewRType {
    double x = 0.0;
    double y = 0.0;
    double width = 0.0;
    double height = 0.0;
};

VARNEL_API void AssignViewport(GLViewportType& v, int x, int y, int width, int height);
VARNEL_API void AssignViewR(GLViewRType& v, double x, double y, double width, double height);

}  // namespace varnel
