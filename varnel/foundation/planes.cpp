#include "varnel/foundation/planes.h"

namespace varnel {
namespace {

/// For plane k and k + 3: the axes on which a, b and c land.
constexpr int kPlaneAxes[3][3] = {{0, 1, 2}, {0, 2, 1}, {1, 2, 0}};

bool isPlane(int plane) {
    return plane >= 0 && plane <= 5;
}

}  // namespace

void swapcoords(int plane, double a, double b, double c, double& x, double& y, double& z) {
    if (!isPlane(plane)) return;
    double* const out[3] = {&x, &y, &z};
    const int* axes = kPlaneAxes[plane % 3];
    *out[axes[0]] = a;
    *out[axes[1]] = b;
    *out[axes[2]] = c;
}

point3Dtype swapcoords(int plane, const point3Dtype& p) {
    point3Dtype out;
    swapcoords(plane, p.x, p.y, p.z, out.x, out.y, out.z);
    return out;
}

int GetSwapCoordAxis(int plane, int axis) {
    if (plane == 0 || plane == 3) return axis;
    if (!isPlane(plane) || axis < 0 || axis > 2) return 0;
    return kPlaneAxes[plane % 3][axis];
}

int GetNormalAxis(int plane) {
    return isPlane(plane) ? kPlaneAxes[plane % 3][2] : 2;
}

}  // namespace varnel
