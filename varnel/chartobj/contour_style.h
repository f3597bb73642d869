// ContourStyle: how a contour chart draws whole lines.
//
// Lines are at every level, on logarithmic axes where the drawn surface has the level, in the
// levels' colours. Labels stand on straight stretches of the lines, readable side up, in gaps of
// them, none over another; short lines have none. They need a font of the context.
#pragma once

namespace varnel {

/// See CChartObj3D::SetContourStyle.
struct ContourStyle {
    double lineWidth = 1.0;  ///< pixels
    int lineStyle = 0;       ///< as SetLineStyle of a chart object
    int onSurface = 0;       ///< 1: at their own heights, 0: flat at the chart's constant value
    int labels = 0;          ///< 1: each line has its level written into gaps of it
    double labelSize = 0.5;  ///< factor on the font, as the relative size of texts
    double labelSpacing = 300.0;  ///< a label for each of these lengths of a line, in pixels
};

}  // namespace varnel
