// The normals at the points of a mesh, by which light runs evenly over its polygons.
//
// The normal of a point is the mean of those of the polygons that share it, each weighted by its
// area. Where polygons meet at more than the crease angle the edge between them stays sharp: each
// has the mean of those at the point that it meets at less. Polygons with a point that is no data
// do not count.
#pragma once

#include <cstdint>
#include <vector>

#include "varnel/render/detail/mesh.h"

namespace varnel::detail {

class MeshNormals {
 public:
    /// The crease angle, in degrees, and areas are those of the mesh with its coordinates
    /// multiplied by `scale`: in the proportions in which it is seen.
    MeshNormals(const MeshSource& mesh, const Vec3& scale, double crease);

    /// Whether polygons have normals of their own at a point.
    bool IsSharp(int point) const {
        return !m_Sharp.empty() && m_Sharp[static_cast<std::size_t>(point)] != 0;
    }
    /// In the coordinates of the mesh, at no particular length; 0 where there is none.
    Vec3 At(int polygon, int point) const {
        if (IsSharp(point)) return AtCorner(polygon, point);
        return ToVec3(m_Points[static_cast<std::size_t>(point)]);
    }

 private:
    struct Direction {
        float x, y, z;
    };
    struct Corner {
        int polygon, point;
        Direction normal;
    };

    static Vec3 ToVec3(const Direction& d) {
        return {static_cast<double>(d.x), static_cast<double>(d.y), static_cast<double>(d.z)};
    }
    static Direction ToDirection(const Vec3& v) {
        return {static_cast<float>(v.x), static_cast<float>(v.y), static_cast<float>(v.z)};
    }
    Vec3 AtCorner(int polygon, int point) const;
    void AddAreas(const MeshSource& mesh, const Vec3& scale);
    bool FindSharpPoints(const MeshSource& mesh, double crease);
    void SplitSharpPoints(const MeshSource& mesh, double crease);

    std::vector<Direction>
        m_Areas;  ///< of the polygons, along their normals; while they are needed
    std::vector<Direction> m_Points;    ///< lengths 1 or 0
    std::vector<std::uint8_t> m_Sharp;  ///< 1 for points with edges; empty when there are none
    std::vector<Corner> m_Corners;      ///< of the polygons at these, in their order
};

}  // namespace varnel::detail
