#include "varnel/surface/detail/delaunay.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>

#include "varnel/foundation/detail/progress.h"
#include "varnel/foundation/detail/raise.h"

namespace varnel::detail {

namespace {

/// The corners of the outer triangle as directions, and for the circle through a point and the two
/// corners other than i, infinitely far away, the direction into it: towards the centre of the
/// circle through the origin and the two directions.
constexpr Site kFarDirection[3] = {{-1.0, -1.0}, {1.0, -1.0}, {0.0, 1.0}};
constexpr Site kFarCentre[3] = {{3.0, 1.0}, {-3.0, 1.0}, {0.0, -1.0}};

[[noreturn]] void Fail(const char* where, const char* what) {
    std::fputs(where, stdout);
    std::fputs(what, stdout);
    std::exit(1);
}

/// An array that is filled before it is read.
template <class T>
std::unique_ptr<T[]> NewTable(long long count, const char* operation) {
    if (count > std::numeric_limits<int>::max())
        Raise(ERR3D_ARRAY_NEW, ERR3DCLASS_POLYSURFACE, operation, Say("the count is ", count));
    return AllocateOrRaise(ERR3D_ARRAY_NEW, {ERR3DCLASS_POLYSURFACE, operation}, [count] {
        return std::make_unique_for_overwrite<T[]>(static_cast<std::size_t>(count));
    });
}

LargeTable<Triangle> NewTriangles(long long count) {
    constexpr Origin kOrigin{ERR3DCLASS_POLYSURFACE, "Deltri"};
    if (count > std::numeric_limits<int>::max())
        Raise(ERR3D_ARRAY_NEW, kOrigin.cls, kOrigin.operation, Say("the count is ", count));
    return AllocateOrRaise(ERR3D_ARRAY_NEW, kOrigin, [count] {
        return NewLargeTable<Triangle>(static_cast<std::size_t>(count));
    });
}

bool IsFinite(const point3Dtype& p) {
    return std::isfinite(p.x) && std::isfinite(p.y);
}

}  // namespace

int rtround(double v) {
    return static_cast<int>(std::floor(v + 0.5));
}

void TriangleStack::push(int item) {
    if (m_Top == m_Capacity) Fail("Error in routine push\n", "Stack Overflow \n");
    m_DelStack[m_Top++] = item;
}

int TriangleStack::pop() {
    if (m_Top == 0) Fail("Error in function pop\n", "Stack underflow\n");
    return m_DelStack[--m_Top];
}

int edg(const Triangle& triangle, int k) {
    const int j = triangle.neighbours[2] == k ? 2 : triangle.neighbours[1] == k ? 1 : 0;
    if (triangle.neighbours[j] != k) Fail("Error in function edg\n", "Elements not adjacent\n");
    return j;
}

// The point inserted last has at most one edge to every other point and to the three corners, and
// the stack holds triangles of that point alone, each once: n + 2 places are always enough.
Delaunay::Delaunay(const point3Dtype* points, int n)
    : m_pPoints(points),
      m_DelPointOrder(NewTable<int>(n + 2LL, "InitDelaunay")),
      m_DelStack(NewTable<int>(n + 2LL, "InitDelaunay"), n + 2) {
    for (int i = 0; i < n; ++i)
        if (IsFinite(points[i])) m_DelPointOrder[m_NumSites++] = i;
}

void Delaunay::deltri() {
    if (m_NumSites == 0) return;
    const point3Dtype& first = m_pPoints[m_DelPointOrder[0]];
    Box bounds{first.x, first.x, first.y, first.y};
    for (int i = 0; i < m_NumSites; ++i) {
        ProgressStep();
        const point3Dtype& p = m_pPoints[m_DelPointOrder[i]];
        bounds.xmin = std::min(bounds.xmin, p.x);
        bounds.xmax = std::max(bounds.xmax, p.x);
        bounds.ymin = std::min(bounds.ymin, p.y);
        bounds.ymax = std::max(bounds.ymax, p.y);
    }
    const SiteScale scale(std::max({std::abs(bounds.xmin), std::abs(bounds.xmax),
                                    std::abs(bounds.ymin), std::abs(bounds.ymax)}));
    m_Sites = NewTable<Site>(m_NumSites, "Deltri");
    bsort({scale(bounds.xmin), scale(bounds.xmax), scale(bounds.ymin), scale(bounds.ymax)}, scale);
    m_Triangles = NewTriangles(2LL * m_NumSites + 2);
    m_NumRows = delaunwork();
    NumberTriangles(m_NumRows);
}

int Delaunay::delaunwork() {
    m_Triangles[1] = {{m_NumSites, m_NumSites + 1, m_NumSites + 2}, {0, 0, 0}, -1};
    int numTri = 1;
    int numInserted = 0;
    const ProgressPart part(0.3, 1.0);
    for (int p = 0; p < m_NumSites; ++p) {
        if (p % 1024 == 0) Progress(p, m_NumSites);
        const Site& site = m_Sites[p];
        const int t = triloc(site, numTri);
        const bool repeated = std::any_of(
            std::begin(m_Triangles[t].vertices), std::end(m_Triangles[t].vertices),
            [&](int v) { return !IsFar(v) && m_Sites[v].x == site.x && m_Sites[v].y == site.y; });
        if (repeated) continue;
        Insert(p, t, numTri);
        RestoreDelaunay(p);
        ++numInserted;
    }
    if (numTri != 2 * numInserted + 1)
        Fail("Error in function delaun \n", "incorrect number of triangles formed \n");
    return numTri;
}

//  Splits t at p. Each of the three has p as its vertex 0 and, across its edge 1, a neighbour of t:
//
//                    v2
//                   /|\                    t            (p, v0, v1)
//                  / | \                   numTri + 1   (p, v1, v2)
//              c  /  p  \  b               numTri + 2   (p, v2, v0)
//                / /   \ \                                                     (numTri as it was)
//              v0---------v1
//                    a
void Delaunay::Insert(int p, int t, int& numTri) {
    const Triangle old = m_Triangles[t];
    const auto [v0, v1, v2] = old.vertices;
    const auto [a, b, c] = old.neighbours;
    const int second = numTri + 1;
    const int third = numTri + 2;
    m_Triangles[t] = {{p, v0, v1}, {third, a, second}, 0};
    m_Triangles[second] = {{p, v1, v2}, {t, b, third}, 0};
    m_Triangles[third] = {{p, v2, v0}, {second, c, t}, 0};
    numTri = third;
    if (a != 0) m_DelStack.push(t);
    if (b != 0) {
        m_Triangles[b].neighbours[edg(m_Triangles[b], t)] = second;
        m_DelStack.push(second);
    }
    if (c != 0) {
        m_Triangles[c].neighbours[edg(m_Triangles[c], t)] = third;
        m_DelStack.push(third);
    }
}

//  Where p lies inside the circle of the triangle r opposite to it, the edge that l and r share
//  gives way to the one from p to v3, and the two edges of r become opposite to p in their turn:
//
//              v3                              v3
//             /  \                            /|\                                              .
//          b /    \ a                      b / | \ a
//           /  r   \                        /  |  \                                            .
//         v1--------v2         ->         v1 r | l v2
//           \  l   /                        \  |  /
//          c \    /                        c \ | /
//             \  /                            \|/
//              p                               p
void Delaunay::RestoreDelaunay(int p) {
    while (!m_DelStack.IsEmpty()) {
        const int l = m_DelStack.pop();
        Triangle& left = m_Triangles[l];
        const int r = left.neighbours[1];
        Triangle& right = m_Triangles[r];
        const int erl = edg(right, l);
        const int era = erl == 2 ? 0 : erl + 1;
        const int erb = era == 2 ? 0 : era + 1;
        const int v1 = right.vertices[erl];
        const int v2 = right.vertices[era];
        const int v3 = right.vertices[erb];
        if (!swap(v1, v2, v3, p)) continue;

        const int a = right.neighbours[era];
        const int b = right.neighbours[erb];
        const int c = left.neighbours[2];
        left.vertices[2] = v3;
        left.neighbours[1] = a;
        left.neighbours[2] = r;
        right = {{p, v3, v1}, {l, b, c}, 0};
        if (a != 0) {
            m_Triangles[a].neighbours[edg(m_Triangles[a], r)] = l;
            m_DelStack.push(l);
        }
        if (b != 0) m_DelStack.push(r);
        if (c != 0) m_Triangles[c].neighbours[edg(m_Triangles[c], l)] = r;
    }
}

void Delaunay::NumberTriangles(int numTri) {
    m_DelNumTriangles = 0;
    for (int t = 1; t <= numTri; ++t) {
        ProgressStep();
        Triangle& row = m_Triangles[t];
        const bool outer =
            std::max({row.vertices[0], row.vertices[1], row.vertices[2]}) >= m_NumSites;
        row.number = outer ? -1 : m_DelNumTriangles++;
    }
}

// Walks from t to the triangle that holds p, across an edge that p lies to the right of; an edge
// through p does not send the walk on. It ends: in a Delaunay triangulation no triangle comes twice
// (H. Edelsbrunner, "An acyclicity theorem for cell complexes in d dimension", 1990), and the
// decisions are exact.
int Delaunay::triloc(const Site& p, int t) const {
    int from = 0;
    while (true) {
        const Triangle& row = m_Triangles[t];
        int next = 0;
        for (int j = 0; j < 3 && next == 0; ++j) {
            if (row.neighbours[j] == 0 || row.neighbours[j] == from) continue;
            if (Side(row.vertices[j], row.vertices[j == 2 ? 0 : j + 1], p) < 0)
                next = row.neighbours[j];
        }
        if (next == 0) return t;
        from = t;
        t = next;
    }
}

int Delaunay::Side(int a, int b, const Site& p) const {
    if (!IsFar(a) && !IsFar(b)) return Orientation(m_Sites[a], m_Sites[b], p);
    if (IsFar(a) && IsFar(b)) return 1;
    // (a - p) x (b - p) with one of the two a direction.
    if (IsFar(a)) {
        const Site& d = kFarDirection[a - m_NumSites];
        return SideSign(-d.y, d.x, p, m_Sites[b]);
    }
    const Site& d = kFarDirection[b - m_NumSites];
    return SideSign(d.y, -d.x, p, m_Sites[a]);
}

bool Delaunay::swap(int v1, int v2, int v3, int p) const {
    if (std::max({v1, v2, v3}) < m_NumSites)
        return InsideCircle(m_Sites[v1], m_Sites[v2], m_Sites[v3], m_Sites[p]);
    return InsideFarCircle({v1, v2, v3}, m_Sites[p]);
}

// The circle through two points and a corner infinitely far away is the half plane beyond the line
// through the two, together with the segment between them. Through one point and two corners it is
// the half plane beyond the circle's tangent at the point.
bool Delaunay::InsideFarCircle(const int (&v)[3], const Site& p) const {
    int far = 0, near = 0;
    for (int j = 0; j < 3; ++j)
        (IsFar(v[j]) ? far : near) += 1 << j;
    if (near == 1 || near == 2 || near == 4) {
        const int j = near >> 1;
        const int missing = 3 * m_NumSites + 3 - (v[0] + v[1] + v[2] - v[j]) - m_NumSites;
        const Site& c = kFarCentre[missing];
        return SideSign(c.x, c.y, m_Sites[v[j]], p) > 0;
    }
    const int j = far >> 1;
    const Site& a = m_Sites[v[j == 2 ? 0 : j + 1]];
    const Site& b = m_Sites[v[j == 0 ? 2 : j - 1]];
    const int side = Orientation(a, b, p);
    if (side != 0) return side > 0;
    return a.x != b.x ? std::min(a.x, b.x) < p.x && p.x < std::max(a.x, b.x)
                      : std::min(a.y, b.y) < p.y && p.y < std::max(a.y, b.y);
}

}  // namespace varnel::detail
