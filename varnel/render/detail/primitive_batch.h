// Primitives on their way to OpenGL: triangles and line segments in normalized device coordinates.
//
// The arrays keep their memory between drawings, so that collecting does not allocate once the
// largest picture has been drawn. Lines are kept by width, which is the only state that differs
// between the lines of one collection.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "varnel/foundation/colors.h"
#include "varnel/render/detail/matrix_stack.h"

namespace varnel::detail {

/// Red, green, blue and 255 as bytes, in this order in memory: what OpenGL takes fastest.
struct PackedColor {
    std::array<std::uint8_t, 4> bytes;
    bool operator==(const PackedColor& other) const {
        return std::bit_cast<std::uint32_t>(bytes) == std::bit_cast<std::uint32_t>(other.bytes);
    }
};

/// Components outside of 0..1 count as 0 or 1.
inline PackedColor Pack(const RGBDType& c) {
    const auto byte = [](double v) {
        // NaN is black.
        return static_cast<std::uint8_t>(v > 0.0 ? (v < 1.0 ? v * 255.0 + 0.5 : 255.0) : 0.0);
    };
    return {{byte(c.r), byte(c.g), byte(c.b), 255}};
}

/// With the colour's alpha.
inline PackedColor PackWithAlpha(const RGBDType& c) {
    PackedColor packed = Pack(c);
    packed.bytes[3] = Pack({c.a, 0.0, 0.0, 1.0}).bytes[0];
    return packed;
}

struct FillVertex {
    float position[3];
    PackedColor color;  ///< as it is seen, light included
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
    PackedColor color;
};

inline LineVertex MakeLineVertex(const Vec3& p, PackedColor color) {
    return {{static_cast<float>(p.x), static_cast<float>(p.y), static_cast<float>(p.z)}, color};
}

/// The state that all fills of one collection share.
struct FillState {
    bool textured = false;
    bool framed = false;  ///< pushed back, so that the frame wins
    bool shaded = false;  ///< textured, and the texture's colours are multiplied by the fills'
    bool operator==(const FillState&) const = default;
};

/// One polygon of a batch, kept for sinks that want it: `count` places from `first` on.
struct PolygonRecord {
    std::uint32_t first;
    std::uint32_t count;
    RGBDType color;  ///< before lighting
    bool lit;        ///< whether it is seen in the scene's light: its corners' colours have it
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
    /// Of sinks that join lines by themselves: joins are cut off, not round.
    bool cutJoins = false;
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

    bool KeepsRecords() const { return m_KeepRecords; }

    /// A convex polygon of n >= 3 corners; `texture` has n coordinates or is null.
    void AddPolygon(const FillState& state, PackedColor color, const Vec3* corners,
                    const double* texture, int n);
    /// Gives the n corners of the polygon that was added last colours of their own.
    void ColorCorners(const PackedColor* colors, int n);
    /// A convex polygon of n >= 3 corners in flat colours of their own.
    void AddFan(const FillState& state, const FillVertex* corners, int n);
    /// The record of the polygon of n corners that was added last.
    void AddRecord(int n, const RGBDType& color, bool lit, const Element& element);

    /// The segments of a polyline of n vertices for which visible(i), the segment from vertex i to
    /// the next, holds.
    template <class Visible>
    void AddPolyline(LineRun& run, const LineVertex* vertices, std::size_t n,
                     const Element& element, Visible&& visible);

    /// The segments of a polyline of n corners in one colour, each once, for which visible(i)
    /// holds; `closed` joins its ends.
    template <class Visible>
    void AddOutline(float width, const Vec3* corners, int n, bool closed, const RGBDType& color,
                    const Element& element, Visible&& visible);

    /// One segment of a run of RunOfWidth.
    void AddSegment(LineRun& run, const LineVertex& a, const LineVertex& b, const Element& element);
    LineRun& RunOfWidth(float width, bool cutJoins = false);

    /// The polygons, where records are kept.
    const std::vector<PolygonRecord>& Polygons() const { return m_Polygons; }
    /// The colour of a polygon as it is seen, the mean of its corners'.
    RGBDType MeanColor(const PolygonRecord& polygon) const;
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

    void AddFanIndices(std::uint32_t first, std::size_t count);
    std::uint32_t AddVertex(LineRun& run, const LineVertex& vertex);
    void Join(LineRun& run, std::uint32_t a, std::uint32_t b, const Element& element);

    bool m_KeepRecords = false;
    FillState m_State;
    std::vector<PolygonRecord> m_Polygons;
    std::vector<FillVertex> m_Vertices;
    std::vector<std::uint32_t> m_Indices;
    std::vector<LineRun> m_Lines;
    std::size_t m_LineVertexCount = 0;
};

inline std::uint32_t PrimitiveBatch::AddVertex(LineRun& run, const LineVertex& vertex) {
    run.vertices.push_back(vertex);
    ++m_LineVertexCount;
    return static_cast<std::uint32_t>(run.vertices.size()) - 1;
}

inline void PrimitiveBatch::Join(LineRun& run, std::uint32_t a, std::uint32_t b,
                                 const Element& element) {
    run.indices.push_back(a);
    run.indices.push_back(b);
    if (m_KeepRecords) run.elements.push_back(element);
}

inline void PrimitiveBatch::AddSegment(LineRun& run, const LineVertex& a, const LineVertex& b,
                                       const Element& element) {
    const std::uint32_t first = AddVertex(run, a);
    Join(run, first, AddVertex(run, b), element);
}

template <class Visible>
void PrimitiveBatch::AddPolyline(LineRun& run, const LineVertex* vertices, std::size_t n,
                                 const Element& element, Visible&& visible) {
    if (n < 2) return;
    std::uint32_t start = 0;
    bool hasStart = false;
    for (std::size_t i = 0; i + 1 < n; ++i) {
        if (!visible(i)) {
            hasStart = false;
            continue;
        }
        if (!hasStart) start = AddVertex(run, vertices[i]);
        const std::uint32_t end = AddVertex(run, vertices[i + 1]);
        Join(run, start, end, element);
        start = end;
        hasStart = true;
    }
}

template <class Visible>
void PrimitiveBatch::AddOutline(float width, const Vec3* corners, int n, bool closed,
                                const RGBDType& color, const Element& element, Visible&& visible) {
    LineRun& run = RunOfWidth(width);
    const auto first = static_cast<std::uint32_t>(run.vertices.size());
    const PackedColor packed = m_KeepRecords ? PackWithAlpha(color) : Pack(color);
    for (int i = 0; i < n; ++i)
        AddVertex(run, MakeLineVertex(corners[i], packed));
    const auto count = static_cast<std::uint32_t>(n);
    for (std::uint32_t i = 0; i < (closed ? count : count - 1); ++i) {
        const std::uint32_t a = first + i;
        const std::uint32_t b = i + 1 < count ? a + 1 : first;
        if (visible(static_cast<int>(i)) && run.edges.Insert(run.vertices, a, b))
            Join(run, a, b, element);
    }
}

}  // namespace varnel::detail
