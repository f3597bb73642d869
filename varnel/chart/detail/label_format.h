// Which of the number formats of axis labels suits a list of values.
#pragma once

#include <span>

#include "varnel/foundation/types.h"

namespace varnel::detail {

/// A format of LabelText and the decimals to use it with.
struct LabelFormat {
    int format = 0;
    int decimals = 0;
};

/// The format whose longest text is the shortest among those that show every value to within a
/// millionth of `step`, the distance of the values, and no two of them alike; `otherwise` where
/// there is none. Where two are as short the earlier of fixed, engineering, general and exponential
/// is taken. The engineering suffixes count from ten thousands on: below, whole numbers are easier
/// to read.
LabelFormat ShortestFormat(std::span<const double> values, double step, const CString& suffixes,
                           const LabelFormat& otherwise);

}  // namespace varnel::detail
