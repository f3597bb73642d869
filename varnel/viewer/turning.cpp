#include "varnel/viewer/detail/turning.h"

#include <algorithm>
#include <cmath>

#include "varnel/chart/chart.h"
#include "varnel/chart/chart_view.h"
#include "varnel/transform/transform.h"

namespace varnel::detail {

namespace {

constexpr double kSmallest = 0.1;  ///< of the size at the start
constexpr double kLargest = 10.0;

template <class Action>
void ForEachTransform(CChart3D& chart, Action&& action) {
    for (int i = 0; i < chart.GetNumTransforms(); ++i)
        action(*chart.GetTransform(i));
}

}  // namespace

Turning::Turning(CChartView3D& view) : m_View(view) {
    for (int i = 0; i < view.GetNumCharts(); ++i)
        ForEachTransform(*view.GetChart(i), [this](CTransform3D& t) {
            m_Start[&t] = {t.GetRotation(), t.GetChartRect()};
        });
}

CChart3D* Turning::ChartAt(double x, double y) const {
    const double fromBelow = 1.0 - y;
    for (int i = m_View.GetNumCharts() - 1; i >= 0; --i) {
        CChart3D* chart = m_View.GetChart(i);
        const GLViewRType p = chart->GetChartPosition();
        if (chart->GetChartEnable() != 0 && x >= p.x && x < p.x + p.width && fromBelow >= p.y &&
            fromBelow < p.y + p.height)
            return chart;
    }
    return nullptr;
}

void Turning::Turn(CChart3D& chart, double around, double over) const {
    ForEachTransform(chart, [=](CTransform3D& t) {
        point3Dtype angles = t.GetRotation();
        angles.z = std::remainder(angles.z - around, 360.0);
        // Beyond straight from above or below, the upright axis would point down.
        angles.x = std::clamp(angles.x - over, std::min(angles.x, -90.0), std::max(angles.x, 90.0));
        t.SetRotate(angles);
    });
}

void Turning::Enlarge(CChart3D& chart, double factor) const {
    ForEachTransform(chart, [&](CTransform3D& t) {
        const auto start = m_Start.find(&t);
        if (start == m_Start.end()) return;
        const point3Dtype& first = start->second.chartRect;
        const point3Dtype now = t.GetChartRect();
        const double before = first.x != 0.0 ? now.x / first.x : 1.0;
        const double size = std::clamp(before * factor, kSmallest, kLargest);
        t.SetChartRect({first.x * size, first.y * size, first.z * size, first.w});
    });
}

void Turning::Reset() const {
    for (const auto& [transform, start] : m_Start) {
        transform->SetRotate(start.rotation);
        transform->SetChartRect(start.chartRect);
    }
}

}  // namespace varnel::detail
