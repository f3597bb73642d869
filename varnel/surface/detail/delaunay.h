// Delaunay triangulation of points in the x-y plane, one point after the other into one large outer
// triangle (S. W. Sloan, "A fast algorithm for constructing Delaunay triangulations in the plane",
// Advances in Engineering Software 9, 1987). The routines keep Sloan's names.
//
// What holds after each insertion:
// - Triangles are rows 1..numTri of one table; row 0 is unused, so that 0 can say "no neighbour".
// - A triangle's vertices run counter-clockwise; edge j leads from vertex j to the next one, and
//   neighbour j is the triangle across edge j. Neighbours name each other.
// - No inserted point lies strictly inside the circle of any triangle.
// - m points make 2m + 1 triangles, those at the outer vertices included.
//
// The outer triangle's corners count as infinitely far away, in the directions in which they stand.
// The triangles that remain without them therefore fill the convex hull of the points; a corner at
// any finite distance would cost the thin triangles along the hull.
#pragma once

#include <cstdint>
#include <memory>

#include "varnel/foundation/points.h"
#include "varnel/surface/detail/delaunay_predicates.h"
#include "varnel/surface/detail/large_table.h"

namespace varnel::detail {

/// The outer triangle around points that fill the unit square, as it is kept with the points.
inline constexpr Site kOuterTriangle[3] = {{-100.0, -100.0}, {100.0, -100.0}, {0.0, 100.0}};

/// One row of the triangle table: half a cache line, and never across two.
struct alignas(32) Triangle {
    int vertices[3];
    int neighbours[3];
    int number;  ///< place among the triangles that remain, from 0, -1 for the outer ones
};

/// Triangles that wait for a swap test.
class TriangleStack {
 public:
    TriangleStack(std::unique_ptr<int[]> items, int capacity)
        : m_DelStack(std::move(items)), m_Capacity(capacity) {}

    bool IsEmpty() const { return m_Top == 0; }
    /// Ends the process when the stack is full.
    void push(int item);
    /// Ends the process when the stack is empty.
    int pop();

 private:
    std::unique_ptr<int[]> m_DelStack;
    int m_Capacity;
    int m_Top = 0;
};

/// The edge 0..2 across which `triangle` has neighbour `k`. Ends the process when there is none.
int edg(const Triangle& triangle, int k);

/// floor(v + 0.5)
int rtround(double v);

class Delaunay {
 public:
    /// Prepares for n points, whose x and y are read here and in deltri. Points that are not finite
    /// take no part. Raises "Array New Error" ("InitDelaunay").
    Delaunay(const point3Dtype* points, int n);

    /// Triangulates. Of points at the same place the first to be inserted takes part, the others
    /// are left out. Fewer than three points, or all of them on one line, make no triangles. Raises
    /// "Array New Error" ("Deltri", "bsort"). An inconsistency of the tables, which only a fault of
    /// this code can cause, prints two lines and ends the process with status 1.
    void deltri();

    int GetNumTriangles() const { return m_DelNumTriangles; }

    /// Calls visit(number, vertices, neighbours) for each triangle: 0-based point numbers, counter-
    /// clockwise, and the numbers of the triangles across edges 0 -> 1, 1 -> 2, 2 -> 0, -1 for
    /// none.
    template <class Visit>
    void ForEachTriangle(Visit&& visit) const {
        for (int t = 1; t <= m_NumRows; ++t) {
            const Triangle& row = m_Triangles[t];
            if (row.number < 0) continue;
            int vertices[3], neighbours[3];
            for (int j = 0; j < 3; ++j) {
                vertices[j] = m_DelPointOrder[row.vertices[j]];
                neighbours[j] = row.neighbours[j] == 0 ? -1 : m_Triangles[row.neighbours[j]].number;
            }
            visit(row.number, vertices, neighbours);
        }
    }

 private:
    struct Box {
        double xmin, xmax, ymin, ymax;
    };
    struct SortItem {
        std::uint32_t key;
        int item;
    };

    void bsort(const Box& bounds, const SiteScale& scale);
    Box GetBounds(int begin, int end) const;
    void SortCell(int begin, int end, bool mirrored, SortItem* scratch);
    void Rearrange(int begin, int end, SortItem* scratch);

    int delaunwork();
    void Insert(int p, int t, int& numTri);
    void RestoreDelaunay(int p);
    void NumberTriangles(int numTri);

    int triloc(const Site& p, int t) const;
    bool swap(int v1, int v2, int v3, int p) const;
    bool IsFar(int v) const { return v >= m_NumSites; }
    int Side(int a, int b, const Site& p) const;
    bool InsideFarCircle(const int (&v)[3], const Site& p) const;

    const point3Dtype* m_pPoints;
    int m_NumSites = 0;                      ///< finite points
    std::unique_ptr<int[]> m_DelPointOrder;  ///< in the order of insertion: which point
    std::unique_ptr<Site[]> m_Sites;         ///< in the order of insertion: where it is
    TriangleStack m_DelStack;
    LargeTable<Triangle> m_Triangles;
    int m_NumRows = 0;
    int m_DelNumTriangles = 0;
};

}  // namespace varnel::detail
