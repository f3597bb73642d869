// The normals of a surface as it is drawn, kept from one picture to the next.
//
// They hold while the surface, the scale modes of its axes, the proportions of the box and the
// crease angle are the same; turning the chart changes none of them.
#pragma once

#include <array>
#include <cmath>
#include <memory>

#include "varnel/chartobj/detail/surfaces_geometry.h"
#include "varnel/render/detail/mesh_normals.h"
#include "varnel/surface/polysurface.h"
#include "varnel/transform/transform.h"

namespace varnel::detail {

struct SurfaceNormals {
    /// The normals of a mesh of `surface` under `transform`, computed if they are others than those
    /// asked for last.
    const MeshNormals& Of(const std::shared_ptr<CPolysurface>& surface, const SurfaceMesh& mesh,
                          const CTransform3D& transform, double crease) {
        Key key{mesh.GetPlane(), ScaleModes(transform), Proportions(transform), crease};
        const bool same = m_Normals != nullptr && m_Surface.lock() == surface &&
                          m_Revision == surface->GetRevision() && IsNear(key, m_Key);
        if (same) return *m_Normals;
        m_Normals = std::make_unique<MeshNormals>(mesh, key.scale, crease);
        m_Surface = surface;
        m_Revision = surface->GetRevision();
        m_Key = key;
        return *m_Normals;
    }

 private:
    struct Key {
        int plane = -1;
        std::array<int, 3> modes{};
        Vec3 scale{};
        double crease = 0.0;
    };

    static std::array<int, 3> ScaleModes(const CTransform3D& transform) {
        return {transform.GetAxisScaleMode(0), transform.GetAxisScaleMode(1),
                transform.GetAxisScaleMode(2)};
    }

    /// Factors that take working coordinates to those of the box, the largest 1.
    static Vec3 Proportions(const CTransform3D& transform) {
        const point3Dtype rect = transform.GetDrawnRect();
        std::array<double, 3> scale{};
        double largest = 0.0;
        for (int axis = 0; axis < 3; ++axis) {
            const double range = std::fabs(transform.GetAxisWorkingRange(axis));
            double& s = scale[static_cast<std::size_t>(axis)];
            s = range > 0.0 ? std::fabs(GetCoord3D(rect, axis)) / range : 0.0;
            largest = std::max(largest, s);
        }
        if (!(largest > 0.0) || !std::isfinite(largest)) return {1.0, 1.0, 1.0};
        return {scale[0] / largest, scale[1] / largest, scale[2] / largest};
    }

    static bool IsNear(const Key& a, const Key& b) {
        const auto near = [](double s, double t) {
            return std::fabs(s - t) <= 1e-3 * std::max(s, t);
        };
        return a.plane == b.plane && a.modes == b.modes && a.crease == b.crease &&
               near(a.scale.x, b.scale.x) && near(a.scale.y, b.scale.y) &&
               near(a.scale.z, b.scale.z);
    }

    std::weak_ptr<const CPolysurface> m_Surface;
    long long m_Revision = 0;
    Key m_Key;
    std::unique_ptr<MeshNormals> m_Normals;
};

}  // namespace varnel::detail
