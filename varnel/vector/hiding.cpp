#include "varnel/vector/detail/hiding.h"

#include <algorithm>
#include <cmath>

#include "varnel/foundation/detail/progress.h"
#include "varnel/foundation/detail/whole_within.h"
#include "varnel/vector/detail/clipper_paths.h"

namespace varnel::detail {
namespace {

/// Side of the cells by which polygons are found, in pixels.
constexpr double kCell = 16.0;
/// Depths that differ by less are equal: the corners come from floats in the box -1..1.
constexpr double kDepthSlack = 2e-6;
/// Polygons that overlap by less than this, in pixels, only touch.
constexpr double kTouch = 0.02;
/// A line that lies in a face is not hidden by the face's own slope this far away, in pixels.
constexpr double kLineSlack = 0.05;
/// A line this near to an edge, in pixels, runs along it.
constexpr double kAlong = 0.005;
/// Corners this close, in pixels, are one.
constexpr double kNoLength = 1e-6;
/// So many areas are taken from one at once; more are put together before.
constexpr std::size_t kMostHiders = 24;
/// What covers a larger share of a polygon's bounds is taken from it before all the rest, so many
/// at a time.
constexpr double kLargeShare = 0.1;
constexpr std::size_t kTogether = 6;
/// The edge of a line that is covered by less, in pixels, may lie before what covers it.
constexpr double kHardlyOver = 0.25;
/// Runs of lines that are shorter, in pixels, are neither gaps nor lines.
constexpr double kShortestRun = 0.05;

double Area2(std::span<const Vec3> p) {
    double sum = 0.0;
    for (std::size_t i = 0, n = p.size(); i < n; ++i) {
        const Vec3& a = p[i];
        const Vec3& b = p[(i + 1) % n];
        sum += (a.x - p[0].x) * (b.y - p[0].y) - (b.x - p[0].x) * (a.y - p[0].y);
    }
    return sum;
}

/// In the picture. Places are no farther apart than std::hypot is for.
double Length(const Vec3& a, const Vec3& b) {
    return std::sqrt((b.x - a.x) * (b.x - a.x) + (b.y - a.y) * (b.y - a.y));
}

/// Twice the distance-weighted side of p: positive to the left of the line from a to b.
double Side(const Vec3& a, const Vec3& b, const Vec3& p) {
    return (b.x - a.x) * (p.y - a.y) - (b.y - a.y) * (p.x - a.x);
}

/// Whether an edge of `a` has all of `b` outside it, or nearly so. Both run counter-clockwise.
bool EdgeSeparates(std::span<const Vec3> a, std::span<const Vec3> b) {
    for (std::size_t i = 0, n = a.size(); i < n; ++i) {
        const Vec3& from = a[i];
        const Vec3& to = a[(i + 1) % n];
        const double slack = kTouch * Length(from, to);
        if (std::all_of(b.begin(), b.end(),
                        [&](const Vec3& p) { return Side(from, to, p) <= slack; }))
            return true;
    }
    return false;
}

bool Contains(std::span<const Vec3> outer, std::span<const Vec3> inner) {
    for (std::size_t i = 0, n = outer.size(); i < n; ++i) {
        const Vec3& from = outer[i];
        const Vec3& to = outer[(i + 1) % n];
        const double slack = -0.5 / kGridPerPixel * Length(from, to);
        for (const Vec3& p : inner)
            if (Side(from, to, p) < slack) return false;
    }
    return true;
}

/// The part of a convex polygon where `value`, linear in the place, is below 0.
template <class Value>
void ClipBelow(std::span<const Vec3> p, Value&& value, std::vector<Vec3>& out) {
    out.clear();
    for (std::size_t i = 0, n = p.size(); i < n; ++i) {
        const Vec3& a = p[i];
        const Vec3& b = p[(i + 1) % n];
        const double va = value(a);
        const double vb = value(b);
        if (va < 0.0) out.push_back(a);
        if ((va < 0.0) == (vb < 0.0)) continue;
        const double t = va / (va - vb);
        out.push_back({a.x + t * (b.x - a.x), a.y + t * (b.y - a.y), a.z + t * (b.z - a.z)});
    }
}

/// What hides a part of a polygon, and how much of its bounds at most, in square pixels.
struct Hider {
    ClipperLib::Path path;
    double overlap;
};

void Subtract(ClipperLib::Paths& from, const ClipperLib::Paths& what) {
    ClipperLib::Clipper clipper;
    clipper.AddPaths(from, ClipperLib::ptSubject, true);
    clipper.AddPaths(what, ClipperLib::ptClip, true);
    clipper.Execute(ClipperLib::ctDifference, from, ClipperLib::pftNonZero, ClipperLib::pftNonZero);
}

/// The number of the cell that a place lies in or is next to.
int CellAt(double at, int count) {
    return WholeWithin(at / kCell, 0, count - 1);
}

ClipperLib::Path ToPath(std::span<const Vec3> p) {
    ClipperLib::Path path;
    path.reserve(p.size());
    for (const Vec3& v : p)
        path.emplace_back(std::llround(v.x * kGridPerPixel), std::llround(v.y * kGridPerPixel));
    return path;
}

}  // namespace

Hiding::Hiding(double width, double height)
    : m_Width(width),
      m_Height(height),
      m_Columns(std::max(1, static_cast<int>(std::ceil(width / kCell)))),
      m_Rows(std::max(1, static_cast<int>(std::ceil(height / kCell)))),
      m_Cells(static_cast<std::size_t>(m_Columns) * static_cast<std::size_t>(m_Rows)) {
}

Hiding::Bounds Hiding::BoundsOf(std::span<const Vec3> corners) {
    Bounds bounds{corners[0].x, corners[0].y, corners[0].x, corners[0].y};
    for (const Vec3& p : corners)
        bounds = {std::min(bounds.left, p.x), std::min(bounds.bottom, p.y),
                  std::max(bounds.right, p.x), std::max(bounds.top, p.y)};
    return bounds;
}

/// Takes the corners, cut to the picture, to m_Corners.
Hiding::Facet Hiding::MakeFacet(std::span<const Vec3> corners) {
    Facet facet;
    std::vector<Vec3> a(corners.begin(), corners.end());
    std::vector<Vec3> b;
    if (Area2(a) < 0.0) std::reverse(a.begin(), a.end());
    ClipBelow(
        a, [](const Vec3& p) { return -p.x; }, b);
    ClipBelow(
        b, [](const Vec3& p) { return -p.y; }, a);
    ClipBelow(
        a, [this](const Vec3& p) { return p.x - m_Width; }, b);
    ClipBelow(
        b, [this](const Vec3& p) { return p.y - m_Height; }, a);
    // An edge without length has no sides.
    const auto same = [](const Vec3& p, const Vec3& q) {
        return std::hypot(p.x - q.x, p.y - q.y) < kNoLength;
    };
    a.erase(std::unique(a.begin(), a.end(), same), a.end());
    while (a.size() > 1 && same(a.front(), a.back()))
        a.pop_back();
    if (a.size() < 3) return facet;
    // The normal of the whole outline: the depth's slope is its ratio to the area seen.
    Vec3 normal{0.0, 0.0, 0.0};
    for (std::size_t i = 1; i + 1 < a.size(); ++i) {
        const Vec3 part = Cross(a[i] - a[0], a[i + 1] - a[0]);
        normal = {normal.x + part.x, normal.y + part.y, normal.z + part.z};
    }
    constexpr double kLeastArea = 1e-4;  // square pixels, twice
    if (!(normal.z > kLeastArea)) return facet;
    facet.first = static_cast<std::uint32_t>(m_Corners.size());
    facet.count = static_cast<std::uint32_t>(a.size());
    facet.slopeX = -normal.x / normal.z;
    facet.slopeY = -normal.y / normal.z;
    facet.depth = a[0].z - facet.slopeX * a[0].x - facet.slopeY * a[0].y;
    facet.bounds = BoundsOf(a);
    facet.nearest = facet.farthest = a[0].z;
    for (const Vec3& p : a) {
        facet.nearest = std::min(facet.nearest, p.z);
        facet.farthest = std::max(facet.farthest, p.z);
    }
    m_Corners.insert(m_Corners.end(), a.begin(), a.end());
    return facet;
}

std::size_t Hiding::AddFacet(std::span<const Vec3> corners, bool beneathLines) {
    ProgressStep();
    m_Facets.push_back(MakeFacet(corners));
    m_Facets.back().beneathLines = beneathLines;
    const std::size_t index = m_Facets.size() - 1;
    if (m_Facets[index].count > 0) Index(static_cast<std::uint32_t>(index));
    return index;
}

/// Calls visit(cell) for each cell that bounds touch, but for those that a polygon in them misses,
/// as a large slanted one misses many.
template <class Visit>
void Hiding::VisitCells(const Bounds& b, std::span<const Vec3> polygon, Visit&& visit) {
    const int lastRow = CellAt(b.top, m_Rows);
    const int lastColumn = CellAt(b.right, m_Columns);
    for (int row = CellAt(b.bottom, m_Rows); row <= lastRow; ++row)
        for (int column = CellAt(b.left, m_Columns); column <= lastColumn; ++column) {
            const double x = column * kCell;
            const double y = row * kCell;
            const Vec3 square[] = {
                {x, y, 0}, {x + kCell, y, 0}, {x + kCell, y + kCell, 0}, {x, y + kCell, 0}};
            if (polygon.size() > 2 && EdgeSeparates(polygon, square)) continue;
            visit(m_Cells[static_cast<std::size_t>(row) * static_cast<std::size_t>(m_Columns) +
                          static_cast<std::size_t>(column)]);
        }
}

void Hiding::Index(std::uint32_t facet) {
    VisitCells(m_Facets[facet].bounds, Corners(m_Facets[facet]),
               [facet](std::vector<std::uint32_t>& cell) { cell.push_back(facet); });
}

/// Calls visit(index, facet) for each facet that is not known to be hidden, whose bounds touch, but
/// for those in cells that a polygon in them misses.
template <class Visit>
void Hiding::VisitNear(const Bounds& bounds, std::span<const Vec3> polygon, Visit&& visit) {
    m_Stamps.resize(m_Facets.size(), 0);
    if (++m_Stamp % 16 == 0) Progress(0.0, 1.0);
    VisitCells(bounds, polygon, [&](const std::vector<std::uint32_t>& cell) {
        for (const std::uint32_t index : cell) {
            if (m_Stamps[index] == m_Stamp) continue;
            m_Stamps[index] = m_Stamp;
            const Facet& facet = m_Facets[index];
            const Bounds& b = facet.bounds;
            if (facet.hidden || b.left > bounds.right || b.right < bounds.left ||
                b.bottom > bounds.top || b.top < bounds.bottom)
                continue;
            visit(index, facet);
        }
    });
}

double Hiding::Extent(const Bounds& b) {
    return std::max(0.0, b.right - b.left) * std::max(0.0, b.top - b.bottom);
}

/// Of the bounds with those of a polygon, in square pixels.
double Hiding::Overlap(const Bounds& bounds, std::span<const Vec3> corners) {
    Bounds b = BoundsOf(corners);
    return Extent({std::max(b.left, bounds.left), std::max(b.bottom, bounds.bottom),
                   std::min(b.right, bounds.right), std::min(b.top, bounds.top)});
}

/// The facet's area without what lies before it. `order` tells which facets win at equal depth.
Area Hiding::Difference(const Facet& facet, std::size_t order) {
    std::vector<Hider> hiders;
    bool hidden = false;
    const std::span<const Vec3> own = Corners(facet);
    VisitNear(facet.bounds, own, [&](std::size_t index, const Facet& other) {
        const double slack = index > order ? kDepthSlack : -kDepthSlack;
        if (hidden || index == order || other.nearest > facet.farthest + slack ||
            EdgeSeparates(own, Corners(other)) || EdgeSeparates(Corners(other), own))
            return;
        const auto behind = [&](const Vec3& p) {
            return (other.slopeX - facet.slopeX) * p.x + (other.slopeY - facet.slopeY) * p.y +
                   other.depth - facet.depth - slack;
        };
        ClipBelow(Corners(other), behind, m_Clipped);
        if (m_Clipped.size() < 3 || EdgeSeparates(own, m_Clipped)) return;
        hidden = Contains(m_Clipped, own);
        hiders.push_back({ToPath(m_Clipped), Overlap(facet.bounds, m_Clipped)});
    });
    if (hidden) return {};
    ClipperLib::Paths shown{ToPath(own)};
    // Those that cover most come first: of what stands in a crowd, few leave nothing.
    std::stable_sort(hiders.begin(), hiders.end(),
                     [](const Hider& s, const Hider& t) { return s.overlap > t.overlap; });
    std::size_t next = 0;
    while (next < hiders.size() && !shown.empty()) {
        const bool large = hiders[next].overlap > kLargeShare * Extent(facet.bounds);
        std::vector<ClipperLib::Paths> group;
        for (; next < hiders.size() && !(large && group.size() == kTogether); ++next)
            group.push_back({std::move(hiders[next].path)});
        Subtract(shown, Unite(std::move(group), kMostHiders));
    }
    return FromPaths(shown);
}

void Hiding::Resolve() {
    // From the front: what is known to be hidden need not be looked at as a hider.
    std::vector<std::uint32_t> order;
    for (std::uint32_t i = 0; i < m_Facets.size(); ++i)
        if (m_Facets[i].count > 0) order.push_back(i);
    std::stable_sort(order.begin(), order.end(), [this](std::uint32_t a, std::uint32_t b) {
        return m_Facets[a].nearest < m_Facets[b].nearest;
    });
    double done = 0.0;
    for (const std::uint32_t index : order) {
        Progress(done++, static_cast<double>(order.size()));
        Area visible = Difference(m_Facets[index], index);
        m_Facets[index].hidden = visible.empty();
        m_Facets[index].visible = std::move(visible);
    }
}

Area Hiding::VisibleOf(std::span<const Vec3> corners) {
    const std::size_t kept = m_Corners.size();
    const Facet facet = MakeFacet(corners);
    Area area = facet.count > 0 ? Difference(facet, m_Facets.size()) : Area{};
    m_Corners.resize(kept);
    return area;
}

/// Calls visit(index, part, side) for each polygon that hides a part of a line, and the part. A
/// polygon hides what is behind it by more than its own slope makes up within `slack` pixels; one
/// that is drawn after the line hides it at equal depth. `side` is 0 but where the line runs along
/// the polygon's edge: 1 where the polygon lies to its left and -1 to its right.
template <class Visit>
void Hiding::VisitHiders(const Vec3& a, const Vec3& b, double slack, std::size_t after,
                         Visit&& visit) {
    const double length = Length(a, b);
    const Bounds bounds{std::min(a.x, b.x) - kAlong, std::min(a.y, b.y) - kAlong,
                        std::max(a.x, b.x) + kAlong, std::max(a.y, b.y) + kAlong};
    VisitNear(bounds, {}, [&](std::size_t index, const Facet& facet) {
        double from = 0.0;
        double to = 1.0;
        // Cuts to where a function that is va at the start and vb at the end is below 0.
        const auto cut = [&](double va, double vb) {
            if (va >= 0.0 && vb >= 0.0) to = -1.0;
            if ((va < 0.0) == (vb < 0.0)) return;
            const double t = va / (va - vb);
            if (va < 0.0)
                to = std::min(to, t);
            else
                from = std::max(from, t);
        };
        const double depthSlack =
            index >= after && !facet.beneathLines
                ? -kDepthSlack
                : kDepthSlack + slack * std::hypot(facet.slopeX, facet.slopeY);
        const auto behind = [&](const Vec3& p) {
            return facet.slopeX * p.x + facet.slopeY * p.y + facet.depth - p.z + depthSlack;
        };
        cut(behind(a), behind(b));
        const std::span<const Vec3> corners = Corners(facet);
        int along = 0;
        for (std::size_t i = 0; i < corners.size() && from < to; ++i) {
            const Vec3& p = corners[i];
            const Vec3& q = corners[(i + 1) % corners.size()];
            const double near = kAlong * Length(p, q);
            const double sa = Side(p, q, a);
            const double sb = Side(p, q, b);
            if (std::fabs(sa) <= near && std::fabs(sb) <= near)
                along = (q.x - p.x) * (b.x - a.x) + (q.y - p.y) * (b.y - a.y) > 0.0 ? 1 : -1;
            cut(-sa - near, -sb - near);
        }
        if ((to - from) * length > kShortestRun || (length == 0.0 && from < to))
            visit(index, SegmentPart{from, to}, length > 0.0 ? along : 0);
    });
}

/// What hides a line that runs along edges hides it where there is something at both sides.
void Hiding::FindHidden(const Vec3& a, const Vec3& b, std::size_t after) {
    m_Hidden.clear();
    m_Left.clear();
    m_Right.clear();
    VisitHiders(a, b, kLineSlack, after, [this](std::size_t, const SegmentPart& part, int side) {
        (side == 0 ? m_Hidden : side > 0 ? m_Left : m_Right).push_back(part);
    });
    for (const SegmentPart& left : m_Left)
        for (const SegmentPart& right : m_Right)
            if (std::max(left.from, right.from) < std::min(left.to, right.to))
                m_Hidden.push_back({std::max(left.from, right.from), std::min(left.to, right.to)});
    std::sort(m_Hidden.begin(), m_Hidden.end(),
              [](const SegmentPart& s, const SegmentPart& t) { return s.from < t.from; });
}

void Hiding::VisibleParts(const Vec3& a, const Vec3& b, std::vector<SegmentPart>& parts,
                          std::size_t after) {
    parts.clear();
    FindHidden(a, b, after);
    const double length = std::hypot(b.x - a.x, b.y - a.y);
    const double shortest = length > 0.0 ? kShortestRun / length : 0.0;
    double at = 0.0;
    for (const SegmentPart& run : m_Hidden) {
        if (run.from - at > shortest) parts.push_back({at, run.from});
        at = std::max(at, run.to);
    }
    if (1.0 - at > shortest || at == 0.0) parts.push_back({at, 1.0});
}

void Hiding::Overlappers(const Vec3& a, const Vec3& b, double width,
                         std::vector<std::size_t>& facets) {
    facets.clear();
    const double length = std::hypot(b.x - a.x, b.y - a.y);
    const double aside = width / 2.0 - kHardlyOver;
    if (!(length > 0.0) || !(aside > 0.0)) return;
    for (const double side : {aside / length, -aside / length}) {
        const Vec3 shift{-(b.y - a.y) * side, (b.x - a.x) * side, 0.0};
        VisitHiders({a.x + shift.x, a.y + shift.y, a.z}, {b.x + shift.x, b.y + shift.y, b.z},
                    aside + 2.0 * kHardlyOver, kLast,
                    [&](std::size_t index, const SegmentPart& part, int) {
                        if ((part.to - part.from) * length > kHardlyOver) facets.push_back(index);
                    });
    }
}

}  // namespace varnel::detail
