// The polygons that a contour line passes through, found one line after the other over the
// neighbour table of a surface, without drawing.
#pragma once

#include <limits>
#include <memory>
#include <vector>

#include "varnel/foundation/points.h"
#include "varnel/surface/polysurface.h"

namespace varnel::detail {

/// Whether the level crosses an edge of a polygon of n points that is given closed (n + 1 points);
/// both ends of an edge count. The first two crossed edges, 0..n - 1, come out as e1 and e2; with
/// fewer crossings these stay as they are.
bool CheckForPolyContour3D(const point3Dtype* pts, int n, double level, int& e1, int& e2);

/// As CheckForPolyContour3D, with the points where the level crosses: p1 and e1 of the first edge
/// that is not level, p2 and e2 of the second. A level edge that is crossed gives its own two ends.
/// Returns whether the last crossed edge that was looked at was not level.
bool InterpolatePolyContour3D(const point3Dtype* pts, int n, double level, point3Dtype& p1,
                              point3Dtype& p2, int& e1, int& e2);

/// Lists the chains of one surface, which must not change meanwhile.
class ContourSearch {
 public:
    /// Raises "Array New Error" ("InitContour") of CContour3D.
    explicit ContourSearch(const CPolysurface& surface);

    /// Begins another level: no polygon is done.
    void StartLevel(double level);
    /// Finds the next chain of the level; false when there is none. The work for all chains of a
    /// level together is one pass over the polygons.
    bool NextChain();
    /// The polygons of the chain, in order along the line.
    const int* GetList() const { return m_List.get(); }
    int GetCount() const { return m_Count; }

    /// The segment in a polygon; false where there is nothing to draw.
    bool GetSegment(int polygon, double level, point3Dtype& p1, point3Dtype& p2);

 private:
    static constexpr int kBlock = 64;

    struct Range {
        double lowest = std::numeric_limits<double>::infinity();
        double highest = -std::numeric_limits<double>::infinity();
    };
    struct Crossing {
        int e1 = 0;
        int e2 = 0;
    };

    bool IsDone(int polygon) const { return m_Done[polygon] == m_Number; }
    int GetContourPolyList(int start, int& first);
    bool IsCrossed(int polygon, Crossing& crossing);
    int Neighbour(int polygon, int edge) const;

    const CPolysurface& m_Surface;
    int m_NumPolygons;
    double m_Level = 0.0;
    int m_Start = 0;
    int m_Count = 0;
    int m_Number = 0;               ///< of the level, from 1
    std::unique_ptr<int[]> m_Done;  ///< the level that each polygon was last found for
    std::unique_ptr<int[]> m_List;
    /// The smallest and largest z of each polygon: what a level passes by is seen at once.
    std::unique_ptr<double[]> m_Lowest;
    std::unique_ptr<double[]> m_Highest;
    std::vector<Range> m_Blocks;  ///< the same of each kBlock polygons
    std::vector<point3Dtype> m_Polygon;
};

}  // namespace varnel::detail
