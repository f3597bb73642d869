#include "varnel/vector/detail/line_order.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <unordered_map>
#include <utility>

#include "varnel/foundation/detail/less_work.h"
#include "varnel/foundation/detail/progress.h"

namespace varnel::detail {
namespace {

/// Side of the cells by which lines that meet are found, in pixels.
constexpr double kCell = 16.0;
/// So many cells of lines are looked at, and so many pairs of lines compared; the lines after that
/// cover each other in the order of drawing. Only lines as wide as the picture are that many.
constexpr std::size_t kMostCells = 20'000'000 / kLessWork;
constexpr std::size_t kMostPairs = 20'000'000 / kLessWork;
/// Lines that overlap by less, in pixels, only touch.
constexpr double kTouch = 0.3;
/// Depths that differ by less are equal.
constexpr double kSameDepth = 2e-5;

double Along(double a, double b, double t) {
    return a + t * (b - a);
}

/// Where a place is nearest on a line: 0 at its start, 1 at its end.
double Foot(const OrderedLine& line, double x, double y) {
    const double dx = line.b.x - line.a.x;
    const double dy = line.b.y - line.a.y;
    const double square = dx * dx + dy * dy;
    const double t = square > 0.0 ? ((x - line.a.x) * dx + (y - line.a.y) * dy) / square : 0.0;
    return std::clamp(t, 0.0, 1.0);
}

/// Where two lines are next to each other: the places on both, and how far they are apart.
struct Meeting {
    double first = 0.0, second = 0.0;
    double distance = 1e9;
};

Meeting MeetingAt(const OrderedLine& p, double s, const OrderedLine& q, double t) {
    return {s, t,
            std::hypot(Along(p.a.x, p.b.x, s) - Along(q.a.x, q.b.x, t),
                       Along(p.a.y, p.b.y, s) - Along(q.a.y, q.b.y, t))};
}

/// Where q is next to a place on p.
Meeting Beside(const OrderedLine& p, double s, const OrderedLine& q) {
    return MeetingAt(p, s, q, Foot(q, Along(p.a.x, p.b.x, s), Along(p.a.y, p.b.y, s)));
}

Meeting FindMeeting(const OrderedLine& p, const OrderedLine& q) {
    const double px = p.b.x - p.a.x;
    const double py = p.b.y - p.a.y;
    const double qx = q.b.x - q.a.x;
    const double qy = q.b.y - q.a.y;
    const double cross = px * qy - py * qx;
    if (cross != 0.0) {
        const double wx = q.a.x - p.a.x;
        const double wy = q.a.y - p.a.y;
        const double s = (wx * qy - wy * qx) / cross;
        const double t = (wx * py - wy * px) / cross;
        if (s >= 0.0 && s <= 1.0 && t >= 0.0 && t <= 1.0) return {s, t, 0.0};
    }
    Meeting nearest;
    for (const Meeting& m :
         {Beside(p, 0.0, q), Beside(p, 1.0, q), MeetingAt(p, Foot(p, q.a.x, q.a.y), q, 0.0),
          MeetingAt(p, Foot(p, q.b.x, q.b.y), q, 1.0)})
        if (m.distance < nearest.distance) nearest = m;
    return nearest;
}

/// Which of two lines covers the other: -1 the first, 1 the second, 0 none. Of two that share a
/// place, the one that is nearer where they run on over each other.
int Covers(const OrderedLine& p, const OrderedLine& q) {
    const double reach = (p.width + q.width) / 2.0 - kTouch;
    const auto difference = [&](const Meeting& m) {
        return Along(p.a.z, p.b.z, m.first) - Along(q.a.z, q.b.z, m.second);
    };
    const Meeting meeting = FindMeeting(p, q);
    if (meeting.distance > reach) return 0;
    double largest = difference(meeting);
    constexpr int kParts = 8;
    for (int i = 0; i <= kParts && std::fabs(largest) <= kSameDepth; ++i) {
        const Meeting beside = Beside(p, static_cast<double>(i) / kParts, q);
        if (beside.distance <= reach) largest = difference(beside);
    }
    return largest < -kSameDepth ? -1 : 1;
}

class Orderer {
 public:
    explicit Orderer(std::vector<OrderedLine>& lines)
        : m_Lines(lines),
          m_After(lines.size()),
          m_Before(lines.size(), 0),
          m_Compared(lines.size(), 0) {
        for (const OrderedLine& line : lines)
            for (const Vec3& end : {line.a, line.b}) {
                m_Low = {std::min(m_Low.x, end.x), std::min(m_Low.y, end.y), 0.0};
                m_High = {std::max(m_High.x, end.x), std::max(m_High.y, end.y), 0.0};
            }
        FindCovers();
        for (std::uint32_t i = 0; i < m_Lines.size(); ++i)
            m_Waiting[m_Lines[i].layer].push_back(i);
    }

