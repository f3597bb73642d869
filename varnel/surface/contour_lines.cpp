#include "varnel/surface/contour_lines.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <unordered_map>

#include "varnel/foundation/detail/progress.h"
#include "varnel/foundation/detail/raise.h"
#include "varnel/surface/detail/polygon_reader.h"
#include "varnel/surface/polysurface.h"

namespace varnel {

namespace {

/// An edge by the two points at its ends, the lower number first, so that both polygons at the edge
/// mean the same.
struct Edge {
    int low;
    int high;
};

/// A piece of a line inside one polygon: it comes in across an edge that goes down in the polygon's
/// own sense of rotation, and leaves across one that goes up.
struct Segment {
    Edge from;
    Edge to;
};

/// For points with coordinates that cannot be used.
constexpr int kNoBand = -1;

/// Finds the segments of all levels in one pass over the polygons.
class SegmentFinder {
 public:
    SegmentFinder(const CPolysurface& surface, const std::vector<double>& levels)
        : m_Surface(surface), m_Levels(levels), m_Segments(levels.size()) {
        SetBands();
        const int numPolygons = surface.GetPSNumPolygons();
        detail::PolygonReader reader(surface);
        for (int i = 0; i < numPolygons; ++i) {
            if (i % 1024 == 0) detail::Progress(0.5 * i, numPolygons);
            int n = 0;
            const int* const polygon = reader.Read(i, n);
            if (n >= 3) CrossPolygon(polygon, n);
        }
    }

    const std::vector<Segment>& GetSegments(std::size_t level) const { return m_Segments[level]; }

    std::size_t CountSegments() const {
        std::size_t count = 0;
        for (const auto& segments : m_Segments)
            count += segments.size();
        return count;
    }

 private:
    /// A point's band is the number of levels that are not above it.
    void SetBands() {
        const point3Dtype* const points = m_Surface.GetPSPoints();
        const auto count = static_cast<std::size_t>(m_Surface.GetPSNumPoints()) + 4;
        const auto numLevels = static_cast<int>(m_Levels.size());
        m_Bands.resize(count);
        int band = 0;
        for (std::size_t i = 0; i < count; ++i) {
            detail::ProgressStep();
            const point3Dtype& p = points[i];
            // The difference of a number with itself is 0, unless it is not finite.
            if ((p.x - p.x) + (p.y - p.y) + (p.z - p.z) != 0.0) {
                m_Bands[i] = kNoBand;
                continue;
            }
            // Points that follow each other are mostly in the same band.
            const bool same =
                (band == 0 || Level(band - 1) <= p.z) && (band == numLevels || Level(band) > p.z);
            if (!same)
                band = static_cast<int>(std::upper_bound(m_Levels.begin(), m_Levels.end(), p.z) -
                                        m_Levels.begin());
            m_Bands[i] = band;
        }
    }

    void CrossPolygon(const int* polygon, int n) {
        int low = Band(polygon[0]);
        int high = low;
        for (int k = 1; k < n; ++k) {
            low = std::min(low, Band(polygon[k]));
            high = std::max(high, Band(polygon[k]));
        }
        if (low == kNoBand) return;
        for (int level = low; level < high; ++level)
            CrossLevel(polygon, n, level);
    }

    void CrossLevel(const int* polygon, int n, int level) {
        const auto isHigh = [&](int k) { return Band(polygon[k]) > level; };
        int firstDown = -1, firstUp = -1, ups = 0;
        for (int k = 0; k < n; ++k) {
            const bool here = isHigh(k);
            const bool next = isHigh(k + 1 == n ? 0 : k + 1);
            if (here && !next && firstDown < 0) firstDown = k;
            if (!here && next && ups++ == 0) firstUp = k;
        }
        if (ups == 1) {
            AddSegment(polygon, n, level, firstDown, firstUp);
            return;
        }
        // Ups and downs alternate. Where the high parts hang together, each line cuts a low part
        // off: from a down to the up that ends that low part; else it ends a high part.
        const bool together = IsHighInside(polygon, n, level);
        for (int k = 0; k < n; ++k) {
            const int next = k + 1 == n ? 0 : k + 1;
            if (!isHigh(k) || isHigh(next)) continue;
            int up = k;
            do
                up = together ? (up + 1) % n : (up + n - 1) % n;
            while (isHigh(up) || !isHigh((up + 1) % n));
            AddSegment(polygon, n, level, k, up);
        }
    }

