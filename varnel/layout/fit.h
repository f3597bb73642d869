// Where a chart's box stands in its frame: as large as its labels, titles and legends leave room
// for.
//
// Pure functions over plain values. Pixels are those of the chart's viewport, x to the right and y
// up from its lower left corner. What stands around the box (labels, titles) is measured by a
// function that the caller gives, so that nothing here knows axes or fonts.
#pragma once

#include <functional>

#include "varnel/foundation/export.h"
#include "varnel/foundation/points.h"

namespace varnel {

struct PixelPoint {
    double x = 0.0;
    double y = 0.0;
};

/// A rectangle in pixels; empty when its right edge lies left of its left one.
struct PixelRect {
    double left = 0.0;
    double bottom = 0.0;
    double right = 0.0;
    double top = 0.0;

    double Width() const { return right - left; }
    double Height() const { return top - bottom; }
    bool IsEmpty() const { return right < left || top < bottom; }
    /// The smallest rectangle that holds both; an empty one adds nothing.
    VARNEL_API void Add(const PixelRect& other);
    /// Whether the insides meet, `gap` pixels counted to each.
    VARNEL_API bool Overlaps(const PixelRect& other, double gap = 0.0) const;
    bool Contains(const PixelRect& o, double slack = 0.0) const {
        return o.left >= left - slack && o.right <= right + slack && o.bottom >= bottom - slack &&
               o.top <= top + slack;
    }
};

/// A box in a frame, in the terms of a transform.
struct BoxPlacement {
    int width = 0;  ///< of the frame, in pixels
    int height = 0;
    bool trueProportions = false;  ///< as CTransform3D::SetTrueProportions
    point3Dtype rotation;          ///< degrees
    point3Dtype rect{0.5, 0.5, 0.5, 0.0};
    point3Dtype offset;
};

/// The pixel of a point of the box, -rect .. +rect.
VARNEL_API PixelPoint BoxToPixel(const BoxPlacement& placement, const point3Dtype& boxPoint);
/// What the box covers.
VARNEL_API PixelRect BoxExtent(const BoxPlacement& placement);

/// What the chart covers with everything around it when its box is placed like this.
using MeasureFunction = std::function<PixelRect(const BoxPlacement&)>;

struct FitOptions {
    /// Left free at every edge of the frame, a fraction of its smaller side.
    double margin = 0.02;
    /// Pixels at the edges that belong to others: titles above, the footer below, legends.
    double left = 0.0;
    double bottom = 0.0;
    double right = 0.0;
    double top = 0.0;
    /// The box's edges in proportion to each other.
    point3Dtype proportions{1.0, 1.0, 0.7, 0.0};
    /// Above 0: the edges that are seen as width and height are what the frame allows, and the
    /// third one is this fraction of the width deep; the proportions do not count. For charts that
    /// are seen from the front or from above. 0: the proportions count.
    double fillDepth = 0.0;
};

/// The placement with the largest box so that what `measure` says stays inside the frame, its
/// margin and what is reserved; the rotation is kept. A few steps of a fixed-point iteration: what
/// stands around the box depends little on the box's size.
VARNEL_API BoxPlacement FitBox(const BoxPlacement& start, const FitOptions& options,
                               const MeasureFunction& measure);

/// The same, but of one size and place that fit for every rotation about z, so that a chart that is
/// turned does not pulsate.
VARNEL_API BoxPlacement FitTurningBox(const BoxPlacement& start, const FitOptions& options,
                                      const MeasureFunction& measure);

/// Heights of texts in pixels (of an em) for a frame.
struct TextSizes {
    double label = 0.0;  ///< labels, axis titles, legends
    double title = 0.0;
    double subtitle = 0.0;
    double footer = 0.0;
    double lines = 1.0;  ///< factor on the widths of lines of axes
};

/// Labels of 11 points at 96 dots an inch in a frame of 640 x 480, growing more slowly than the
/// smaller side of the frame, between 9 and 60 pixels.
VARNEL_API TextSizes TextSizesFor(int width, int height);

/// The heights of the strips that titles and footer take at the frame's edges, in pixels; 0 for
/// texts that are not there. They join FitOptions::top and bottom.
struct HeaderStrips {
    double top = 0.0;
    double bottom = 0.0;
};
VARNEL_API HeaderStrips StripsFor(const TextSizes& sizes, bool title, bool subtitle, bool footer);

}  // namespace varnel
