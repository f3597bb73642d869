#include "varnel/surface/detail/contour_search.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "varnel/foundation/detail/progress.h"
#include "varnel/foundation/detail/raise.h"
#include "varnel/surface/detail/polygon_reader.h"

namespace varnel::detail {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr Origin kOrigin{ERR3DCLASS_CONTOUR3D, "InitContour"};

bool IsBetween(double level, double a, double b) {
    return (a <= level && level <= b) || (b <= level && level <= a);
}

}  // namespace

bool CheckForPolyContour3D(const point3Dtype* pts, int n, double level, int& e1, int& e2) {
    int found = 0;
    for (int k = 0; k < n && found < 2; ++k) {
        if (!IsBetween(level, pts[k].z, pts[k + 1].z)) continue;
        (found == 0 ? e1 : e2) = k;
        ++found;
    }
    return found > 0;
}

bool InterpolatePolyContour3D(const point3Dtype* pts, int n, double level, point3Dtype& p1,
                              point3Dtype& p2, int& e1, int& e2) {
    constexpr double kLevelEdge = 1e-20;
    bool result = false;
    int found = 0;
    for (int k = 0; k < n && found < 2; ++k) {
        const point3Dtype& a = pts[k];
        const point3Dtype& b = pts[k + 1];
        if (!IsBetween(level, a.z, b.z)) continue;
        if (std::abs(a.z - b.z) <= kLevelEdge) {
            result = false;
            p1 = a;
            p2 = b;
            continue;
        }
        const double t = (level - a.z) / (b.z - a.z);
        (found == 0 ? p1 : p2) = {a.x + t * (b.x - a.x), a.y + t * (b.y - a.y), level,
                                  a.w + t * (b.w - a.w)};
        (found == 0 ? e1 : e2) = k;
        result = true;
        ++found;
    }
    return result;
}

ContourSearch::ContourSearch(const CPolysurface& surface)
    : m_Surface(surface),
      m_NumPolygons(surface.GetPSNumPolygons()),
      m_Done(NewArray<int>(m_NumPolygons, kOrigin)) {
    AllocateOrRaise(ERR3D_ARRAY_NEW, kOrigin, [&] {
        // Filled below, a bit at a time.
        const auto count = static_cast<std::size_t>(m_NumPolygons);
        m_List = std::make_unique_for_overwrite<int[]>(count);
        m_Lowest = std::make_unique_for_overwrite<double[]>(count);
        m_Highest = std::make_unique_for_overwrite<double[]>(count);
        m_Polygon.resize(static_cast<std::size_t>(surface.GetPSLargestPolygon()) + 1);
        m_Blocks.resize(static_cast<std::size_t>(m_NumPolygons / kBlock) + 1);
    });
    const point3Dtype* const points = surface.GetPSPoints();
    PolygonReader reader(surface);
    for (int i = 0; i < m_NumPolygons; ++i) {
        ProgressStep();
        int n = 0;
        const int* const polygon = reader.Read(i, n);
        double lowest = kInfinity;
        double highest = -kInfinity;
        for (int k = 0; k < n; ++k) {
            const point3Dtype& p = points[polygon[k]];
            lowest = std::min(lowest, p.z);
            highest = std::max(highest, p.z);
            // A corner that is no data leaves a polygon without a range: no level crosses it.
            if (!std::isfinite(p.x) || !std::isfinite(p.y) || !std::isfinite(p.z)) {
                lowest = kInfinity;
                highest = -kInfinity;
                break;
            }
        }
        m_Lowest[i] = lowest;
        m_Highest[i] = highest;
        Range& block = m_Blocks[static_cast<std::size_t>(i / kBlock)];
        block.lowest = std::min(block.lowest, lowest);
        block.highest = std::max(block.highest, highest);
    }
}

void ContourSearch::StartLevel(double level) {
    m_Level = level;
    m_Start = 0;
    m_Count = 0;
    ++m_Number;
}

bool ContourSearch::NextChain() {
    ProgressStep();
    int first = 0;
    m_Count = GetContourPolyList(m_Start, first);
    m_Start = first + (m_Count > 0 ? 1 : 0);
    return m_Count > 0;
}

bool ContourSearch::GetSegment(int polygon, double level, point3Dtype& p1, point3Dtype& p2) {
    int n = 0;
    Crossing crossing;
    m_Surface.GPSPolygon(polygon, m_Polygon.data(), n);
    return InterpolatePolyContour3D(m_Polygon.data(), n, level, p1, p2, crossing.e1, crossing.e2);
}

bool ContourSearch::IsCrossed(int polygon, Crossing& crossing) {
    if (!(m_Lowest[polygon] <= m_Level && m_Level <= m_Highest[polygon])) return false;
    int n = 0;
    m_Surface.GPSPolygon(polygon, m_Polygon.data(), n);
    return CheckForPolyContour3D(m_Polygon.data(), n, m_Level, crossing.e1, crossing.e2);
}

/// The polygon across an edge, -1 for none; the table has three to a polygon.
int ContourSearch::Neighbour(int polygon, int edge) const {
    int three[3];
    m_Surface.GetAdjacentPolyList(polygon, three);
    return edge < 3 && three[edge] >= 0 ? three[edge] : -1;
}

// The line leaves its first polygon on one side. When it ends on the border, the chain is turned
// round and goes on from the first polygon on the other side.
int ContourSearch::GetContourPolyList(int start, int& first) {
    Crossing crossing;
    first = start;
    while (first < m_NumPolygons) {
        const Range& block = m_Blocks[static_cast<std::size_t>(first / kBlock)];
        const bool passes = !(block.lowest <= m_Level && m_Level <= block.highest);
        if (!passes && !IsDone(first) && IsCrossed(first, crossing)) break;
        first = passes ? (first / kBlock + 1) * kBlock : first + 1;
    }
    if (first >= m_NumPolygons) return 0;

    m_Done[first] = m_Number;
    const Crossing firstCrossing = crossing;
    int current = first;
    int count = 0;
    bool turned = false;
    while (true) {
        m_List[count++] = current;
        int next = Neighbour(current, crossing.e2);
        if (next == -1 && count == 1) next = Neighbour(current, crossing.e1);
        if (next >= m_NumPolygons) break;
        if (next != -1 && IsDone(next)) next = Neighbour(current, crossing.e1);
        if (next >= m_NumPolygons) break;
        if (next == -1) {
            if (turned) break;
            turned = true;
            std::reverse(m_List.get(), m_List.get() + count);
            --count;
            crossing = firstCrossing;
            current = first;
            continue;
        }
        if (IsDone(next) || !IsCrossed(next, crossing)) break;
        m_Done[next] = m_Number;
        current = next;
    }
    return count;
}

}  // namespace varnel::detail
