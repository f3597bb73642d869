// Where widths and values lie along one axis, in working coordinates.
#pragma once

#include <algorithm>

#include "varnel/foundation/points.h"
#include "varnel/transform/transform.h"

namespace varnel::detail {

struct Extent {
    double from;
    double to;
    double Size() const { return to - from; }
};

/// A value in working coordinates; one that has no logarithm lies at the low end of a logarithmic
/// axis.
inline double Convert(const CTransform3D& t, int axis, double v) {
    if (v > 0.0 || t.GetAxisScaleMode(axis) == 0) return t.CVTWS(axis, v);
    point3Dtype min;
    point3Dtype max;
    t.GetWorkingScale(min, max);
    return std::min(GetCoord3D(min, axis), GetCoord3D(max, axis));
}

/// A width that is placed about a value: both ends converted when `exact`, otherwise its start,
/// and the offset and width added as they are.
inline Extent WidthExtent(const CTransform3D& t, int axis, double value, double offset,
                          double width, bool exact) {
    if (exact) return {Convert(t, axis, value + offset), Convert(t, axis, value + offset + width)};
    const double start = t.CVTWS(axis, value) + offset;
    return {start, start + width};
}

/// Values on each other, in data units: the first from the base to itself, every other one from the
/// total below it to its own.
struct Pile {
    double edge;
    double total = 0.0;

    /// Where the next value lies.
    Extent Add(double value) {
        total += value;
        const Extent ends{edge, total};
        edge = total;
        return ends;
    }
};

}  // namespace varnel::detail
