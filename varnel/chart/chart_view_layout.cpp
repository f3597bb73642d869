// CChartView3D: the room of legends beside and in charts whose layout is automatic.
#include <algorithm>
#include <cmath>
#include <map>
#include <memory>
#include <vector>

#include "varnel/chart/chart.h"
#include "varnel/chart/chart_view.h"
#include "varnel/chart/detail/data_extent.h"
#include "varnel/foundation/detail/pixel_count.h"
#include "varnel/legend/legend.h"

namespace varnel {
namespace {

/// Pixels at the edges of the view.
struct Edges {
    double bottom = 0.0;
    double right = 0.0;
    double top = 0.0;
};

Edges RoomOf(CLegend3D& legend, int viewWidth, int viewHeight) {
    int width = 0;
    int height = 0;
    legend.MeasureLegend(viewWidth, viewHeight, width, height);
    Edges room;
    if (width == 0 || height == 0) return room;
    const double gap = 0.02 * std::min(viewWidth, viewHeight);
    if (legend.GetPlaceInUse() == LEGEND_OUTSIDE_RIGHT) room.right = width + gap;
    if (legend.GetPlace() == LEGEND_OUTSIDE_TOP) room.top = height + gap;
    if (legend.GetPlace() == LEGEND_OUTSIDE_BOTTOM) room.bottom = height + gap;
    return room;
}

/// Where the data of a chart are seen, in pixels from the lower left corner of the view.
using Places = std::shared_ptr<const std::vector<point3Dtype>>;

Places DataPlaces(const CChart3D& chart, int viewHeight) {
    const auto places = std::make_shared<std::vector<point3Dtype>>();
    for (int i = 0; i < chart.GetNumChartObjs(); ++i)
        detail::AddPixelPlaces(*chart.GetChartObj(i), *places);
    for (point3Dtype& place : *places)
        place.y = viewHeight - place.y;
    return places;
}

GLViewportType AsViewport(const PixelRect& r) {
    return {detail::PixelCount(r.left), detail::PixelCount(r.bottom), detail::PixelCount(r.Width()),
            detail::PixelCount(r.Height())};
}

}  // namespace

/// The automatic chart whose plot a legend belongs to; null where there is none.
CChart3D* CChartView3D::ChartOfLegend(const CLegend3D& legend) const {
    const int index = legend.GetPlaceChart();
    if (index >= 0 && index < m_ChartList.GetCount()) {
        CChart3D* const chart = m_ChartList.GetAt(index);
        return chart->GetAutoFit() != AUTOFIT_OFF ? chart : nullptr;
    }
    const auto first = std::ranges::find_if(
        m_ChartList, [](const auto& c) { return c->GetAutoFit() != AUTOFIT_OFF; });
    return first == m_ChartList.end() ? nullptr : first->get();
}

/// A legend in the plot that would hide data wherever it stands goes to the right of the plot.
void CChartView3D::ChooseLegendSides() {
    std::map<const CChart3D*, Places> known;
    for (const auto& legend : m_LegendList) {
        legend->SetGivesWay(0);
        CChart3D* const chart = ChartOfLegend(*legend);
        if (legend->GetPlace() != LEGEND_LEAST_DATA || chart == nullptr) continue;
        legend->SetChartEm(chart->GetAutoText() != 0 ? chart->GetTextSizes().label : 0.0);
        const auto [places, isNew] = known.try_emplace(chart);
        if (isNew) {
            chart->SetReservedRoom(0.0, 0.0, 0.0, 0.0);
            chart->FitToView();
            chart->UpdateTransforms();
            places->second = DataPlaces(*chart, m_DrawHeight);
        }
        if (chart->GetBoxArea().IsEmpty()) continue;
        legend->SetPlotArea(AsViewport(chart->GetInnerArea()));
        legend->SetDataPlaces(places->second);
        legend->SetGivesWay(legend->HidesData(m_DrawWidth, m_DrawHeight) ? 1 : 0);
    }
}

/// Legends outside take their room before charts are fitted: one that has a chart from that chart,
/// others from all charts that reach into it.
void CChartView3D::ReserveForLegends() {
    ChooseLegendSides();
    Edges all;
    std::map<const CChart3D*, Edges> own;
    for (const auto& legend : m_LegendList) {
        const CChart3D* const chart = ChartOfLegend(*legend);
        const bool joins = legend->GetPlace() != LEGEND_IN_VIEW && chart != nullptr;
        legend->SetChartEm(joins && chart->GetAutoText() != 0 ? chart->GetTextSizes().label : 0.0);
        const Edges wanted = RoomOf(*legend, m_DrawWidth, m_DrawHeight);
        Edges& room = legend->GetPlaceChart() < 0 ? all : own[ChartOfLegend(*legend)];
        room.right = std::max(room.right, wanted.right);
        room.top = std::max(room.top, wanted.top);
        room.bottom = std::max(room.bottom, wanted.bottom);
    }
    for (const auto& chart : m_ChartList) {
        if (chart->GetAutoFit() == AUTOFIT_OFF) continue;
        const GLViewRType p = chart->GetChartPosition();
        const double width = p.width * m_DrawWidth;
        const double height = p.height * m_DrawHeight;
        const Edges& mine = own[chart.get()];
        const auto reach = [](double edge, double least, double size) {
            return std::clamp(std::max(edge, least), 0.0, size);
        };
        chart->SetReservedRoom(
            0.0, reach(all.bottom - p.y * m_DrawHeight, mine.bottom, height),
            reach(p.x * m_DrawWidth + width - (m_DrawWidth - all.right), mine.right, width),
            reach(p.y * m_DrawHeight + height - (m_DrawHeight - all.top), mine.top, height));
    }
}

/// What labels and titles take at the edges of charts becomes the most that any chart in the same
/// column or row needs there. A smaller box can have other labels: what they differ in is settled
/// the second time.
void CChartView3D::AlignCharts() {
    if (m_Added.alignCharts == 0 || m_ChartList.GetCount() < 2) return;
    for (int pass = 0; pass < 2; ++pass)
        AlignOnce();
}

void CChartView3D::AlignOnce() {
    std::vector<CChart3D*> charts;
    std::vector<PixelRect> insets;  // from the edges of each chart to its box
    for (const auto& chart : m_ChartList) {
        if (chart->GetAutoFit() == AUTOFIT_OFF || !(chart->GetFillDepth() > 0.0)) continue;
        chart->FitToView();
        const PixelRect box = chart->GetBoxArea();
        if (box.IsEmpty()) continue;
        const GLViewRType p = chart->GetChartPosition();
        charts.push_back(chart.get());
        insets.push_back({box.left - p.x * m_DrawWidth, box.bottom - p.y * m_DrawHeight,
                          (p.x + p.width) * m_DrawWidth - box.right,
                          (p.y + p.height) * m_DrawHeight - box.top});
    }
    const auto isSame = [](double a, double b) { return std::abs(a - b) < 1e-6; };
    for (std::size_t i = 0; i < charts.size(); ++i) {
        PixelRect most = insets[i];
        const GLViewRType mine = charts[i]->GetChartPosition();
        for (std::size_t k = 0; k < charts.size(); ++k) {
            const GLViewRType other = charts[k]->GetChartPosition();
            if (isSame(mine.x, other.x)) most.left = std::max(most.left, insets[k].left);
            if (isSame(mine.y, other.y)) most.bottom = std::max(most.bottom, insets[k].bottom);
            if (isSame(mine.x + mine.width, other.x + other.width))
                most.right = std::max(most.right, insets[k].right);
            if (isSame(mine.y + mine.height, other.y + other.height))
                most.top = std::max(most.top, insets[k].top);
        }
        const PixelRect room = charts[i]->GetReservedRoom();
        charts[i]->SetReservedRoom(
            room.left + most.left - insets[i].left, room.bottom + most.bottom - insets[i].bottom,
            room.right + most.right - insets[i].right, room.top + most.top - insets[i].top);
    }
}

/// Tells legends where their charts stand.
void CChartView3D::PlaceLegends() {
    std::map<const CChart3D*, Places> known;
    for (const auto& legend : m_LegendList) {
        const int place = legend->GetPlaceInUse();
        const CChart3D* const chart = ChartOfLegend(*legend);
        if (place == LEGEND_IN_VIEW || chart == nullptr || chart->GetBoxArea().IsEmpty()) continue;
        const bool inside = place == LEGEND_IN_CORNER || place == LEGEND_LEAST_DATA;
        PixelRect area = inside ? chart->GetInnerArea() : chart->GetPlotArea();
        if (place == LEGEND_OUTSIDE_RIGHT) area.right = chart->GetCoveredRight();
        legend->SetPlotArea(AsViewport(area));
        if (place != LEGEND_LEAST_DATA) continue;
        const auto [places, isNew] = known.try_emplace(chart);
        if (isNew) places->second = DataPlaces(*chart, m_DrawHeight);
        legend->SetDataPlaces(places->second);
    }
}

}  // namespace varnel
