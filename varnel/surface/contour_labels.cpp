#include "varnel/surface/detail/contour_labels.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <numeric>

#include "varnel/foundation/detail/whole_within.h"

namespace varnel::detail {
namespace {

constexpr double kDegrees = 57.29577951308232;

ScreenPoint operator-(const ScreenPoint& a, const ScreenPoint& b) {
    return {a.x - b.x, a.y - b.y};
}
double Length(const ScreenPoint& v) {
    return std::hypot(v.x, v.y);
}

/// A line by the length along it.
class Arc {
 public:
    explicit Arc(std::span<const ScreenPoint> points) : m_Points(points) {
        m_Lengths.reserve(points.size());
        double length = 0.0;
        for (std::size_t i = 0; i < points.size(); ++i) {
            if (i > 0) length += Length(points[i] - points[i - 1]);
            m_Lengths.push_back(length);
        }
    }

    /// 0 for a line that leads to no place.
    double GetLength() const {
        return m_Lengths.empty() || !std::isfinite(m_Lengths.back()) ? 0.0 : m_Lengths.back();
    }

    ScreenPoint At(double length) const {
        const auto above = std::upper_bound(m_Lengths.begin(), m_Lengths.end(), length);
        if (above == m_Lengths.begin()) return m_Points.front();
        if (above == m_Lengths.end()) return m_Points.back();
        const auto i = static_cast<std::size_t>(above - m_Lengths.begin());
        const double part = (length - m_Lengths[i - 1]) / (m_Lengths[i] - m_Lengths[i - 1]);
        const ScreenPoint& p = m_Points[i - 1];
        const ScreenPoint& q = m_Points[i];
        return {p.x + part * (q.x - p.x), p.y + part * (q.y - p.y)};
    }

    /// How far the line leaves the chord between two places; infinite where it turns back.
    double Bend(double from, double to) const {
        const ScreenPoint start = At(from);
        const ScreenPoint chord = At(to) - start;
        const double length = Length(chord);
        if (length < 0.8 * (to - from)) return std::numeric_limits<double>::infinity();
        double bend = 0.0;
        auto i = static_cast<std::size_t>(
            std::upper_bound(m_Lengths.begin(), m_Lengths.end(), from) - m_Lengths.begin());
        for (; i < m_Points.size() && m_Lengths[i] < to; ++i) {
            const ScreenPoint p = m_Points[i] - start;
            bend = std::max(bend, std::abs(chord.x * p.y - chord.y * p.x) / length);
        }
        return bend;
    }

 private:
    std::span<const ScreenPoint> m_Points;
    std::vector<double> m_Lengths;
};

/// The box of a label, turned.
struct Box {
    ScreenPoint center;
    ScreenPoint along;   ///< half its width
    ScreenPoint across;  ///< half its height

    Box(const ScreenPoint& c, double angle, double width, double height)
        : center(c),
          along{std::cos(angle) * width / 2, std::sin(angle) * width / 2},
          across{-std::sin(angle) * height / 2, std::cos(angle) * height / 2} {}

    /// Half of how far it reaches along a direction.
    double Reach(const ScreenPoint& d) const {
        return std::abs(along.x * d.x + along.y * d.y) + std::abs(across.x * d.x + across.y * d.y);
    }
    /// Whether a side of either box has the other one wholly behind it.
    static bool AreApart(const Box& a, const Box& b) {
        for (const ScreenPoint& d : {a.along, a.across, b.along, b.across}) {
            const double distance =
                std::abs((a.center.x - b.center.x) * d.x + (a.center.y - b.center.y) * d.y);
            if (distance > a.Reach(d) + b.Reach(d)) return true;
        }
        return false;
    }
    bool IsInside(double width, double height) const {
        const double x = Reach({1.0, 0.0});
        const double y = Reach({0.0, 1.0});
        return center.x >= x && center.y >= y && center.x + x <= width && center.y + y <= height;
    }
};

class Placer {
 public:
    explicit Placer(const LabelRules& rules) : m_Rules(rules) {}

    void Label(const ScreenLine& line, std::size_t number) {
        const Arc arc(line.points);
        const double length = arc.GetLength();
        if (!(line.labelWidth > 0.0) || !(length >= 2 * line.labelWidth)) return;
        constexpr int kMost = 1000;  // nobody can read more
        const int parts = WholeWithin(length / m_Rules.spacing, 1, kMost);
        for (int k = 0; k < parts && std::ssize(m_Labels) < kMost; ++k)
            LabelPart(line, number, arc, length * k / parts, length * (k + 1) / parts);
    }

    std::vector<LineLabel> TakeLabels() { return std::move(m_Labels); }

 private:
    void LabelPart(const ScreenLine& line, std::size_t number, const Arc& arc, double begin,
                   double end) {
        const double air = line.labelHeight / 2;
        const double gap = line.labelWidth + 2 * air;
        const double step = std::max(gap / 4, (end - begin) / 200);
        double best = m_Rules.bend * line.labelHeight;
        const LineLabel* chosen = nullptr;
        LineLabel candidate{};
        for (double from = begin; from + gap <= end; from += step) {
            const double bend = arc.Bend(from, from + gap);
            if (!(bend < best)) continue;
            const ScreenPoint p = arc.At(from);
            const ScreenPoint q = arc.At(from + gap);
            double angle = std::atan2(q.y - p.y, q.x - p.x);
            if (angle * kDegrees > 90.0) angle -= 180.0 / kDegrees;
            if (angle * kDegrees <= -90.0) angle += 180.0 / kDegrees;
            const Box box({(p.x + q.x) / 2, (p.y + q.y) / 2}, angle, gap, line.labelHeight + air);
            const auto apart = [&](const Box& other) { return Box::AreApart(box, other); };
            if (!box.IsInside(m_Rules.width, m_Rules.height) ||
                !std::all_of(m_Boxes.begin(), m_Boxes.end(), apart))
                continue;
            const LineLabel label{
                number, from, from + gap, box.center, angle * kDegrees, line.labelHeight + air};
            if (m_Rules.isSeen && !m_Rules.isSeen(label)) continue;
            best = bend;
            candidate = label;
            chosen = &candidate;
            // Straighter than a tenth of a pixel is as good as straight.
            if (bend < 0.1) break;
        }
        if (chosen == nullptr) return;
        m_Labels.push_back(*chosen);
        m_Boxes.emplace_back(chosen->center, chosen->angle / kDegrees, gap, chosen->height);
    }

    const LabelRules& m_Rules;
    std::vector<LineLabel> m_Labels;
    std::vector<Box> m_Boxes;
};

}  // namespace

std::vector<LineLabel> PlaceLabels(std::span<const ScreenLine> lines, const LabelRules& rules) {
    std::vector<double> lengths;
    for (const ScreenLine& line : lines)
        lengths.push_back(Arc(line.points).GetLength());
    std::vector<std::size_t> order(lines.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return lengths[a] > lengths[b]; });
    Placer placer(rules);
    for (const std::size_t number : order)
        placer.Label(lines[number], number);
    return placer.TakeLabels();
}

}  // namespace varnel::detail
