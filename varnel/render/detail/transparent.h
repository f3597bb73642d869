// What can be seen through: polygons, and lines as thin polygons, that are kept until everything
// opaque stands, and are then drawn over it from the back to the front.
//
// Small polygons are sorted as wholes, by the mean depth of their corners. Those larger than 40
// pixels are split where they pass through each other (depth_order.h); where these are very many
// they are cut into triangles with edges no longer than 40 pixels instead and sorted with the
// others.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "varnel/foundation/viewports.h"
#include "varnel/render/detail/depth_order.h"
#include "varnel/render/detail/primitive_batch.h"

namespace varnel::detail {

class TransparentBatch {
 public:
    /// Lines and letters come after the polygons that they lie on.
    static constexpr double kLinesNearer = 0.002;

    /// What polygons are drawn with besides their vertices.
    struct Look {
        FillState state;
        bool clipping = false;
        std::array<std::array<double, 4>, 6> clipPlanes{};
        bool once = false;  ///< what overlaps at one depth is seen once
        bool operator==(const Look&) const = default;
    };
    /// Indices that share a look.
    struct Run {
        std::size_t look;
        std::size_t first, count;
    };

    /// The pixels by which lengths are measured.
    void SetViewport(const GLViewportType& viewport);
    /// A convex polygon of n >= 3 corners; `texture` has n coordinates or is null. What lies on
    /// others is `nearer` than it is by some depth.
    void AddPolygon(const Look& look, const Vec3* corners, const PackedColor* colors,
                    const double* texture, int n, double nearer = 0.0);
    /// A depth of its own for each line whose pieces are drawn with Look::once, before what lies
    /// at a depth.
    double DepthOfLine(double depth);
    /// A line as wide as that many pixels of the viewport.
    void AddSegment(const Vec3& a, const Vec3& b, PackedColor color, double width);
    bool IsEmpty() const { return m_Items.empty(); }

    /// Puts indices and runs into their order.
    void Sort();
    const std::vector<FillVertex>& Vertices() const { return m_Vertices; }
    const std::vector<std::uint32_t>& Indices() const { return m_Indices; }
    const std::vector<Run>& Runs() const { return m_Runs; }
    const Look& LookOf(const Run& run) const { return m_Looks[run.look]; }
    void Clear();

 private:
    std::int32_t NumberOf(const Look& look);
    void AddItem(std::size_t first, std::int32_t look, double nearer, bool large = false);
    void CutLarge();
    void SortByDepth();
    void AddPieces(const std::array<FillVertex, 3>& corners, std::int32_t look, int depth);
    double PixelsBetween(const FillVertex& a, const FillVertex& b) const;

    double m_HalfWidth = 1.0;  ///< of the viewport, in pixels
    double m_HalfHeight = 1.0;
    std::vector<Look> m_Looks;
    std::vector<FillVertex> m_Vertices;
    std::vector<DepthItem> m_Items, m_Spare;
    std::size_t m_NumLarge = 0;
    int m_NumLines = 0;
    std::vector<std::uint32_t> m_Indices;
    std::vector<Run> m_Runs;
};

}  // namespace varnel::detail
