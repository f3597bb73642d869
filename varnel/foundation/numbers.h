// Small operations on numbers: the guarded logarithm behind every logarithmic scale, nearness,
// exchange, and the extremes of an array.
#pragma once

#include <span>

#include "varnel/foundation/export.h"

namespace varnel {

/// The guarded base-10 logarithm. Values at or below 0 give 0. Values in (0, 1e-30] give 1e-30 and
/// values above 1e30 give 1e30: the clamps themselves, not their logarithms. NaN gives NaN.
VARNEL_API double log10Ex(double v);

/// 10 raised to v.
VARNEL_API double Antilog10Ex(double v);

/// Antilog10Ex(log10Ex(v)): v itself inside (1e-30, 1e30], 1 for values at or below 0.
VARNEL_API double AntilogLog10Ex(double v);

/// 1 when a and b differ by no more than tol (the bound counts as near), else 0.
VARNEL_API int NearTest(double a, double b, double tol);

VARNEL_API void swapints(int& a, int& b);
VARNEL_API void swapreals(double& a, double& b);

/// The smallest of n values; 0.0 for n < 0 or a null array. The first is read even when n is 0.
VARNEL_API double GetMinimum(const double* a, int n);
/// 0.0 when there are no values.
VARNEL_API double GetMinimum(std::span<const double> values);

/// The largest of n values; otherwise as GetMinimum.
VARNEL_API double GetMaximum(const double* a, int n);
VARNEL_API double GetMaximum(std::span<const double> values);

}  // namespace varnel
