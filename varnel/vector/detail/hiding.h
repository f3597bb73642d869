// Which parts of flat polygons and of lines show in a picture: exact areas instead of pixels.
//
// The picture has no perspective, so a flat polygon is an area of the picture whose depth is a
// linear function of the place. What hides it are the areas of other polygons where their depth is
// smaller, and what shows is the difference of areas: no order of the polygons is needed, and
// polygons that cross or overlap in a circle are right by themselves. Coordinates are pixels from
// the lower left corner, z is the depth (smaller is nearer, the box of a picture is 2 deep).
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "varnel/platform/detail/page_canvas.h"
#include "varnel/render/detail/matrix_stack.h"

namespace varnel::detail {

/// The place of the page that is nearest.
inline GridPoint ToGrid(const Vec3& p) {
    return {static_cast<std::int32_t>(std::lround(p.x * kGridPerPixel)),
            static_cast<std::int32_t>(std::lround(p.y * kGridPerPixel))};
}

/// A run of a segment, 0 at its start and 1 at its end.
struct SegmentPart {
    double from, to;
};

class Hiding {
 public:
    static constexpr std::size_t kLast = ~std::size_t{0};

    /// For a picture of this size in pixels. What lies outside it neither shows nor hides.
    Hiding(double width, double height);

    /// Adds a flat convex polygon that hides what is behind it. At equal depth the one that was
    /// added later hides the earlier one; one that is `beneathLines` hides no line then. Returns
    /// its index.
    std::size_t AddFacet(std::span<const Vec3> corners, bool beneathLines = false);

    /// Finds what shows of every polygon that was added.
    void Resolve();

    /// What shows of a polygon, after Resolve. Empty when nothing does.
    const Area& Visible(std::size_t facet) const { return m_Facets[facet].visible; }

    /// What shows of a flat convex polygon that hides nothing itself and wins at equal depth, such
    /// as the place of a text.
    Area VisibleOf(std::span<const Vec3> corners);

    /// The parts of a line from a to b that show, from a on. At equal depth it is hidden by the
    /// polygons from index `after` on, which are drawn after it.
    void VisibleParts(const Vec3& a, const Vec3& b, std::vector<SegmentPart>& parts,
                      std::size_t after = kLast);

    /// The polygons that stand before a line, of a width in pixels, whose middle shows, and cover a
    /// part of its sides.
    void Overlappers(const Vec3& a, const Vec3& b, double width, std::vector<std::size_t>& facets);

 private:
    struct Bounds {
        double left, bottom, right, top;
    };
    struct Facet {
        std::uint32_t first = 0;  ///< in m_Corners, counter-clockwise
        std::uint32_t count = 0;  ///< 0: covers nothing
        Bounds bounds{};
        double slopeX = 0.0, slopeY = 0.0, depth = 0.0;  ///< z = slopeX x + slopeY y + depth
        double nearest = 0.0, farthest = 0.0;
        bool beneathLines = false;
        bool hidden = false;  ///< by others, which then hide whatever this one would
        Area visible;
    };

    static Bounds BoundsOf(std::span<const Vec3> corners);
    static double Extent(const Bounds& bounds);
    static double Overlap(const Bounds& bounds, std::span<const Vec3> corners);
    Facet MakeFacet(std::span<const Vec3> corners);
    std::span<const Vec3> Corners(const Facet& facet) const {
        return {m_Corners.data() + facet.first, facet.count};
    }
    Area Difference(const Facet& facet, std::size_t order);
    template <class Visit>
    void VisitCells(const Bounds& bounds, std::span<const Vec3> polygon, Visit&& visit);
    template <class Visit>
    void VisitNear(const Bounds& bounds, std::span<const Vec3> polygon, Visit&& visit);
    template <class Visit>
    void VisitHiders(const Vec3& a, const Vec3& b, double slack, std::size_t after, Visit&& visit);
    void FindHidden(const Vec3& a, const Vec3& b, std::size_t after);
    void Index(std::uint32_t facet);

    double m_Width, m_Height;
    int m_Columns, m_Rows;
    std::vector<Vec3> m_Corners;
    std::vector<Facet> m_Facets;
    std::vector<std::vector<std::uint32_t>> m_Cells;
    std::vector<std::uint32_t> m_Stamps;  ///< which facets the walk at hand has seen
    std::uint32_t m_Stamp = 0;
    // Scratch memory of the walks.
    std::vector<Vec3> m_Clipped;
    std::vector<SegmentPart> m_Hidden, m_Left, m_Right;
};

}  // namespace varnel::detail
