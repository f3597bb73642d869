// The six numbers of a box-and-whisker chart from raw samples.
#pragma once

#include <span>

#include "varnel/foundation/export.h"

namespace varnel {

/// Writes minimum, lower quartile, median, upper quartile, maximum and mean of `count` samples to
/// six[0], six[stride], ... six[5 * stride]: with the number of points as stride, `six` is the
/// place of one point in the data of BoxAndWhiskerChart25D. Samples that are NaN or infinite are
/// left out; when none is left all six are NaN, which the chart leaves out.
///
/// The quantile p of n sorted samples is interpolated linearly at the place (n - 1) p, counted from
/// 0 (type 7 of R. J. Hyndman and Y. Fan, "Sample Quantiles in Statistical Packages", 1996): of
/// 1, 2, 3, 4 the lower quartile is 1.75. A null array or a failing allocation raises "Memory Null
/// Pointer" or "Array New Error" ("BoxStatistics").
VARNEL_API void BoxStatistics(const double* samples, int count, double* six, int stride = 1);
VARNEL_API void BoxStatistics(std::span<const double> samples, double* six, int stride = 1);

}  // namespace varnel
