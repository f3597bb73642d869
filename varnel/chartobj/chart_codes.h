// Codes that chart objects take as plain ints: each enumerator can stand wherever its number can.
// Those of text planes are in axes/text_object.h, of colour modes and line styles in
// render/opengl.h.
#pragma once

namespace varnel {

/// The chart types; any other code draws nothing.
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

/// The coordinate that a projection replaces. Where symbols and texts are projected 3, 4 and 5 do
/// the same as 0, 1 and 2, and a negative code leaves the lines out.
enum Projection3D : int {
    PROJECTION_NONE = -1,
    PROJECTION_ALONG_Z = 0,  ///< onto a plane at a value of z
    PROJECTION_ALONG_Y = 1,
    PROJECTION_ALONG_X = 2,
};

}  // namespace varnel
