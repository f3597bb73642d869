// Contour lines of a surface as data: for each level the polylines along which the surface crosses
// it, in the surface's own coordinates.
//
//     const ContourLines contours = TraceContourLines(surface, levels, numLevels);
//     for (const ContourLine& line : contours.lines)
//         Use(&contours.points[line.first], line.count, line.closed, levels[line.level]);
//
// A line divides what is below its level from what is at the level or above it, which is definite
// for every level, those that points lie on included. Seen from above, the higher ground is on the
// left where the polygons run counter-clockwise (those of grids with growing x and y, and of a
// triangulation). Neighbours are found by the points that polygons share; no neighbour table is
// needed.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "varnel/foundation/export.h"
#include "varnel/foundation/points.h"

namespace varnel {

class CPolysurface;

/// One polyline.
struct ContourLine {
    std::size_t first = 0;  ///< its first point in ContourLines::points
    std::size_t count = 0;  ///< at least 2
    int level = 0;          ///< which of the levels
    bool closed = false;    ///< whether it goes on from its last point to its first
};

/// The lines of all levels, level after level.
struct ContourLines {
    /// Points where lines cross polygon edges: z is the level, w is interpolated along the edge. A
    /// line has no two equal points in a row.
    std::vector<point3Dtype> points;
    std::vector<ContourLine> lines;
};

/// Traces `numLevels` levels, in any order, over polygons of three or more points. In a
/// quadrilateral whose corners lie alternately above and below a level, the two lines pass on the
/// sides of the saddle that the bilinear surface through the corners has. Polygons with a point
/// that is not finite are left out. Raises "Array New Error" ("TraceContourLines") of CContour3D.
VARNEL_API ContourLines TraceContourLines(const CPolysurface& surface, const double* levels,
                                          int numLevels);
VARNEL_API ContourLines TraceContourLines(const CPolysurface& surface,
                                          std::span<const double> levels);

}  // namespace varnel
