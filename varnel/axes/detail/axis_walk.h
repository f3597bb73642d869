// The walks along an axis: the values at which tics, grid lines and labels stand.
//
// Each walk starts at a centre value, goes up, then down, adding its own steps without tolerance.
// It visits nothing for equal or non-finite limits and stops after kMostWalkValues values, so that
// no choice of limits and steps can hang a drawing.
#pragma once

#include <cmath>
#include <initializer_list>

#include "varnel/foundation/detail/less_work.h"

namespace varnel::detail {

inline constexpr int kMostWalkValues = 10000 / kLessWork;

/// Whether there is anything to walk between two limits.
inline bool HasExtent(double min, double max) {
    return std::isfinite(min) && std::isfinite(max) && min != max;
}

/// visit(value, count) for centre, centre + step, .. (count 0, 1, ..) and then for centre - step,
/// centre - 2 step, .. (count 1, 2, ..), each while min <= value <= max. A step of 0 visits
/// nothing.
template <class Visit>
void WalkLinear(double center, double step, double min, double max, Visit&& visit) {
    if (step == 0.0 || !HasExtent(min, max)) return;
    int left = kMostWalkValues;
    int count = 0;
    for (double v = center; min <= v && v <= max && left > 0; v += step, --left)
        visit(v, count++);
    count = 1;
    for (double v = center - step; min <= v && v <= max && left > 0; v -= step, --left)
        visit(v, count++);
}

/// visit(value, isDecade) for the decades of `center` above 0.9 min and below 0.9 max, each
/// followed by its multiples 2..9 inside the limits. The way down goes through the tenths 0.9 ..
/// 0.2 of the centre, turns around at 0.1 and walks up again over the same values.
template <class Visit>
void WalkDecades(double center, double min, double max, Visit&& visit) {
    if (!HasExtent(min, max)) return;
    int left = kMostWalkValues;
    for (const double firstStep : {center, -center / 10.0}) {
        double v = center;
        double step = firstStep;
        while (v < max - max / 10.0 && v > min - min / 10.0 && left > 0) {
            visit(v, true);
            --left;
            for (int i = 0; i < 8; ++i) {
                v += step;
                if (min <= v && v <= max) {
                    visit(v, false);
                    --left;
                }
            }
            v += step;
            step = v;
        }
    }
}

/// visit(value) for labels of a logarithmic axis, from the centre up and from the centre down, each
/// while min <= value <= max: every decade, or 1, 2 and 5 times each decade. The centre is visited
/// on both ways.
template <class Visit>
void WalkLogLabels(double center, double min, double max, bool everyDecade, Visit&& visit) {
    if (!HasExtent(min, max)) return;
    constexpr double kFactors[3] = {2.0, 2.5, 2.0};
    int left = kMostWalkValues;
    for (const bool up : {true, false}) {
        double v = center;
        for (int i = 0; min <= v && v <= max && left > 0; i = (i + 1) % 3, --left) {
            visit(v);
            const double factor = everyDecade ? 10.0 : kFactors[i];
            v = up ? v * factor : v / factor;
        }
    }
}

}  // namespace varnel::detail
