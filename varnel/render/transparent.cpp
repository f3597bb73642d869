#include "varnel/render/detail/transparent.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <utility>

#include "varnel/foundation/detail/less_work.h"

namespace varnel::detail {
namespace {

/// Longest edge of what is not split, in pixels, and how often a polygon is halved at most.
constexpr double kLongest = 40.0;
constexpr int kDeepest = 14;
/// Corners; a picture that has more of them is not cut any finer.
constexpr std::size_t kMostCorners = 3'000'000 / kLessWork;
/// Up to so many comparisons of polygons with planes large ones are split exactly.
constexpr std::size_t kMostSides = 20'000'000 / kLessWork;

FillVertex MakeVertex(const Vec3& p, PackedColor color, double texture) {
    return {{static_cast<float>(p.x), static_cast<float>(p.y), static_cast<float>(p.z)},
            color,
            static_cast<float>(texture)};
}

/// The same whichever way round the edge is given.
FillVertex Middle(const FillVertex& a, const FillVertex& b) {
    FillVertex middle{};
    for (std::size_t i = 0; i < 3; ++i)
        middle.position[i] = (a.position[i] + b.position[i]) / 2.0F;
    for (std::size_t i = 0; i < 4; ++i)
        middle.color.bytes[i] =
            static_cast<std::uint8_t>((a.color.bytes[i] + b.color.bytes[i] + 1) / 2);
    middle.texture = (a.texture + b.texture) / 2.0F;
    return middle;
}

/// A number that grows as the depth falls.
std::uint32_t KeyOf(float depth) {
    const auto bits = std::bit_cast<std::uint32_t>(depth);
    return (bits & 0x80000000U) != 0 ? bits : 0x7FFFFFFFU - bits;
}

}  // namespace

void TransparentBatch::SetViewport(const GLViewportType& viewport) {
    m_HalfWidth = std::max(viewport.width, 1) / 2.0;
    m_HalfHeight = std::max(viewport.height, 1) / 2.0;
}

std::int32_t TransparentBatch::NumberOf(const Look& look) {
    const auto found = std::find(m_Looks.rbegin(), m_Looks.rend(), look);
    if (found != m_Looks.rend()) return static_cast<std::int32_t>(m_Looks.rend() - found) - 1;
    m_Looks.push_back(look);
    return static_cast<std::int32_t>(m_Looks.size()) - 1;
}

/// Makes an item of the vertices from `first` on.
void TransparentBatch::AddItem(std::size_t first, std::int32_t look, double nearer, bool large) {
    const std::size_t count = m_Vertices.size() - first;
    double depth = 0.0;
    double all = 0.0;
    for (std::size_t i = first; i < m_Vertices.size(); ++i) {
        const float* const at = m_Vertices[i].position;
        depth += static_cast<double>(at[2]);
        all += static_cast<double>(at[0]) + static_cast<double>(at[1]);
    }
    // What reaches to no place lies on no side of anything.
    large = large && std::isfinite(all + depth);
    DepthItem item{};
    item.key = KeyOf(static_cast<float>(depth / static_cast<double>(count) - nearer));
    item.first = static_cast<std::uint32_t>(first);
    item.count = static_cast<std::uint32_t>(count);
    item.look = look;
    item.large = large;
    item.plane = large && nearer == 0.0;
    item.nearer = static_cast<float>(nearer);
    m_NumLarge += item.plane ? 1U : 0U;
    m_Items.push_back(item);
}

double TransparentBatch::PixelsBetween(const FillVertex& a, const FillVertex& b) const {
    return std::hypot(static_cast<double>(a.position[0] - b.position[0]) * m_HalfWidth,
                      static_cast<double>(a.position[1] - b.position[1]) * m_HalfHeight);
}

/// Halves the longest edge until all are short enough.
void TransparentBatch::AddPieces(const std::array<FillVertex, 3>& corners, std::int32_t look,
                                 int depth) {
    std::size_t longest = 0;
    double length = 0.0;
    for (std::size_t i = 0; i < 3; ++i) {
        const double edge = PixelsBetween(corners[i], corners[(i + 1) % 3]);
        if (edge > length) longest = i;
        length = std::max(length, edge);
    }
    const std::size_t first = m_Vertices.size();
    if (length <= kLongest || depth == kDeepest || first > kMostCorners) {
        m_Vertices.insert(m_Vertices.end(), corners.begin(), corners.end());
        return AddItem(first, look, 0.0);
    }
    const FillVertex& a = corners[longest];
    const FillVertex& b = corners[(longest + 1) % 3];
    const FillVertex& c = corners[(longest + 2) % 3];
    const FillVertex middle = Middle(a, b);
    AddPieces({a, middle, c}, look, depth + 1);
    AddPieces({middle, b, c}, look, depth + 1);
}

void TransparentBatch::AddPolygon(const Look& look, const Vec3* corners, const PackedColor* colors,
                                  const double* texture, int n, double nearer) {
    const std::int32_t number = NumberOf(look);
    const std::size_t first = m_Vertices.size();
    double longest = 0.0;
    for (int i = 0; i < n; ++i) {
        m_Vertices.push_back(
            MakeVertex(corners[i], colors[i], texture != nullptr ? texture[i] : 0.0));
        longest = std::max(longest, PixelsBetween(m_Vertices[first], m_Vertices.back()));
    }
    const auto count = static_cast<std::size_t>(n);
    const bool large = longest > kLongest;
    if (nearer != 0.0) return AddItem(first, number, nearer, large);
    if (!large || n == 3 || DepthOrder::IsFlat(m_Vertices.data() + first, count))
        return AddItem(first, number, 0.0, large);
    const std::vector<FillVertex> whole(m_Vertices.begin() + static_cast<std::ptrdiff_t>(first),
                                        m_Vertices.end());
    m_Vertices.resize(first);
    for (std::size_t i = 2; i < whole.size(); ++i) {
        const std::size_t begin = m_Vertices.size();
        m_Vertices.insert(m_Vertices.end(), {whole[0], whole[i - 1], whole[i]});
        AddItem(begin, number, 0.0, true);
    }
}

/// Puts small pieces into the place of large polygons.
void TransparentBatch::CutLarge() {
    std::vector<DepthItem> items;
    items.swap(m_Items);
    for (const DepthItem& item : items) {
        if (!item.plane) {
            m_Items.push_back(item);
            continue;
        }
        for (std::uint32_t i = 2; i < item.count; ++i)
            AddPieces({m_Vertices[item.first], m_Vertices[item.first + i - 1],
                       m_Vertices[item.first + i]},
                      item.look, 0);
    }
}

double TransparentBatch::DepthOfLine(double depth) {
    // Steps that floats tell apart, and all of them together less than anyone sees.
    constexpr double kStep = 2.5e-7;
    constexpr int kMost = 4000;
    m_NumLines = m_NumLines % kMost + 1;
    return depth - kStep * m_NumLines;
}

void TransparentBatch::AddSegment(const Vec3& a, const Vec3& b, PackedColor color, double width) {
    const double x = (b.x - a.x) * m_HalfWidth;
    const double y = (b.y - a.y) * m_HalfHeight;
    const double length = std::hypot(x, y);
    if (!(length > 0.0)) return;
    const double acrossX = -y / length * width / 2.0 / m_HalfWidth;
    const double acrossY = x / length * width / 2.0 / m_HalfHeight;
    const std::size_t first = m_Vertices.size();
    m_Vertices.push_back(MakeVertex({a.x + acrossX, a.y + acrossY, a.z}, color, 0.0));
    m_Vertices.push_back(MakeVertex({b.x + acrossX, b.y + acrossY, b.z}, color, 0.0));
    m_Vertices.push_back(MakeVertex({b.x - acrossX, b.y - acrossY, b.z}, color, 0.0));
    m_Vertices.push_back(MakeVertex({a.x - acrossX, a.y - acrossY, a.z}, color, 0.0));
    AddItem(first, -1, kLinesNearer, length > kLongest);
}

void TransparentBatch::SortByDepth() {
    // By digits of the keys, the lowest first: equal ones keep the order of drawing.
    constexpr unsigned kBits = 11;
    constexpr std::uint32_t kDigits = 1U << kBits;
    m_Spare.resize(m_Items.size());
    for (unsigned shift = 0; shift < 32; shift += kBits) {
        std::array<std::size_t, kDigits + 1> places{};
        const auto digit = [shift](const DepthItem& item) {
            return item.key >> shift & (kDigits - 1);
        };
        for (const DepthItem& item : m_Items)
            ++places[digit(item) + 1];
        for (std::size_t i = 1; i < places.size(); ++i)
            places[i] += places[i - 1];
        for (const DepthItem& item : m_Items)
            m_Spare[places[digit(item)]++] = item;
        m_Items.swap(m_Spare);
    }
}

void TransparentBatch::Sort() {
    if (m_NumLarge == 0) {
        SortByDepth();
    } else if (m_NumLarge * m_Items.size() <= kMostSides) {
        m_Items = DepthOrder(m_Vertices).Order(std::move(m_Items));
    } else {
        CutLarge();
        SortByDepth();
    }
    m_Indices.clear();
    m_Runs.clear();
    if (m_Looks.empty()) m_Looks.emplace_back();  // of lines alone
    for (const DepthItem& item : m_Items) {
        const bool joins =
            !m_Runs.empty() &&
            (item.look < 0 ? !LookOf(m_Runs.back()).once
                           : static_cast<std::size_t>(item.look) == m_Runs.back().look);
        if (!joins)
            m_Runs.push_back(
                {static_cast<std::size_t>(std::max(item.look, 0)), m_Indices.size(), 0});
        for (std::uint32_t i = 2; i < item.count; ++i)
            m_Indices.insert(m_Indices.end(), {item.first, item.first + i - 1, item.first + i});
        m_Runs.back().count = m_Indices.size() - m_Runs.back().first;
    }
}

void TransparentBatch::Clear() {
    m_Looks.clear();
    m_Vertices.clear();
    m_Items.clear();
    m_NumLarge = 0;
    m_NumLines = 0;
    m_Indices.clear();
    m_Runs.clear();
}

}  // namespace varnel::detail
