#include "varnel/render/detail/text_batch.h"

#include <algorithm>

#include "varnel/foundation/detail/characters.h"

namespace varnel::detail {

void TextBatch::Add(GlyphFace& face, std::string_view line, const Matrix4& placement,
                    const RGBDType& color) {
    m_Matrix.Load(placement);
    double x = 0.0;
    ForEachCharacter(line, [&](char32_t character) {
        AddLetter(face.Outline(character), x, color);
        x += static_cast<double>(face.Metrics(character).gmfCellIncX);
    });
}

void TextBatch::AddLetter(const GlyphOutline& letter, double x, const RGBDType& color) {
    const std::size_t first = m_Vertices.size();
    m_Vertices.resize(first + letter.points.size(), {{}, Pack(color)});
    LineVertex* vertex = m_Vertices.data() + first;
    for (const GlyphPoint& p : letter.points) {
        const Vec3 place =
            m_Matrix.ToDevice({x + static_cast<double>(p.x), static_cast<double>(p.y),
                               static_cast<double>(p.z), 0.0});
        vertex->position[0] = static_cast<float>(place.x);
        vertex->position[1] = static_cast<float>(place.y);
        vertex->position[2] = static_cast<float>(place.z);
        ++vertex;
    }
    const std::size_t before = m_Indices.size();
    m_Indices.resize(before + letter.triangles.size());
    std::transform(
        letter.triangles.begin(), letter.triangles.end(), m_Indices.data() + before,
        [first](std::uint32_t point) { return static_cast<std::uint32_t>(first) + point; });
}

void TextBatch::Clear() {
    m_Vertices.clear();
    m_Indices.clear();
}

}  // namespace varnel::detail