    std::vector<std::uint32_t> Order() {
        for (auto& [layer, waiting] : m_Waiting) {
            m_Layer = layer;
            for (const std::uint32_t i : waiting)
                if (m_Before[i] == 0) m_Ready[m_Lines[i].style].push_back(i);
            Drain();
        }
        // What is left runs in circles, each line over the next: the farthest one begins.
        std::vector<std::uint32_t> left;
        for (std::uint32_t i = 0; i < m_Lines.size(); ++i)
            if (m_Before[i] > 0) left.push_back(i);
        std::stable_sort(left.begin(), left.end(), [this](std::uint32_t i, std::uint32_t k) {
            return m_Lines[i].a.z + m_Lines[i].b.z > m_Lines[k].a.z + m_Lines[k].b.z;
        });
        for (const std::uint32_t i : left) {
            if (m_Before[i] < 0) continue;
            m_Ready[m_Lines[i].style].push_back(i);
            Drain();
        }
        return std::move(m_Order);
    }

 private:
    /// The cells of a range, within the one that all lines lie in: two that overlap do so there.
    struct Cells {
        Cells(double from, double to, double low, double high)
            : first(Cell(std::max(from, low))), last(Cell(std::min(to, high))) {}
        static int Cell(double at) { return static_cast<int>(std::floor(at / kCell)); }
        int first, last;
    };

    /// Calls visit(cell) for each cell that a line comes near.
    template <class Visit>
    void VisitCells(const OrderedLine& line, Visit&& visit) const {
        const double margin = line.width / 2.0 + 1.0;
        const auto [low, high] = std::minmax(line.a.y, line.b.y);
        const Cells rows(low - margin, high + margin, m_Low.y, m_High.y);
        for (int row = rows.first; row <= rows.last; ++row) {
            // The part of the line in this row of cells and a margin around it.
            double from = 0.0;
            double to = 1.0;
            if (high - low > kCell) {
                const double s = (row * kCell - margin - line.a.y) / (line.b.y - line.a.y);
                const double t = ((row + 1) * kCell + margin - line.a.y) / (line.b.y - line.a.y);
                from = std::clamp(std::min(s, t), 0.0, 1.0);
                to = std::clamp(std::max(s, t), 0.0, 1.0);
            }
            const auto [left, right] =
                std::minmax({Along(line.a.x, line.b.x, from), Along(line.a.x, line.b.x, to)});
            const Cells columns(left - margin, right + margin, m_Low.x, m_High.x);
            for (int column = columns.first; column <= columns.last; ++column)
                visit(static_cast<std::int64_t>(row) << 32 | static_cast<std::uint32_t>(column));
        }
    }

    void FindCovers() {
        std::unordered_map<std::int64_t, std::vector<std::uint32_t>> cells;
        std::size_t visited = 0;
        std::size_t pairs = 0;
        for (std::uint32_t i = 0; i < m_Lines.size(); ++i)
            VisitCells(m_Lines[i], [&](std::int64_t cell) {
                ProgressStep();
                if (++visited > kMostCells || pairs > kMostPairs) return;
                for (const std::uint32_t k : cells[cell]) {
                    if (m_Lines[k].style == m_Lines[i].style || m_Compared[k] == i) continue;
                    m_Compared[k] = i;
                    ++pairs;
                    Compare(k, i);
                }
                cells[cell].push_back(i);
            });
    }

    void Compare(std::uint32_t first, std::uint32_t second) {
        const int covers = Covers(m_Lines[first], m_Lines[second]);
        if (covers == 0) return;
        if (covers < 0) std::swap(first, second);
        m_After[first].push_back(second);
        ++m_Before[second];
    }

    /// Takes all lines that need not wait, one style after the other.
    void Drain() {
        while (!m_Ready.empty()) {
            const auto most = std::max_element(
                m_Ready.begin(), m_Ready.end(),
                [](const auto& s, const auto& t) { return s.second.size() < t.second.size(); });
            std::vector<std::uint32_t> taken = std::move(most->second);
            m_Ready.erase(most);
            std::sort(taken.begin(), taken.end());
            for (const std::uint32_t i : taken) {
                ProgressStep();
                m_Order.push_back(i);
                m_Lines[i].layer = m_Layer;
                m_Before[i] = -1;
                for (const std::uint32_t next : m_After[i])
                    if (--m_Before[next] == 0 && m_Lines[next].layer <= m_Layer)
                        m_Ready[m_Lines[next].style].push_back(next);
            }
        }
    }

    std::vector<OrderedLine>& m_Lines;
    std::vector<std::vector<std::uint32_t>> m_After;  ///< which lines wait for this one
    std::vector<int> m_Before;              ///< for how many lines this one waits; -1: it is taken
    std::vector<std::uint32_t> m_Compared;  ///< with which line each was compared last
    Vec3 m_Low{1e9, 1e9, 0.0};              ///< of all ends
    Vec3 m_High{-1e9, -1e9, 0.0};
    std::map<int, std::vector<std::uint32_t>> m_Waiting;
    std::map<std::uint64_t, std::vector<std::uint32_t>> m_Ready;
    std::vector<std::uint32_t> m_Order;
    int m_Layer = 0;
};

}  // namespace

std::vector<std::uint32_t> OrderLines(std::vector<OrderedLine>& lines) {
    return Orderer(lines).Order();
}

}  // namespace varnel::detail
