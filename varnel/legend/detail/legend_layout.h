// Where the parts of a legend stand in its box, worked out from the sizes of its texts.
//
// Needs no context: the caller measures the texts in ems of the legend's font and says how large an
// em should be; the result is in pixels from the lower left corner of the box. What does not fit is
// scaled down as a whole, never cut.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "varnel/foundation/points.h"

namespace varnel::detail {

/// A rectangle in pixels, from the lower left corner of the legend's box.
struct LegendRect {
    double x = 0.0;
    double y = 0.0;
    double width = 0.0;
    double height = 0.0;
};

/// The place of a text: its left end and its baseline, in pixels.
struct LegendTextPlace {
    double x = 0.0;
    double baseline = 0.0;
};

/// A label beside a colour scale.
struct ScaleLabelSize {
    double at = 0.0;     ///< along the scale, 0..1
    double width = 0.0;  ///< ems
    int index = 0;       ///< where labels are thinned out, the multiples of a number stay
};

/// What a legend holds; lengths in ems.
struct LegendContent {
    double capHeight = 0.73;      ///< of capitals above the baseline
    double descent = 0.21;        ///< of letters below it
    double titleWidth = 0.0;      ///< at the title's size; 0 is no title
    double titleSize = 1.0;       ///< factor of the title's letters
    std::vector<double> entries;  ///< widths of the entries' texts
    double sampleWidth = 0.0;     ///< of all samples; 0: texts alone
    int rows = 0;                 ///< 0 or less: as many as needed
    int columns = 0;
    bool hasScale = false;
    bool horizontal = false;             ///< direction of the scale
    double scaleLength = 0.0;            ///< wanted, in pixels
    double labelGap = 0.0;               ///< further room between the labels
    std::vector<ScaleLabelSize> labels;  ///< in the order along the scale
    bool noData = false;                 ///< a swatch beside the scale's low end
    double noDataWidth = 0.0;            ///< of its text
};

/// The room that a legend has, in pixels.
struct LegendLimits {
    double em = 0.0;  ///< wanted
    double width = 0.0;
    double height = 0.0;
    bool fixedWidth = false;  ///< the box is exactly that wide, else at most
    bool fixedHeight = false;
};

struct LegendLayout {
    struct Entry {
        LegendRect sample;
        LegendTextPlace text;
    };
    struct Label {
        int number = 0;    ///< which one of the content's labels
        double tic = 0.0;  ///< along the axis of the scale
        LegendTextPlace text;
    };

    double em = 0.0;
    double width = 0.0;  ///< of the box, whole pixels
    double height = 0.0;
    LegendTextPlace title;
    std::vector<Entry> entries;
    LegendRect bar;  ///< of the scale
    LegendRect noData;
    LegendTextPlace noDataText;
    double ticLength = 0.0;
    std::vector<Label> labels;  ///< those that have room
};

/// With neither rows nor columns given, entries stand in one column, in more where that is needed
/// to keep the letters large. Given columns are filled row by row, everything else column by
/// column; with both given there are more rows when they do not suffice.
LegendLayout LayoutLegend(const LegendContent& content, const LegendLimits& limits);

/// A legend above or below a plot: as many columns of entries as keep the letters large.
LegendLayout LayoutLegendAcross(LegendContent content, const LegendLimits& limits);

/// Of the places of a box along the edges of an area, `margin` inside of them, the one with the
/// fewest of the data in it (x and y of the points); of equals the upper right corner, then the
/// other corners, then the middles of the edges. `hidden` is told how many lie in it.
LegendRect LeastCovered(std::span<const point3Dtype> data, const LegendRect& area, double width,
                        double height, double margin, std::ptrdiff_t* hidden = nullptr);

}  // namespace varnel::detail
