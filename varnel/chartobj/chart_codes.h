// Codes that chart objects take as plain ints: each enumerator can stand wherever its number can.
// Those of text planes are in axes/text_object.h, of colour modes and line styles in
// render/opengl.h.
#pragma once

namespace varnel {

/// The chart types; any other code draws nothing.
///
/// On logarithmic axes the places of points are converted, and what has an extent has it like this:
///   bars, floating bars   the height is the logarithm of base and datum's difference, or of the
///                         height; widths are decades
///   bars in space         foot and top are converted; each width is the logarithm of the one
///                         given: a bar is as wide as the way from 1 to its width
///   grouped bars          both ends of each width are converted; the height of a bar side by side
///                         is the logarithm of its value
///   areas                 all corners are converted: widths and the base are right
///   planes                a width is the logarithm of the one given
///   scatter               a projection line starts at the logarithm of the logarithm
/// With SetExactExtents(1) every bar, slab, box, stack, ribbon and area goes between its converted
/// ends on any axis, its width in data units. A bar side by side in a group goes from the base to
/// its value, also downward; stacks and stacked areas pile what is negative downward from the base,
/// and the first of each pile goes from the base to its value. An area lies on its base and is cut
/// there, a range is as thick as it is, slabs in space are as thick as those of PlaneChart25D, and
/// projection lines start at their symbols. What has no logarithm lies at the low end of the axis.
enum ChartType3D : int {
    RIBBONCHART25D = 1,
    BARCHART25D = 2,
    BARCHART3D = 3,
    AREAFILLCHART25D = 4,
    AREARANGECHART25D = 5,
    LINECHART25D = 6,
    SCATTERCHART3D = 7,
    LINECHART3D = 8,
    PROJECTIONLINECHART3D = 9,
    GROUPBARCHART25D = 10,
    GROUPRIBBONCHART25D = 11,
    GROUPAREAFILLCHART25D = 12,
    OHLCCHART25D = 13,
    PLANECHART3D = 14,
    SCATTERTEXT3D = 15,
    BOXANDWHISKERCHART25D = 16,
    FLOATINGBARCHART25D = 17,
    PLANECHART25D = 18,
    POLYSURFACECHART2D = 50,
    POLYSURFACECHART3D = 51,
    CONTOURPOLYSURFACE3D = 52,
    ERRORBARS3D = 60,
    VECTORS3D = 61,
    REFERENCELINE3D = 62,
    REFERENCEBAND3D = 63,
    NOTE3D = 64,
};

/// Solid symbols; any other code draws none.
enum Symbol3D : int {
    SYMBOL_NONE = 0,
    SYMBOL_CUBE = 10,
    SYMBOL_PLUS = 11,
    SYMBOL_DIAMOND = 12,
    SYMBOL_PYRAMID = 13,
    SYMBOL_HOURGLASS = 14,
    SYMBOL_ARROW = 15,
};

/// The horizontal axis that the independent values of a 2.5D chart run along; the other one is its
/// depth axis.
enum IndAxis3D : int {
    INDAXIS_X = 0,
    INDAXIS_Y = 1,
};

/// Where a width lies about the value that it is placed at; any other code is as the first.
enum WidthJustify3D : int {
    WIDTH_STARTS = 0,
    WIDTH_CENTERED = 1,
    WIDTH_ENDS = 2,
};

/// What the groups of a grouped bar chart share: any other code draws none.
enum GroupType3D : int {
    GROUPS_SIDE_BY_SIDE = 0,  ///< the width of one bar
    GROUPS_STACKED = 1,       ///< one pile
};

/// The parts of a price chart, by their places in the combo flags. Candlesticks are PRICE_RANGE and
/// PRICE_BODY.
enum PricePart3D : int {
    PRICE_RANGE = 0,         ///< line from low to high, in the middle
    PRICE_OPEN_TIC = 1,      ///< line at the open, from the middle to the left
    PRICE_CLOSE_TIC = 2,     ///< line at the close, from the middle to the right
    PRICE_OPEN_SYMBOL = 3,   ///< at the left end of the open
    PRICE_CLOSE_SYMBOL = 4,  ///< at the right end of the close
    PRICE_BODY = 5,          ///< from open to close
};

/// The places of the colours of a price chart.
enum PriceColor3D : int {
    PRICE_COLOR_OPEN = 0,    ///< the open's symbol
    PRICE_COLOR_RISING = 1,  ///< bodies where the price rose or held
    PRICE_COLOR_FALLING = 2,
    PRICE_COLOR_CLOSE = 3,  ///< the close's symbol
    PRICE_COLOR_LINE = 4,   ///< range and tics
};

/// The places of the colours of a box-and-whisker chart.
enum BoxColor3D : int {
    BOX_COLOR_LOWER_WHISKER = 0,
    BOX_COLOR_LOWER_BOX = 1,  ///< below the median
    BOX_COLOR_MEDIAN = 2,
    BOX_COLOR_UPPER_BOX = 3,
    BOX_COLOR_UPPER_WHISKER = 4,
    BOX_COLOR_MEAN = 5,
};

/// The coordinate that a projection replaces. Where symbols and texts are projected 3, 4 and 5 do
/// the same as 0, 1 and 2, and a negative code leaves the lines out.
enum Projection3D : int {
    PROJECTION_NONE = -1,
    PROJECTION_ALONG_Z = 0,  ///< onto a plane at a value of z
    PROJECTION_ALONG_Y = 1,
    PROJECTION_ALONG_X = 2,
};

}  // namespace varnel
