#include "varnel/vector/detail/veil_order.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "varnel/foundation/detail/progress.h"
#include "varnel/render/detail/depth_order.h"

namespace varnel::detail {
namespace {

/// Up to so many comparisons of veils with planes they are split exactly.
constexpr std::size_t kMostSides = 5'000'000;
/// Up to so many pairs of a line and a veil are looked at.
constexpr std::size_t kMostPairs = 100'000'000;
/// What is so little behind a veil lies on it, in units of depth.
constexpr double kOnVeil = 0.002;
/// What is so near to the edge of a veil lies on it, and what is so short is not cut off, in
/// pixels.
constexpr double kNear = 1.0;
constexpr double kShort = 0.05;

double MeanDepth(const Veil& veil) {
    double sum = 0.0;
    for (const Vec3& corner : veil.corners)
        sum += corner.z;
    return sum / static_cast<double>(veil.corners.size());
}

Vec3 At(const OrderedLine& line, double t) {
    return {line.a.x + t * (line.b.x - line.a.x), line.a.y + t * (line.b.y - line.a.y),
            line.a.z + t * (line.b.z - line.a.z)};
}

/// A veil as lines are compared with it.
class Shape {
 public:
    explicit Shape(const Veil& veil) : m_Corners(veil.corners) {
        Vec3 normal{0.0, 0.0, 0.0};
        m_Low = m_High = m_Corners[0];
        for (std::size_t i = 0; i < m_Corners.size(); ++i) {
            const Vec3& p = m_Corners[i];
            const Vec3& q = m_Corners[(i + 1) % m_Corners.size()];
            m_Low = {std::min(m_Low.x, p.x), std::min(m_Low.y, p.y), 0.0};
            m_High = {std::max(m_High.x, p.x), std::max(m_High.y, p.y), 0.0};
            // The normal of a polygon, by the areas of its shadows (M. Newell).
            normal.x += (p.y - q.y) * (p.z + q.z);
            normal.y += (p.z - q.z) * (p.x + q.x);
            normal.z += (p.x - q.x) * (p.y + q.y);
        }
        m_Area = normal.z / 2.0;
        if (IsEdgeOn()) return;
        m_SlopeX = -normal.x / normal.z;
        m_SlopeY = -normal.y / normal.z;
    }

    bool IsEdgeOn() const { return std::fabs(m_Area) < kNear; }

    /// The part of a line that lies on the veil or before it.
    bool Part(const OrderedLine& line, double& from, double& to) const {
        const auto [left, right] = std::minmax(line.a.x, line.b.x);
        const auto [low, high] = std::minmax(line.a.y, line.b.y);
        if (right < m_Low.x - kNear || left > m_High.x + kNear || high < m_Low.y - kNear ||
            low > m_High.y + kNear)
            return false;
        from = 0.0;
        to = 1.0;
        const double turn = m_Area > 0.0 ? 1.0 : -1.0;
        for (std::size_t i = 0; i < m_Corners.size(); ++i) {
            const Vec3& p = m_Corners[i];
            const Vec3& q = m_Corners[(i + 1) % m_Corners.size()];
            const double length = std::hypot(q.x - p.x, q.y - p.y);
            if (!(length > 0.0)) continue;
            const auto inside = [&](const Vec3& v) {
                return turn * ((q.x - p.x) * (v.y - p.y) - (q.y - p.y) * (v.x - p.x)) / length +
                       kNear;
            };
            if (!Cut(inside(line.a), inside(line.b), from, to)) return false;
        }
        return Cut(Before(line.a), Before(line.b), from, to);
    }

 private:
    /// Keeps the part of from..to in which what goes from `a` to `b` along the line is positive.
    static bool Cut(double a, double b, double& from, double& to) {
        if (a < 0.0 && b < 0.0) return false;
        if (a < 0.0) from = std::max(from, a / (a - b));
        if (b < 0.0) to = std::min(to, a / (a - b));
        return from < to;
    }

    double Before(const Vec3& v) const {
        const Vec3& p = m_Corners[0];
        return p.z + m_SlopeX * (v.x - p.x) + m_SlopeY * (v.y - p.y) - v.z + kOnVeil;
    }

