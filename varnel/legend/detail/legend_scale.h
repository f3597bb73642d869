// The colour scale of a legend: bands of colour along 0..1 and the labels beside them.
//
// A scale stands for the colours by value of a chart (a colour bar) or for the bands between
// contour levels, which all have the same length whatever the levels.
#pragma once

#include <span>
#include <vector>

#include "varnel/foundation/colors.h"
#include "varnel/foundation/types.h"

namespace varnel::detail {

/// How the labels of a scale are written; see LabelText.
struct ScaleFormat {
    int format = 0;
    int decimals = -1;  ///< negative: as many as the values need
    CString suffixes = {};
    double ticSpace = 0.0;  ///< between the labels of a colour bar; 0: none
};

struct ScaleBand {
    double end = 0.0;  ///< it begins where the one before ends
    RGBDType color;
};

struct ScaleLabel {
    double at = 0.0;
    int index = 0;  ///< the multiple of the interval between labels; the number of the level
    CString text;
};

struct LegendScale {
    std::vector<ScaleBand> bands;
    std::vector<ScaleLabel> labels;
    double arrowBelow = 0.0;  ///< the first band ends here and is an arrow; 0: it is none
    double arrowAbove = 0.0;  ///< the last band is an arrow of this share of the scale; 0: none
};

/// The colours by value of a chart between min and max, exactly as COpenGL::SetTextureColorArray
/// maps them; only the first colour, to which the maximum itself wraps around, is left out at the
/// upper end. Equal or non-finite limits or no colours give an empty scale.
LegendScale ColorBarScale(std::span<const RGBDType> colors, double min, double max,
                          const ScaleFormat& format);

/// The smallest of 1, 2 and 5 times a power of ten that divides a range into at most `intervals`
/// parts; 0 for a range of nothing.
double RoundStep(double range, int intervals);

/// The bands between contour levels: levels + 1 colours, labelled with the levels. With one colour
/// less than levels the bands end at the first and the last of them.
LegendScale ContourScale(std::span<const double> levels, std::span<const RGBDType> colors,
                         const ScaleFormat& format);

/// The decimals with which LabelText tells all values exactly in a format, 10 at most.
int NeededDecimals(std::span<const double> values, int format);

}  // namespace varnel::detail
