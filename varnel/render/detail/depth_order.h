// The order from the back to the front of polygons that can be seen through.
//
// The planes of the large polygons part space, one after the other (H. Fuchs, Z. Kedem, B. Naylor,
// "On visible surface generation by a priori tree structures", 1980). Large polygons are split
// where they pass through such a plane, small ones lie on the side of their middle; what lies in
// one plane keeps its order, and what no plane parts is ordered by the depth of its middle. All
// places are device coordinates: the viewer is at -z.
#pragma once

#include <cstdint>
#include <vector>

#include "varnel/render/detail/primitive_batch.h"

namespace varnel::detail {

/// `count` vertices from `first` on: a convex polygon.
struct DepthItem {
    std::uint32_t key;  ///< grows from the back to the front
    std::uint32_t first, count;
    std::int32_t look;    ///< kept with it
    bool large = false;   ///< to be split
    bool plane = false;   ///< parts others
    float nearer = 0.0F;  ///< lies so much in front of its vertices
};

class DepthOrder {
 public:
    /// Splits add their vertices.
    explicit DepthOrder(std::vector<FillVertex>& vertices) : m_Vertices(vertices) {}

    /// The items, and the parts of those that were split, from the back to the front.
    std::vector<DepthItem> Order(std::vector<DepthItem> items);

    /// Whether a polygon lies in one plane.
    static bool IsFlat(const FillVertex* corners, std::size_t n);

 private:
    struct Plane {
        Vec3 normal;  ///< towards the viewer
        double distance;
    };

    static bool IsNarrow(const FillVertex* corners, std::size_t n);
    static Plane PlaneOf(const FillVertex* corners, std::size_t n);
    double Side(const Plane& plane, const FillVertex& vertex, float nearer) const;
    void Part(std::vector<DepthItem> items);
    void Split(const Plane& plane, const DepthItem& item, DepthItem& behind, DepthItem& before);

    std::vector<FillVertex>& m_Vertices;
    std::vector<DepthItem> m_Ordered;
};

}  // namespace varnel::detail
