#include "varnel/platform/detail/repeated_shapes.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <optional>

namespace varnel::detail {
namespace {

/// Outlines with fewer corners are as short to tell again, and with more they are no markers.
constexpr std::size_t kFewest = 4;
constexpr std::size_t kMost = 64;
/// Shapes of one colour and number of corners that are compared: others are no markers.
constexpr std::size_t kMostAlike = 16;
/// Rounding puts corners of one shape this far apart, in grid units.
constexpr std::int32_t kSame = 2;

/// Begins at the lowest corner, wherever clipping began.
Ring FromLowest(Ring ring) {
    const auto lowest = std::min_element(
        ring.begin(), ring.end(),
        [](const GridPoint& a, const GridPoint& b) { return a.y != b.y ? a.y < b.y : a.x < b.x; });
    std::rotate(ring.begin(), lowest, ring.end());
    return ring;
}

/// How far one outline is moved from the other; none where they differ.
std::optional<GridPoint> OffsetOf(const Ring& ring, const Ring& first) {
    double x = 0.0;
    double y = 0.0;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        x += ring[i].x - first[i].x;
        y += ring[i].y - first[i].y;
    }
    const auto count = static_cast<double>(ring.size());
    const GridPoint offset{static_cast<std::int32_t>(std::lround(x / count)),
                           static_cast<std::int32_t>(std::lround(y / count))};
    for (std::size_t i = 0; i < ring.size(); ++i)
        if (std::abs(ring[i].x - first[i].x - offset.x) > kSame ||
            std::abs(ring[i].y - first[i].y - offset.y) > kSame)
            return std::nullopt;
    return offset;
}

}  // namespace

RepeatedShapes::Use RepeatedShapes::Find(const Area& area, const RGBDType& color) {
    if (area.size() != 1 || area[0].size() < kFewest || area[0].size() > kMost) return {};
    Ring ring = FromLowest(area[0]);
    std::vector<std::size_t>& alike = m_Groups[{{color.r, color.g, color.b, color.a}, ring.size()}];
    for (const std::size_t i : alike) {
        Shape& shape = m_Shapes[i];
        if (const auto offset = OffsetOf(ring, shape.ring)) return {++shape.uses, i, *offset};
    }
    if (alike.size() == kMostAlike) return {};
    alike.push_back(m_Shapes.size());
    m_Shapes.push_back({std::move(ring), 1});
    return {1, m_Shapes.size() - 1, {}};
}

}  // namespace varnel::detail
