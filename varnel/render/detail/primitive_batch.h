// Primitives on their way to OpenGL: triangles and line segments in normalized device coordinates.
//
// The arrays keep their memory between drawings, so that collecting does not allocate once the
// largest picture has been drawn. Lines are kept by width, which is the only state that differs
// between the lines of one collection.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "varnel/foundation/colors.h"
#include "varnel/render/detail/matrix_stack.h"

namespace varnel::detail {

struct FillVertex {
    float position[3];
    float normal[3];
    float color[3];
    float texture;
};

/// What a primitive stands for: the chart object and the datum in it, -1 for none.
struct Element {
    int object = -1;
    int index = -1;
    bool operator==(const Element&) const = default;
};

struct LineVertex {
    float position[3];
    float color[3];
};

/// The state that all fills of one collection share.
struct FillState {
    bool lit = false;
    bool textured = false;
    bool framed = false;  ///< pushed back, so that the frame wins
    bool operator==(const FillState&) const = default;
};

/// How a polygon looks, and what it stands for.
struct PolygonLook {
    FillState state;
    RGBDType color;  ///< before lighting
    Vec3 normal{};   ///< device coordinates, length 1 or 0
    Element element;
};

/// One polygon of a batch, kept for sinks that want it: `count` places from `first` on.
struct PolygonRecord {
    std::uint32_t first;
    std::uint32_t count;
    Vec3 normal;
    RGBDType color;  ///< before lighting
    Element element;
};

/// Remembers the segments of a run, so that an edge that two polygons share is drawn once. Lines
/// are the dearest primitive of a software rasterizer, and nearly every edge of a mesh is shared.
class EdgeFilter {
 public:
    /// Whether the segment from `a` to `b`, in either direction and in the same colour, is new.
    bool Insert(const std::vector<LineVertex>& vertices, std::uint32_t a, std::uint32_t b);
    void Reset();

 private:
    struct Slot {
        std::uint32_t a = 0;
        std::uint32_t b = 0;
        std::uint32_t generation = 0;  ///< the slot is in use when this is the filter's
    };
    std::vector<Slot> m_Slots;
    std::size_t m_Used = 0;
    std::uint32_t m_Generation = 1;
};

struct LineRun {
    float width = 1.0F;  ///< pixels
    std::vector<LineVertex> vertices;
    std::vector<std::uint32_t> indices;
    std::vector<Element> elements;  ///< of each segment, where records are kept
    EdgeFilter edges;
};

class PrimitiveBatch {
 public:
    /// Whether fills of this state can join those that are waiting.
    bool Accepts(const FillState& state) const { return m_Vertices.empty() || state == m_State; }

    /// Whether records of polygons and elements of segments are kept; the batch must be empty.
    void KeepRecords(bool on) { m_KeepRecords = on; }

    /// A convex polygon of n >= 3 corners; `texture` has n coordinates or is null.
    void AddPolygon(const PolygonLook& look, const Vec3* corners, const double* texture, int n);

    /// The segments of a polyline; fewer than two vertices are none.
    void AddPolyline(float width, const std::vector<LineVertex>& vertices, const Element& element);

    /// The segments of a polyline of n corners in one colour, each once; `closed` joins its ends.
    void AddOutline(float width, const Vec3* corners, int n, bool closed, const RGBDType& color,
                    const Element& element);

    /// The polygons, where records are kept.
    const std::vector<PolygonRecord>& Polygons() const { return m_Polygons; }
    /// Place and texture coordinate of a polygon's corner.
    Vec3 Corner(std::uint32_t vertex) const;
    double TextureAt(std::uint32_t vertex) const;

    const std::vector<FillVertex>& Vertices() const { return m_Vertices; }
    const std::vector<std::uint32_t>& Indices() const { return m_Indices; }
    const FillState& State() const { return m_State; }
    const std::vector<LineRun>& Lines() const { return m_Lines; }

    bool IsEmpty() const { return m_Vertices.empty() && m_LineVertexCount == 0; }
    /// Whether so much is waiting that it is better drawn now, while it is in the caches.
    bool IsLarge() const { return m_Vertices.size() + m_LineVertexCount > kLarge; }
    void Clear();

 private:
    static constexpr std::size_t kLarge = 1U << 14;

    LineRun& RunOfWidth(float width);

    bool m_KeepRecords = false;
    FillState m_State;
    std::vector<PolygonRecord> m_Polygons;
    std::vector<FillVertex> m_Vertices;
    std::vector<std::uint32_t> m_Indices;
    std::vector<LineRun> m_Lines;
    std::size_t m_LineVertexCount = 0;
};

}  // namespace varnel::detail
