#include "varnel/chartobj/detail/nearest_depths.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "varnel/foundation/detail/progress.h"
#include "varnel/foundation/detail/whole_within.h"

namespace varnel::detail {
namespace {

/// Cells along the shorter side of the picture, at most.
constexpr double kCells = 240.0;
constexpr float kNothing = std::numeric_limits<float>::infinity();

/// The numbers of the cells whose middles lie between two places, within 0..count - 1; none for
/// places that are no numbers.
struct Cells {
    Cells(double low, double high, int count) {
        if (!(low <= high)) return;
        first = WholeWithin(std::ceil(low - 0.5), 0, count);
        last = WholeWithin(std::floor(high - 0.5), -1, count - 1);
    }
    int first = 0;
    int last = -1;
};

int CountOf(double cells) {
    constexpr int kMost = 2000;  // of a viewport beyond the picture, which may be any size
    return WholeWithin(std::ceil(cells), 0, kMost);
}

}  // namespace

NearestDepths::NearestDepths(const Screen& screen)
    : m_Screen(screen),
      m_Cell(std::max(1.0, std::min(screen.GetWidth(), screen.GetHeight()) / kCells)),
      m_Columns(CountOf(screen.GetWidth() / m_Cell)),
      m_Rows(CountOf(screen.GetHeight() / m_Cell)),
      m_Depths(static_cast<std::size_t>(m_Columns) * static_cast<std::size_t>(m_Rows), kNothing) {
}

void NearestDepths::Add(const MeshSource& mesh) {
    const int n = mesh.NumPoints();
    std::vector<point3Dtype> scratch(static_cast<std::size_t>(n));
    const point3Dtype* const points = n > 0 ? mesh.Points(0, n, scratch.data()) : nullptr;
    m_Places.clear();
    for (int i = 0; i < n; ++i) {
        const ScreenPoint at = m_Screen.Pixel(points[i]);
        m_Places.push_back({at.x / m_Cell, at.y / m_Cell, m_Screen.Depth(points[i])});
    }
    for (int k = 0; k < mesh.NumPolygons(); ++k) {
        ProgressStep();
        int corners = 0;
        const int* const numbers = mesh.Polygon(k, corners);
        const auto place = [&](int i) { return m_Places[static_cast<std::size_t>(numbers[i])]; };
        for (int i = 2; i < corners; ++i)
            AddTriangle(place(0), place(i - 1), place(i));
    }
}

void NearestDepths::AddTriangle(const Place& a, const Place& b, const Place& c) {
    const double area = (b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y);
    if (!std::isfinite(area + a.z + b.z + c.z) || area == 0.0) return;
    const auto [bottom, top] = std::minmax({a.y, b.y, c.y});
    const Cells rows(bottom, top, m_Rows);
    for (int row = rows.first; row <= rows.last; ++row) {
        const double middle = row + 0.5;
        double left = HUGE_VAL, right = -HUGE_VAL;
        const auto cross = [&](const Place& p, const Place& q) {
            if ((p.y > middle) == (q.y > middle)) return;
            const double x = p.x + (middle - p.y) * (q.x - p.x) / (q.y - p.y);
            left = std::min(left, x);
            right = std::max(right, x);
        };
        cross(a, b);
        cross(b, c);
        cross(c, a);
        const Cells columns(left, right, m_Columns);
        for (int column = columns.first; column <= columns.last; ++column) {
            const double x = column + 0.5 - a.x;
            const double y = middle - a.y;
            const double u = (x * (c.y - a.y) - (c.x - a.x) * y) / area;
            const double v = ((b.x - a.x) * y - x * (b.y - a.y)) / area;
            float& nearest =
                m_Depths[static_cast<std::size_t>(row) * static_cast<std::size_t>(m_Columns) +
                         static_cast<std::size_t>(column)];
            nearest =
                std::min(nearest, static_cast<float>(a.z + u * (b.z - a.z) + v * (c.z - a.z)));
        }
    }
}

bool NearestDepths::IsNearerIn(const ScreenPoint& center, const ScreenPoint& along,
                               const ScreenPoint& across, double depth) const {
    const double x = std::abs(along.x) + std::abs(across.x);
    const double y = std::abs(along.y) + std::abs(across.y);
    const Cells columns((center.x - x) / m_Cell, (center.x + x) / m_Cell, m_Columns);
    const Cells rows((center.y - y) / m_Cell, (center.y + y) / m_Cell, m_Rows);
    const auto isWithin = [](const ScreenPoint& way, const ScreenPoint& side) {
        const double square = side.x * side.x + side.y * side.y;
        return std::abs(way.x * side.x + way.y * side.y) <= square;
    };
    for (int row = rows.first; row <= rows.last; ++row)
        for (int column = columns.first; column <= columns.last; ++column) {
            const ScreenPoint way{(column + 0.5) * m_Cell - center.x,
                                  (row + 0.5) * m_Cell - center.y};
            if (!isWithin(way, along) || !isWithin(way, across)) continue;
            if (static_cast<double>(
                    m_Depths[static_cast<std::size_t>(row) * static_cast<std::size_t>(m_Columns) +
                             static_cast<std::size_t>(column)]) < depth)
                return true;
        }
    return false;
}

}  // namespace varnel::detail
