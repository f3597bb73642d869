// A mesh on its way to the image: points that polygons name by number.
//
// Each point is placed once a drawing, however many polygons share it, and each edge between two
// polygons is drawn once. Polygons and edges that cannot be seen are left out before anything else
// is computed for them, which in a large mesh is most of them.
#pragma once

#include <cstdint>
#include <vector>

#include "varnel/foundation/colors.h"
#include "varnel/foundation/points.h"
#include "varnel/render/detail/renderer.h"
#include "varnel/render/detail/scene.h"

namespace varnel::detail {

class MeshNormals;

/// Where a mesh comes from. Points and polygons are numbered from 0.
class MeshSource {
 public:
    MeshSource() = default;
    MeshSource(const MeshSource&) = delete;
    MeshSource& operator=(const MeshSource&) = delete;
    virtual ~MeshSource() = default;

    virtual int NumPoints() const = 0;
    virtual int NumPolygons() const = 0;
    /// `count` points from `first` on in the coordinates of the current matrix: where they are
    /// kept, all in one array, or always in `scratch`, which has room for them. A point that is no
    /// data has a coordinate that is not finite, and the polygons at it are left out.
    virtual const point3Dtype* Points(int first, int count, point3Dtype* scratch) const = 0;
    /// The numbers of the n points of polygon k; n may be 0. Valid until the next call.
    virtual const int* Polygon(int k, int& n) const = 0;
    /// The colours of polygon k: of its fill, and of its frame.
    virtual void Colors(int k, RGBDType& fill, RGBDType& frame) const = 0;
};

/// How a mesh is drawn.
struct MeshLook {
    SurfaceStyle style;     ///< its colour is that of the polygons, where these count
    bool filled = true;     ///< else the frames alone are drawn
    bool framed = false;    ///< each polygon's outline in its frame colour
    bool ownColors = true;  ///< whether fills take the colour of their polygon, or that of `style`
    bool oneLineColor = false;  ///< frames are drawn in `lineColor`
    RGBDType lineColor;
    const MeshNormals* normals = nullptr;  ///< light runs evenly over the mesh; not owned
};

/// Remembers the edges drawn last, by the numbers of their points, so that an edge that two
/// polygons share is drawn once. An edge that was forgotten meanwhile is drawn again, which changes
/// nothing.
class MeshEdges {
 public:
    /// Forgets all edges; makes room for a mesh of so many polygons.
    void Reset(int numPolygons);
    /// Whether the edge between two points, in either direction and in the same colour, is new.
    bool Insert(int a, int b, PackedColor color);

 private:
    struct Slot {
        int low = -1;
        int high = -1;
        PackedColor color{};
        bool operator==(const Slot&) const = default;
    };
    std::vector<Slot> m_Slots;
    unsigned m_Shift = 0;
};

/// Draws meshes; keeps its memory from one to the next.
class MeshPainter {
 public:
    /// Adds a mesh to what the renderer collects; lines have the renderer's width.
    void Paint(Renderer& renderer, const MeshSource& mesh, const MeshLook& look);

 private:
    /// A point in device coordinates; a point that is no data has NaN everywhere.
    struct Place {
        float x, y, z;
    };

    static Vec3 ToVec3(const Place& p) {
        return {static_cast<double>(p.x), static_cast<double>(p.y), static_cast<double>(p.z)};
    }

    /// How a point lies to the light; kept, since several polygons share it.
    struct PointLight {
        float toLight, toHighlight, aside;
    };

    void PlacePoints(const MatrixStack& matrix, const MeshSource& mesh);
    bool Gather(const Coverage& coverage, const int* numbers, int n);
    Turned LightOf(const Renderer& renderer, const MeshNormals& normals, int k, int point);
    void AddFill(Renderer& renderer, const MeshSource& mesh, const SurfaceStyle& style,
                 const MeshNormals* normals, int k);
    void AddFrame(Renderer& renderer, LineRun& run, const int* numbers, int n,
                  const RGBDType& color);

    std::vector<Place> m_Places;
    const point3Dtype* m_Kept = nullptr;  ///< all points, where the mesh keeps them as they are
    std::vector<WindowPoint> m_Window;    ///< of the polygon at hand
    std::vector<point3Dtype> m_Corners;
    std::vector<PointLight> m_Light;  ///< of the points that were asked for
    std::vector<Turned> m_Turned;     ///< of the corners
    MeshEdges m_Edges;
    bool m_AllSegments = true;
};

}  // namespace varnel::detail
