// How large the labels of automatic axes can be without touching each other or the axis title.
#pragma once

namespace varnel {
class CAxes3D;
class CTransform3D;
}  // namespace varnel

namespace varnel::detail {

/// The size of a chart's text: the height of an em in device units (the chart is 2 high and 2 wide)
/// and the factor on widths.
struct TextScale {
    double em = 0.1;
    double aspect = 1.0;
};

/// The label size of an axis whose tics and labels are set, for a box that is seen from above and a
/// little from the left: at most 0.8, so that labels stay behind titles, at least 0.4, so that they
/// can be read even where they touch.
double FittingLabelSize(const CAxes3D& axes, const CTransform3D& t, int axis,
                        const TextScale& text);

/// The size of the z axis' title: 1, less in charts that are narrower than high, where its letters
/// would grow sideways into the labels.
double FittingTitleSize(const TextScale& text);

}  // namespace varnel::detail