    /// Whether the middle of a polygon with several high parts belongs to them. For quadrilaterals
    /// the sign at the saddle of the bilinear surface (G. M. Nielson and B. Hamann, "The asymptotic
    /// decider", 1991), for others the mean of the points.
    bool IsHighInside(const int* polygon, int n, int level) const {
        const point3Dtype* const points = m_Surface.GetPSPoints();
        const double z = Level(level);
        if (n == 4) {
            const auto above = [&](int k) { return points[polygon[k]].z / 2 - z / 2; };
            const double even = above(0) * above(2);
            const double odd = above(1) * above(3);
            return Band(polygon[0]) > level ? even >= odd : odd >= even;
        }
        double mean = 0.0;
        for (int k = 0; k < n; ++k)
            mean += points[polygon[k]].z / n;
        return mean >= z;
    }

    void AddSegment(const int* polygon, int n, int level, int down, int up) {
        const auto edge = [&](int k) {
            const int a = polygon[k];
            const int b = polygon[k + 1 == n ? 0 : k + 1];
            return Edge{std::min(a, b), std::max(a, b)};
        };
        m_Segments[static_cast<std::size_t>(level)].push_back({edge(down), edge(up)});
    }

    int Band(int point) const { return m_Bands[static_cast<std::size_t>(point)]; }
    double Level(int i) const { return m_Levels[static_cast<std::size_t>(i)]; }

    const CPolysurface& m_Surface;
    const std::vector<double>& m_Levels;
    std::vector<int> m_Bands;
    std::vector<std::vector<Segment>> m_Segments;
};

/// Joins the segments of one level to lines.
class LineJoiner {
 public:
    LineJoiner(const CPolysurface& surface, ContourLines& out)
        : m_Points(surface.GetPSPoints()), m_Out(out) {}

    void Join(const std::vector<Segment>& segments, double z, int level) {
        m_Z = z;
        m_Level = level;
        m_Nodes.clear();
        m_Links.clear();
        m_NodeOf.clear();
        m_NodeOf.reserve(segments.size() + 1);
        for (const Segment& segment : segments) {
            detail::ProgressStep();
            const auto link = static_cast<std::uint32_t>(m_Links.size());
            const std::uint32_t from = Attach(segment.from, link);
            const std::uint32_t to = Attach(segment.to, link);
            m_Links.push_back({{from, to}, false});
        }
        // From the ends of open lines first, in the segments' own direction where they agree on
        // one; what is left then are closed lines.
        for (const Link& link : m_Links)
            if (!link.done && IsEnd(link.nodes[0])) Follow(link, 0);
        for (const Link& link : m_Links)
            if (!link.done && IsEnd(link.nodes[1])) Follow(link, 1);
        for (const Link& link : m_Links)
            if (!link.done) Follow(link, 0);
    }

 private:
    static constexpr std::uint32_t kNone = std::numeric_limits<std::uint32_t>::max();

    /// Where a line crosses an edge, and the segments that meet there.
    struct Node {
        std::uint32_t links[2];
        point3Dtype point;
    };
    struct Link {
        std::uint32_t nodes[2];
        bool done;
    };

    /// The node of an edge, with one more segment at it.
    std::uint32_t Attach(const Edge& edge, std::uint32_t link) {
        const auto key =
            static_cast<std::uint64_t>(edge.low) << 32 | static_cast<std::uint32_t>(edge.high);
        const auto next = static_cast<std::uint32_t>(m_Nodes.size());
        const auto [known, isNew] = m_NodeOf.try_emplace(key, next);
        if (!isNew) {
            Node& node = m_Nodes[known->second];
            if (node.links[1] == kNone) {
                node.links[1] = link;
                return known->second;
            }
            // Where more than two polygons share an edge, lines meet two by two.
            known->second = next;
        }
        m_Nodes.push_back({{link, kNone}, Cross(edge)});
        return next;
    }

