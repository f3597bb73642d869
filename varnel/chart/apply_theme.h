// Giving a view or a chart the look of a theme.
#pragma once

#include "varnel/foundation/export.h"
#include "varnel/theme/theme.h"

namespace varnel {

class CAxes3D;
class CChart3D;
class CChartView3D;

/// Gives the view its background, font and antialiasing, and every chart and legend that it has the
/// theme's look; borders go. What is made later wants the theme of its own.
VARNEL_API void ApplyTheme(CChartView3D& view, const Theme& theme);

/// Gives a chart its background, light and text size, and its axes, titles and texts their colours
/// and widths. Axes without walls get walls with grid lines at major tics, below, behind and on the
/// left, where they hide nothing from a viewer in front, above and on the right; a theme without
/// walls takes those of all axes away. Texts keep a colour that is no theme's. What shows data
/// keeps its colours: take those from Theme::SeriesColor when it is made.
VARNEL_API void ApplyTheme(CChart3D& chart, const Theme& theme);

}  // namespace varnel
