// Points on and beside an axis: what tics, grids and labels share.
#pragma once

#include <cmath>

#include "varnel/foundation/points.h"
#include "varnel/transform/transform.h"

namespace varnel::detail {

/// p = the point of an axis (0 x, 1 y, 2 z) at `value`, i1 and i2 being the two other coordinates
/// in order; p.w becomes 0. Other axis numbers leave p alone.
inline void PointOnAxis(int axis, double value, double i1, double i2, point3Dtype& p) {
    if (axis == 0) AssignPoint3D(p, value, i1, i2);
    if (axis == 1) AssignPoint3D(p, i1, value, i2);
    if (axis == 2) AssignPoint3D(p, i1, i2, value);
}

/// Moves p along a direction: 0..2 towards -x, -y, -z, 3..5 towards +x, +y, +z, others not at all.
inline void MoveAlong(point3Dtype& p, int dir, double distance) {
    if (dir < 0 || dir > 5) return;
    const int axis = dir % 3;
    coordassign(p, axis, GetCoord3D(p, axis) + (dir < 3 ? -distance : distance));
}

/// `fraction` of the working range of the axis along which a direction points.
inline double WorkingDistance(const CTransform3D& transform, int dir, double fraction) {
    return std::abs(transform.GetAxisWorkingRange(dir % 3)) * fraction;
}

}  // namespace varnel::detail
