// Points and vectors: the one record in which every vertex and every stored data point travels.
//
// A point carries a fourth double, w, a value that belongs to the point (colour by value); unless a
// function names w it reads and writes x, y and z only. Axis numbers are 0 = x, 1 = y, 2 = z.
#pragma once

#include <span>

#include "varnel/foundation/export.h"

namespace varnel {

/// A point or vector. The member order is the order in chart files.
struct point3Dtype {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    double w = 0.0;  ///< value carried with the point
};

/// Sets x, y and z, and w to 0.
VARNEL_API void AssignPoint3D(point3Dtype& p, double x, double y, double z);

/// Copies the three coordinates out; none of the pointers may be null.
VARNEL_API void getpoint3D(const point3Dtype& p, double* x, double* y, double* z);

/// Sets the coordinate of `axis`; any axis number outside 0..2 changes nothing.
VARNEL_API void coordassign(point3Dtype& p, int axis, double v);

/// The coordinate of `axis`, 0.0 for any axis number outside 0..2.
VARNEL_API double GetCoord3D(const point3Dtype& p, int axis);

/// r = a - b; r.w is left alone.
VARNEL_API void Sub3DP(point3Dtype& r, const point3Dtype& a, const point3Dtype& b);

/// r = -a; r.w is left alone.
VARNEL_API void NegPoint(point3Dtype& r, const point3Dtype& a);

/// Exchanges the two whole records, w included.
VARNEL_API void swap3Dpoints(point3Dtype& a, point3Dtype& b);

/// The Euclidean distance between a and b.
VARNEL_API double NearPointText(const point3Dtype& a, const point3Dtype& b);

/// n = (p0 - p1) x (p1 - p2), the normal of the plane through three points; its length is not 1
/// and n.w is left alone.
VARNEL_API void CalcNormal(const point3Dtype& p0, const point3Dtype& p1, const point3Dtype& p2,
                           point3Dtype& n);

/// Moves q onto the segment p1-p2. q arrives with its coordinate on the plane's normal axis set (z
/// for planes 0 and 3, y for 1 and 4, x for 2 and 5); the other two coordinates and w are filled by
/// linear interpolation. A segment that is level along the normal axis yields non-finite values;
/// any plane number outside 0..5 changes nothing.
VARNEL_API void interpolatepoint3D(const point3Dtype& p1, const point3Dtype& p2, point3Dtype& q,
                                   int plane);

/// The lower corner of the bounding box of n points, with the w of the first point; for n < 0 or a
/// null array the point (0, 0, 0, 0). The first point is read even when n is 0.
VARNEL_API point3Dtype GetMinimum3D(const point3Dtype* pts, int n);
/// The point (0, 0, 0, 0) when there are no points.
VARNEL_API point3Dtype GetMinimum3D(std::span<const point3Dtype> pts);

/// The upper corner of the bounding box; otherwise as GetMinimum3D.
VARNEL_API point3Dtype GetMaximum3D(const point3Dtype* pts, int n);
VARNEL_API point3Dtype GetMaximum3D(std::span<const point3Dtype> pts);

}  // namespace varnel
