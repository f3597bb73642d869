// Automatic scales: the limits of an axis and the values at which its tics stand, from nothing but
// the extent of the data.
//
// Everything is in data units, also on logarithmic axes. The choices are plain values: nothing is
// drawn, kept or changed here. Texts for the tics come from scale/tic_labels.h, dates from
// scale/calendar.h.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "varnel/foundation/export.h"

namespace varnel {

/// The extent of data: its smallest and largest value, and how many values were left out.
struct DataRange {
    double min = 0.0;
    double max = 0.0;
    int count = 0;    ///< values that count; min and max mean nothing when it is 0
    int leftOut = 0;  ///< values that are no data: not finite, or not positive on a log axis

    /// Takes one more value in. Zero and negative values are no data on a logarithmic axis.
    VARNEL_API void Add(double value, bool logarithmic = false);
};

/// The extent of an array.
VARNEL_API DataRange RangeOf(std::span<const double> values, bool logarithmic = false);

struct ScaleOptions {
    /// The limits are the data's own, whatever they are: nothing of the axis is empty.
    bool tight = false;
    /// The limits fall on labelled tics; otherwise they may fall on the tics between.
    bool round = false;
    /// The limits include 0 whatever it costs (not on a logarithmic axis).
    bool zero = false;
    /// What bars and areas stand on: always inside the limits.
    std::optional<double> base;
    bool logarithmic = false;
    /// The data are counts, years or positions: tics fall on whole numbers only.
    bool whole = false;
    /// Room between the data and the limits, a fraction of their extent at each end; symbols and
    /// lines look better off the frame. Not added where data or limits end at 0 or at the base.
    double margin = 0.0;
    /// Length of the axis as drawn, in heights of its labels; 4 to 8 tics are labelled on an axis
    /// of 9 or more, fewer on shorter ones.
    double length = 30.0;
    /// The labels stand beside each other, so that their widths count: the x axis.
    bool across = false;
};

/// Limits and tics of one axis.
struct AxisScale {
    double min = 0.0;
    double max = 1.0;
    bool logarithmic = false;
    std::vector<double> majors;  ///< where labelled tics stand, ascending, inside the limits
    std::vector<double> minors;  ///< the tics between them
    /// The distance between labelled tics and the number of intervals that minor tics divide it
    /// into; a step of 0 on a logarithmic axis of a decade or more, whose tics are decades.
    double majorStep = 0.0;
    int minorsPerMajor = 1;
};

/// The limits and tics for data from `min` to `max`. Every value of the range is inside the limits.
/// The base is included always, 0 where that leaves less than 20 % of the axis empty. Without a
/// range (values that are not finite, or not positive on a logarithmic axis) the limits are 0..1,
/// or 1..10 on a logarithmic axis; a range of one value is widened around it. Values may be given
/// in either order.
VARNEL_API AxisScale AutoScale(double min, double max, const ScaleOptions& options = {});

/// The tics for limits that are given: as AutoScale chooses them, with the limits kept as they are.
/// Limits given in descending order stay so; the tics ascend.
VARNEL_API AxisScale TicsInside(double min, double max, const ScaleOptions& options = {});

}  // namespace varnel
