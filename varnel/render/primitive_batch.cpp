#include "varnel/render/detail/primitive_batch.h"

namespace varnel::detail {
namespace {

void Store(float out[3], double a, double b, double c) {
    out[0] = static_cast<float>(a);
    out[1] = static_cast<float>(b);
    out[2] = static_cast<float>(c);
}

}  // namespace

void PrimitiveBatch::AddPolygon(const FillState& state, const Vec3* corners, const double* texture,
                                int n, const Vec3& normal, const RGBDType& color) {
    m_State = state;
    const auto first = static_cast<std::uint32_t>(m_Vertices.size());
    FillVertex vertex;
    Store(vertex.normal, normal.x, normal.y, normal.z);
    Store(vertex.color, color.r, color.g, color.b);
    for (int i = 0; i < n; ++i) {
        Store(vertex.position, corners[i].x, corners[i].y, corners[i].z);
        vertex.texture = texture != nullptr ? static_cast<float>(texture[i]) : 0.0F;
        m_Vertices.push_back(vertex);
    }
    for (std::uint32_t i = 2; i < static_cast<std::uint32_t>(n); ++i) {
        const std::uint32_t fan[3] = {first, first + i - 1, first + i};
        m_Indices.insert(m_Indices.end(), fan, fan + 3);
    }
}

LineRun& PrimitiveBatch::RunOfWidth(float width) {
    for (LineRun& run : m_Lines)
        if (run.width == width) return run;
    m_Lines.push_back({width, {}, {}});
    return m_Lines.back();
}

void PrimitiveBatch::AddPolyline(float width, const std::vector<LineVertex>& vertices) {
    if (vertices.size() < 2) return;
    LineRun& run = RunOfWidth(width);
    auto index = static_cast<std::uint32_t>(run.vertices.size());
    run.vertices.insert(run.vertices.end(), vertices.begin(), vertices.end());
    const auto last = static_cast<std::uint32_t>(run.vertices.size()) - 1;
    for (; index < last; ++index) {
        run.indices.push_back(index);
        run.indices.push_back(index + 1);
    }
    m_LineVertexCount += vertices.size();
}

void PrimitiveBatch::AddOutline(float width, const Vec3* corners, int n, bool closed,
                                const RGBDType& color) {
    LineRun& run = RunOfWidth(width);
    const auto first = static_cast<std::uint32_t>(run.vertices.size());
    LineVertex vertex;
    Store(vertex.color, color.r, color.g, color.b);
    for (int i = 0; i < n; ++i) {
        Store(vertex.position, corners[i].x, corners[i].y, corners[i].z);
        run.vertices.push_back(vertex);
    }
    const auto last = static_cast<std::uint32_t>(run.vertices.size()) - 1;
    for (std::uint32_t i = first; i < last; ++i) {
        run.indices.push_back(i);
        run.indices.push_back(i + 1);
    }
    if (closed) {
        run.indices.push_back(last);
        run.indices.push_back(first);
    }
    m_LineVertexCount += static_cast<std::size_t>(n);
}

void PrimitiveBatch::Clear() {
    m_Vertices.clear();
    m_Indices.clear();
    for (LineRun& run : m_Lines) {
        run.vertices.clear();
        run.indices.clear();
    }
    m_LineVertexCount = 0;
}

}  // namespace varnel::detail