    const std::vector<Vec3>& m_Corners;
    Vec3 m_Low{}, m_High{};
    double m_Area = 0.0;  ///< in square pixels, negative the other way round
    double m_SlopeX = 0.0, m_SlopeY = 0.0;
};

/// A part of a line, and the veil that it lies on or before.
struct Stretch {
    double from, to;
    int veil;
};

/// Puts the pieces of a line behind `out`.
void CutLine(const OrderedLine& line, const std::vector<Stretch>& stretches,
             std::vector<OrderedLine>& out) {
    const double length = std::hypot(line.b.x - line.a.x, line.b.y - line.a.y);
    std::vector<double> cuts{0.0, 1.0};
    for (const Stretch& s : stretches)
        cuts.insert(cuts.end(), {s.from, s.to});
    std::sort(cuts.begin(), cuts.end());
    double begin = 0.0;
    int layer = -2;
    for (std::size_t i = 1; i < cuts.size(); ++i) {
        if ((cuts[i] - cuts[i - 1]) * length < kShort && i + 1 < cuts.size()) continue;
        const double middle = (cuts[i - 1] + cuts[i]) / 2.0;
        int last = -1;
        for (const Stretch& s : stretches)
            if (s.from <= middle && middle <= s.to) last = std::max(last, s.veil);
        if (last != layer && layer != -2) {
            out.push_back({At(line, begin), At(line, cuts[i - 1]), line.width, line.style, layer,
                           line.start + begin * length});
            begin = cuts[i - 1];
        }
        layer = last;
    }
    out.push_back(
        {At(line, begin), line.b, line.width, line.style, layer, line.start + begin * length});
}

}  // namespace

std::vector<Veil> OrderVeils(std::vector<Veil> veils, double width, double height, double middle) {
    std::vector<std::uint32_t> byDepth(veils.size());
    std::iota(byDepth.begin(), byDepth.end(), 0U);
    std::stable_sort(byDepth.begin(), byDepth.end(), [&veils](std::uint32_t a, std::uint32_t b) {
        return MeanDepth(veils[a]) > MeanDepth(veils[b]);
    });
    std::vector<std::uint32_t> ranks(veils.size());
    for (std::uint32_t rank = 0; rank < byDepth.size(); ++rank)
        ranks[byDepth[rank]] = rank;

    std::vector<FillVertex> vertices;
    std::vector<DepthItem> items;
    const bool splits = veils.size() * veils.size() <= kMostSides;
    for (const Veil& veil : veils) {
        DepthItem item{};
        item.key = ranks[items.size()];
        item.first = static_cast<std::uint32_t>(vertices.size());
        item.count = static_cast<std::uint32_t>(veil.corners.size());
        item.look = static_cast<std::int32_t>(items.size());
        item.large = item.plane = splits;
        items.push_back(item);
        for (const Vec3& p : veil.corners)
            vertices.push_back(
                {{static_cast<float>(2.0 * p.x / width - 1.0),
                  static_cast<float>(2.0 * p.y / height - 1.0), static_cast<float>(p.z - middle)},
                 {},
                 0.0F});
    }
    const std::size_t whole = vertices.size();
    std::vector<Veil> ordered;
    for (const DepthItem& item : DepthOrder(vertices).Order(items)) {
        const Veil& veil = veils[static_cast<std::size_t>(item.look)];
        if (item.first < whole) {
            ordered.push_back(veil);
            continue;
        }
        Veil& piece = ordered.emplace_back(Veil{{}, veil.number});
        for (std::uint32_t i = 0; i < item.count; ++i) {
            const float* const p = vertices[item.first + i].position;
            piece.corners.push_back({(static_cast<double>(p[0]) + 1.0) * width / 2.0,
                                     (static_cast<double>(p[1]) + 1.0) * height / 2.0,
                                     static_cast<double>(p[2]) + middle});
        }
    }
    std::erase_if(ordered, [](const Veil& veil) { return veil.corners.size() < 3; });
    return ordered;
}

void PlaceAmongVeils(std::vector<OrderedLine>& lines, const std::vector<Veil>& veils) {
    std::vector<Shape> shapes;
    if (lines.size() * veils.size() <= kMostPairs)
        for (const Veil& veil : veils)
            shapes.emplace_back(veil);
    std::vector<OrderedLine> pieces;
    std::vector<Stretch> stretches;
    for (const OrderedLine& line : lines) {
        stretches.clear();
        for (std::size_t i = 0; i < shapes.size(); ++i) {
            ProgressStep();
            Stretch s{0.0, 0.0, static_cast<int>(i)};
            if (!shapes[i].IsEdgeOn() && shapes[i].Part(line, s.from, s.to)) stretches.push_back(s);
        }
        CutLine(line, stretches, pieces);
    }
    lines = std::move(pieces);
}

}  // namespace varnel::detail
