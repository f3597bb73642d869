// The three axis planes and the permutation that carries in-plane coordinates onto x, y and z.
//
// plane 0, 3: x-y, normal z     (a, b, c) -> x = a, y = b, z = c
// plane 1, 4: x-z, normal y     (a, b, c) -> x = a, z = b, y = c
// plane 2, 5: y-z, normal x     (a, b, c) -> y = a, z = b, x = c
// Planes 0..2 lie at the minimum of their normal axis in a chart's box, planes 3..5 at its maximum.
#pragma once

#include "varnel/foundation/export.h"
#include "varnel/foundation/points.h"

namespace varnel {

/// Writes the in-plane values a, b and the out-of-plane value c to the coordinates they land on;
/// any plane number outside 0..5 writes nothing.
VARNEL_API void swapcoords(int plane, double a, double b, double c, double& x, double& y,
                           double& z);

/// The same permutation of p's x, y, z taken as a, b, c; the result's w is 0. A plane number
/// outside 0..5 yields (0, 0, 0, 0).
VARNEL_API point3Dtype swapcoords(int plane, const point3Dtype& p);

/// The axis on which the value in place `axis` (0 = a, 1 = b, 2 = c) lands. Planes 0 and 3 return
/// `axis` as given, even outside 0..2; otherwise an axis outside 0..2 or a plane outside 0..5
/// yields 0.
VARNEL_API int GetSwapCoordAxis(int plane, int axis);

/// The axis at right angles to the plane; 2 for any plane number outside 0..5.
VARNEL_API int GetNormalAxis(int plane);

}  // namespace varnel
