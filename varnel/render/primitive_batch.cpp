#include "varnel/render/detail/primitive_batch.h"

#include <algorithm>
#include <bit>

namespace varnel::detail {
namespace {

void Store(float out[3], double a, double b, double c) {
    out[0] = static_cast<float>(a);
    out[1] = static_cast<float>(b);
    out[2] = static_cast<float>(c);
}

/// Mixes the bits of a vertex's place.
std::uint64_t Hash(const LineVertex& v) {
    std::uint64_t h = 0;
    for (float coordinate : v.position)
        h = (h ^ std::bit_cast<std::uint32_t>(coordinate)) * 0x9E3779B97F4A7C15ULL;
    return h ^ (h >> 29);
}

bool Same(const LineVertex& a, const LineVertex& b) {
    return std::equal(a.position, a.position + 3, b.position) && a.color == b.color;
}

}  // namespace

bool EdgeFilter::Insert(const std::vector<LineVertex>& vertices, std::uint32_t a, std::uint32_t b) {
    // At most half full, so that a search ends soon. What stands in a table that grows is
    // forgotten: at worst an edge is drawn twice.
    constexpr std::size_t kFirstSize = 1U << 12;
    if (m_Used * 2 >= m_Slots.size()) {
        m_Slots.assign(m_Slots.empty() ? kFirstSize : m_Slots.size() * 2, Slot{});
        m_Used = 0;
    }
    const std::size_t mask = m_Slots.size() - 1;
    // The sum is the same in both directions.
    for (std::size_t i = (Hash(vertices[a]) + Hash(vertices[b])) & mask;; i = (i + 1) & mask) {
        Slot& slot = m_Slots[i];
        if (slot.generation != m_Generation) {
            slot = {a, b, m_Generation};
            ++m_Used;
            return true;
        }
        const LineVertex& c = vertices[slot.a];
        const LineVertex& d = vertices[slot.b];
        if ((Same(vertices[a], d) && Same(vertices[b], c)) ||
            (Same(vertices[a], c) && Same(vertices[b], d)))
            return false;
    }
}

void EdgeFilter::Reset() {
    ++m_Generation;
    m_Used = 0;
}

void PrimitiveBatch::AddPolygon(const FillState& state, PackedColor color, const Vec3* corners,
                                const double* texture, int n) {
    m_State = state;
    const auto first = static_cast<std::uint32_t>(m_Vertices.size());
    FillVertex vertex;
    vertex.color = color;
    const auto count = static_cast<std::size_t>(n);
    m_Vertices.resize(m_Vertices.size() + count);
    FillVertex* out = m_Vertices.data() + first;
    for (std::size_t i = 0; i < count; ++i) {
        Store(vertex.position, corners[i].x, corners[i].y, corners[i].z);
        vertex.texture = texture != nullptr ? static_cast<float>(texture[i]) : 0.0F;
        *out++ = vertex;
    }
    AddFanIndices(first, count);
}

void PrimitiveBatch::AddFan(const FillState& state, const FillVertex* corners, int n) {
    m_State = state;
    const auto first = static_cast<std::uint32_t>(m_Vertices.size());
    m_Vertices.insert(m_Vertices.end(), corners, corners + n);
    AddFanIndices(first, static_cast<std::size_t>(n));
}

void PrimitiveBatch::AddFanIndices(std::uint32_t first, std::size_t count) {
    m_Indices.resize(m_Indices.size() + 3 * (count - 2));
    std::uint32_t* index = m_Indices.data() + m_Indices.size() - 3 * (count - 2);
    for (std::uint32_t i = 2; i < static_cast<std::uint32_t>(count); ++i) {
        *index++ = first;
        *index++ = first + i - 1;
        *index++ = first + i;
    }
}

void PrimitiveBatch::ColorCorners(const PackedColor* colors, int n) {
    FillVertex* vertex = m_Vertices.data() + m_Vertices.size() - static_cast<std::size_t>(n);
    for (int i = 0; i < n; ++i)
        vertex++->color = colors[i];
}

void PrimitiveBatch::AddRecord(int n, const RGBDType& color, bool lit, const Element& element) {
    const auto count = static_cast<std::uint32_t>(n);
    const auto first = static_cast<std::uint32_t>(m_Vertices.size()) - count;
    m_Polygons.push_back({first, count, color, lit, element});
}

LineRun& PrimitiveBatch::RunOfWidth(float width, bool cutJoins) {
    for (LineRun& run : m_Lines)
        if (run.width == width && run.cutJoins == cutJoins) return run;
    m_Lines.push_back({width, cutJoins, {}, {}, {}, {}});
    return m_Lines.back();
}

RGBDType PrimitiveBatch::MeanColor(const PolygonRecord& polygon) const {
    std::array<double, 3> sum{};
    for (std::uint32_t i = 0; i < polygon.count; ++i)
        for (std::size_t c = 0; c < 3; ++c)
            sum[c] += m_Vertices[polygon.first + i].color.bytes[c];
    const double all = 255.0 * polygon.count;
    return {sum[0] / all, sum[1] / all, sum[2] / all, polygon.color.a};
}

Vec3 PrimitiveBatch::Corner(std::uint32_t vertex) const {
    const float(&p)[3] = m_Vertices[vertex].position;
    return {static_cast<double>(p[0]), static_cast<double>(p[1]), static_cast<double>(p[2])};
}

double PrimitiveBatch::TextureAt(std::uint32_t vertex) const {
    return static_cast<double>(m_Vertices[vertex].texture);
}

void PrimitiveBatch::Clear() {
    m_Polygons.clear();
    m_Vertices.clear();
    m_Indices.clear();
    for (LineRun& run : m_Lines) {
        run.vertices.clear();
        run.indices.clear();
        run.elements.clear();
        run.edges.Reset();
    }
    m_LineVertexCount = 0;
}

}  // namespace varnel::detail
