#include "varnel/foundation/viewports.h"

namespace varnel {

void AssignViewport(GLViewportType& v, int x, int y, int width, int height) {
    v = {x, y, width, height};
}

void AssignViewR(GLViewRType& v, double x, double y, double width, double height) {
    v = {x, y, width, height};
}

}  // namespace varnel
