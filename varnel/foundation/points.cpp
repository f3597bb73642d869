#include "varnel/foundation/points.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>

namespace varnel {

void AssignPoint3D(point3Dtype& p, double x, double y, double z) {
    p = {x, y, z, 0.0};
}

void getpoint3D(const point3Dtype& p, double* x, double* y, double* z) {
    *x = p.x;
    *y = p.y;
    *z = p.z;
}

void coordassign(point3Dtype& p, int axis, double v) {
    switch (axis) {
        case 0:
            p.x = v;
            break;
        case 1:
            p.y = v;
            break;
        case 2:
            p.z = v;
            break;
        default:
            break;
    }
}

double GetCoord3D(const point3Dtype& p, int axis) {
    switch (axis) {
        case 0:
            return p.x;
        case 1:
            return p.y;
        case 2:
            return p.z;
        default:
            return 0.0;
    }
}

void Sub3DP(point3Dtype& r, const point3Dtype& a, const point3Dtype& b) {
    r.x = a.x - b.x;
    r.y = a.y - b.y;
    r.z = a.z - b.z;
}

void NegPoint(point3Dtype& r, const point3Dtype& a) {
    r.x = -a.x;
    r.y = -a.y;
    r.z = -a.z;
}

void swap3Dpoints(point3Dtype& a, point3Dtype& b) {
    std::swap(a, b);
}

double NearPointText(const point3Dtype& a, const point3Dtype& b) {
    return std::hypot(b.x - a.x, b.y - a.y, b.z - a.z);
}

void CalcNormal(const point3Dtype& p0, const point3Dtype& p1, const point3Dtype& p2,
                point3Dtype& n) {
    point3Dtype u;
    point3Dtype v;
    Sub3DP(u, p0, p1);
    Sub3DP(v, p1, p2);
    n.x = u.y * v.z - u.z * v.y;
    n.y = u.z * v.x - u.x * v.z;
    n.z = u.x * v.y - u.y * v.x;
}

namespace {

using Member = double point3Dtype::*;

/// Fills the members a, b and w of q at q's coordinate along `normal`. Each product is formed
/// before the division, which fixes the rounding.
void interpolateAlong(const point3Dtype& p1, const point3Dtype& p2, point3Dtype& q, Member normal,
                      Member a, Member b) {
    const double along = q.*normal - p1.*normal;
    const double span = p2.*normal - p1.*normal;
    for (Member m : {a, b, &point3Dtype::w})
        q.*m = p1.*m + along * (p2.*m - p1.*m) / span;
}

}  // namespace

void interpolatepoint3D(const point3Dtype& p1, const point3Dtype& p2, point3Dtype& q, int plane) {
    switch (plane) {
        case 0:
        case 3:
            interpolateAlong(p1, p2, q, &point3Dtype::z, &point3Dtype::x, &point3Dtype::y);
            break;
        case 1:
        case 4:
            interpolateAlong(p1, p2, q, &point3Dtype::y, &point3Dtype::x, &point3Dtype::z);
            break;
        case 2:
        case 5:
            interpolateAlong(p1, p2, q, &point3Dtype::x, &point3Dtype::y, &point3Dtype::z);
            break;
        default:
            break;
    }
}

namespace {

template <class Beats>
point3Dtype boxCorner(std::span<const point3Dtype> pts, Beats beats) {
    if (pts.empty()) return {};
    point3Dtype corner = pts[0];
    for (const point3Dtype& p : pts)
        for (Member m : {&point3Dtype::x, &point3Dtype::y, &point3Dtype::z})
            if (beats(p.*m, corner.*m)) corner.*m = p.*m;
    return corner;
}

// n points, at least one; none without an array or with a negative number.
std::span<const point3Dtype> atLeastOne(const point3Dtype* pts, int n) {
    if (pts == nullptr || n < 0) return {};
    return {pts, static_cast<std::size_t>(std::max(n, 1))};
}

}  // namespace

point3Dtype GetMinimum3D(std::span<const point3Dtype> pts) {
    return boxCorner(pts, std::less<>());
}

point3Dtype GetMaximum3D(std::span<const point3Dtype> pts) {
    return boxCorner(pts, std::greater<>());
}

point3Dtype GetMinimum3D(const point3Dtype* pts, int n) {
    return GetMinimum3D(atLeastOne(pts, n));
}

point3Dtype GetMaximum3D(const point3Dtype* pts, int n) {
    return GetMaximum3D(atLeastOne(pts, n));
}

}  // namespace varnel
