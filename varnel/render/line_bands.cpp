#include "varnel/render/detail/line_bands.h"

#include <algorithm>
#include <cmath>

namespace varnel::detail {
namespace {

/// Where segments are so many, only those along a border of tiles become bands: of those across it
/// no more than a pixel is missing.
constexpr std::size_t kMany = 2000;

/// Whether what lies between two places, and `margin` around them, is in more than one tile; of
/// many, whether the margin alone reaches one.
bool NeedsBand(float a, float b, float margin, bool many) {
    const auto tile = [](float place) { return std::floor(place / 64.0F); };
    const float low = std::min(a, b), high = std::max(a, b);
    const float first = tile(low - margin), last = tile(high + margin);
    return many ? first != tile(low) || last != tile(high) : first != last;
}

}  // namespace

/// A band to both sides of a segment, as far as `across` and `up` in device units.
void LineBands::AddBand(const LineVertex& a, const LineVertex& b, float across, float up) {
    constexpr std::uint32_t kTriangles[6] = {0, 1, 2, 0, 2, 3};
    const auto first = static_cast<std::uint32_t>(m_Vertices.size());
    const auto place = [&](const LineVertex& v, float side) {
        m_Vertices.push_back(
            {{v.position[0] + side * across, v.position[1] + side * up, v.position[2]}, v.color});
    };
    place(a, 1.0F);
    place(a, -1.0F);
    place(b, -1.0F);
    place(b, 1.0F);
    for (const std::uint32_t corner : kTriangles)
        m_Indices.push_back(first + corner);
}

void LineBands::Make(const LineRun& run, double width, const GLViewportType& viewport) {
    m_Vertices.clear();
    m_Indices.clear();
    m_Lines.clear();
    const float halfWidth = static_cast<float>(std::max(viewport.width, 1)) / 2.0F;
    const float halfHeight = static_cast<float>(std::max(viewport.height, 1)) / 2.0F;
    const float middleX = static_cast<float>(viewport.x) + halfWidth;
    const float middleY = static_cast<float>(viewport.y) + halfHeight;
    const float radius = static_cast<float>(std::max(width, 1.0)) / 2.0F;
    const float margin = radius + 1.0F;
    const bool many = run.indices.size() / 2 > kMany;
    for (std::size_t i = 0; i + 1 < run.indices.size(); i += 2) {
        const LineVertex& a = run.vertices[run.indices[i]];
        const LineVertex& b = run.vertices[run.indices[i + 1]];
        const float ax = a.position[0] * halfWidth, bx = b.position[0] * halfWidth;
        const float ay = a.position[1] * halfHeight, by = b.position[1] * halfHeight;
        if (!NeedsBand(middleX + ax, middleX + bx, margin, many) &&
            !NeedsBand(middleY + ay, middleY + by, margin, many)) {
            m_Lines.insert(m_Lines.end(), {run.indices[i], run.indices[i + 1]});
            continue;
        }
        const float length = std::hypot(bx - ax, by - ay);
        if (length > 0.0F)
            AddBand(a, b, (ay - by) / length * radius / halfWidth,
                    (bx - ax) / length * radius / halfHeight);
    }
}

}  // namespace varnel::detail