    point3Dtype Cross(const Edge& edge) const {
        const point3Dtype& a = m_Points[edge.low];
        const point3Dtype& b = m_Points[edge.high];
        // Halves, because the difference of two finite numbers can be infinite.
        const double t = (m_Z / 2 - a.z / 2) / (b.z / 2 - a.z / 2);
        const double s = 1.0 - t;
        return {a.x * s + b.x * t, a.y * s + b.y * t, m_Z, a.w * s + b.w * t};
    }

    bool IsEnd(std::uint32_t node) const { return m_Nodes[node].links[1] == kNone; }

    /// Writes the line through a segment, starting at its node `side`.
    void Follow(const Link& start, int side) {
        detail::ProgressStep();
        ContourLine line;
        line.first = m_Out.points.size();
        line.level = m_Level;
        std::uint32_t node = start.nodes[side];
        auto link = static_cast<std::uint32_t>(&start - m_Links.data());
        AddPoint(line, node);
        while (link != kNone && !m_Links[link].done) {
            detail::ProgressStep();
            Link& current = m_Links[link];
            current.done = true;
            node = current.nodes[0] == node ? current.nodes[1] : current.nodes[0];
            AddPoint(line, node);
            const auto& links = m_Nodes[node].links;
            link = links[0] == link ? links[1] : links[0];
        }
        line.closed = node == start.nodes[side];
        if (line.closed && line.count > 1) {
            // The first point was written again as the last one.
            m_Out.points.pop_back();
            --line.count;
        }
        if (line.count >= 2)
            m_Out.lines.push_back(line);
        else
            m_Out.points.resize(line.first);
    }

    void AddPoint(ContourLine& line, std::uint32_t node) {
        const point3Dtype& p = m_Nodes[node].point;
        if (line.count > 0 && m_Out.points.back().x == p.x && m_Out.points.back().y == p.y) return;
        m_Out.points.push_back(p);
        ++line.count;
    }

    const point3Dtype* m_Points;
    ContourLines& m_Out;
    double m_Z = 0.0;
    int m_Level = 0;
    std::vector<Node> m_Nodes;
    std::vector<Link> m_Links;
    /// Multiplicative hashing: the upper bits of the product depend on all bits of the edge.
    struct EdgeHash {
        std::size_t operator()(std::uint64_t edge) const {
            return static_cast<std::size_t>(edge * 0x9E3779B97F4A7C15U >> 20);
        }
    };
    std::unordered_map<std::uint64_t, std::uint32_t, EdgeHash> m_NodeOf;  ///< the newest by edge
};

ContourLines Trace(const CPolysurface& surface, const double* levels, int numLevels) {
    ContourLines out;
    if (surface.GetPSNumPoints() == 0 || levels == nullptr) return out;
    std::vector<int> order;
    for (int i = 0; i < numLevels; ++i)
        if (!std::isnan(levels[i])) order.push_back(i);
    std::stable_sort(order.begin(), order.end(),
                     [levels](int a, int b) { return levels[a] < levels[b]; });
    std::vector<double> sorted;
    sorted.reserve(order.size());
    for (const int i : order)
        sorted.push_back(levels[i]);

    const SegmentFinder finder(surface, sorted);
    out.points.reserve(finder.CountSegments());
    LineJoiner joiner(surface, out);
    const detail::ProgressPart part(0.5, 1.0);
    for (std::size_t k = 0; k < order.size(); ++k) {
        detail::Progress(static_cast<double>(k), static_cast<double>(order.size()));
        joiner.Join(finder.GetSegments(k), sorted[k], order[k]);
    }
    return out;
}

}  // namespace

ContourLines TraceContourLines(const CPolysurface& surface, const double* levels, int numLevels) {
    return detail::AllocateOrRaise(ERR3D_ARRAY_NEW, {ERR3DCLASS_CONTOUR3D, "TraceContourLines"},
                                   [&] { return Trace(surface, levels, numLevels); });
}

ContourLines TraceContourLines(const CPolysurface& surface, std::span<const double> levels) {
    constexpr std::size_t kMost = std::numeric_limits<int>::max();
    return TraceContourLines(surface, levels.data(),
                             static_cast<int>(std::min(levels.size(), kMost)));
}

}  // namespace varnel
