// The chart types, listed once: how each is called and drawn, which of an object's data it is made
// of, and what a legend shows of it.
#pragma once

#include "varnel/chartobj/detail/chart_drawing.h"

namespace varnel::detail {

/// The data of a chart type, by which an object's record is laid out.
enum class ChartData {
    Series,    ///< independent and dependent values
    Groups,    ///< independent values and groups of dependent ones
    Points,    ///< points in space
    Surface,   ///< a mesh
    Contours,  ///< a mesh with levels and their colours
    None,      ///< attributes alone
};

/// What a legend shows of a chart.
enum class ChartSample {
    Fill,         ///< a rectangle in the fill colour
    PlainFill,    ///< the same without an outline
    GroupFill,    ///< a rectangle in the colour of a group
    Line,         ///< a line in the fill colour
    OutlineLine,  ///< a line in the outline colour
    Symbol,
    Prices,  ///< the parts of a price mark
    Box,     ///< the parts of a box mark
    Contour,
};

struct ChartType {
    ChartType3D type;
    const char* name;
    void (ChartDrawing::*draw)() const;
    ChartData data;
    ChartSample sample;
};

struct ChartTypes {
    /// The entry of a type code, null for a code that is none.
    static const ChartType* Find(int type);
};

}  // namespace varnel::detail
