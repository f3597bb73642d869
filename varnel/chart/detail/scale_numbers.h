// The arithmetic of automatic scaling: round limits and tic marks for a range of numbers.
//
// Both work in units of a hundredth of the range's power of ten, counted in integers that truncate
// toward zero. The steps are carried out in double precision one by one, with their rounding
// errors: 7.3 / 0.1 is 73 units, 0.3 / 0.1 only 2.
#pragma once

namespace varnel::detail {

/// The tics of a linear axis.
struct TicMarks {
    double origin = 0.0;  ///< a value on which a major tic falls
    double space = 0.0;   ///< between tics; 0 when the range has none
    int perMajor = 1;     ///< every how many tics a major one falls
    int decimals = 0;     ///< digits after the point that the major tics need
};

/// Widens min..max in place to multiples of a round step, at least one unit above the maximum; with
/// minorOnly non-zero to multiples of the minor step. Equal limits become 0..10 or reach from 0 to
/// twice their value. A range that is backwards or not finite stays as it is. The
/// limits can miss a datum: a range that reaches below 0 is counted from a power of ten below 0,
/// and an extent that is larger than a power of ten by less than 0.0023 % counts as that power, so
/// that -10.0001..0 gives -10..2.
void RoundAxis(double& min, double& max, int minorOnly);

/// Chooses tics for a range; its limits may come in any order. A range that is empty or not
/// finite gets no tics: space 0, origin its minimum (0 when that is not finite).
TicMarks CalcAxisTicMarks(double min, double max);

/// The centre of the tics of an axis: `origin`, moved by whole major intervals when it lies outside
/// min..max, where it would leave the axis without tics. What misses a limit by a rounding error is
/// put on it.
double CenterInside(double min, double max, double origin, double majorSpace);

/// The centre of a logarithmic axis over positive limits: its lowest decade, or its minimum when
/// there is no decade inside.
double LowestDecade(double min, double max);

/// The extremes of the values that are finite; 0 when there is none. The first value is looked at
/// even when n is 0; a null array or a negative n has none.
double MinimumOfData(const double* values, int n);
double MaximumOfData(const double* values, int n);

}  // namespace varnel::detail
