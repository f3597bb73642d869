// Surfaces: the polygons of a mesh in working coordinates, as they are or flattened onto a plane.
#pragma once

#include <algorithm>
#include <limits>
#include <span>

#include "varnel/chartobj/detail/chart_data.h"
#include "varnel/render/detail/mesh.h"
#include "varnel/surface/detail/polygon_reader.h"
#include "varnel/surface/polysurface.h"
#include "varnel/transform/transform.h"

namespace varnel::detail {

/// Where a flattened surface lies: plane 0 sets z to the level, 1 y, 2 x; any other flattens
/// nothing.
struct Flattening {
    int plane = -1;
    double level = 0.0;
};

/// The mesh of a surface in working coordinates. Points with a coordinate that is no data are no
/// data, even where the flattening replaces that coordinate.
class SurfaceMesh final : public MeshSource {
 public:
    SurfaceMesh(const CTransform3D& transform, const CPolysurface& surface, const Flattening& flat)
        : m_Transform(transform),
          m_Surface(surface),
          m_Reader(surface),
          m_Flat(flat),
          m_AsTheyAre(flat.plane < 0 || flat.plane > 2) {
        for (int axis = 0; axis < 3; ++axis)
            m_AsTheyAre = m_AsTheyAre && transform.GetAxisScaleMode(axis) == 0;
    }

    /// The plane of the flattening.
    int GetPlane() const { return m_Flat.plane; }

    // The spare points take part: hosts may use them.
    int NumPoints() const override {
        constexpr int kSpare = 4;
        return m_Surface.GetPSPoints() != nullptr ? m_Surface.GetPSNumPoints() + kSpare : 0;
    }
    int NumPolygons() const override { return m_Surface.GetPSNumPolygons(); }
    const point3Dtype* Points(int first, int count, point3Dtype* scratch) const override {
        const point3Dtype* points = m_Surface.GetPSPoints() + first;
        if (m_AsTheyAre) return points;
        std::copy_n(points, count, scratch);
        for (point3Dtype& p : std::span(scratch, static_cast<std::size_t>(count)))
            p = Place(p);
        return scratch;
    }
    const int* Polygon(int k, int& n) const override { return m_Reader.Read(k, n); }
    void Colors(int k, RGBDType& fill, RGBDType& frame) const override {
        m_Surface.FindPSColors(k, fill, frame);
    }

 private:
    point3Dtype Place(point3Dtype p) const {
        constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
        if (!IsData(p)) return {kNone, kNone, kNone, kNone};
        if (m_Flat.plane >= 0 && m_Flat.plane <= 2) coordassign(p, 2 - m_Flat.plane, m_Flat.level);
        return m_Transform.CPTWS(p);
    }

    const CTransform3D& m_Transform;
    const CPolysurface& m_Surface;
    mutable PolygonReader m_Reader;
    Flattening m_Flat;
    bool m_AsTheyAre;
};

}  // namespace varnel::detail
