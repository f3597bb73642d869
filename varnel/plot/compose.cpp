// The frame of a chart: what its data say about axes, titles, view and legend, told to AutoFrame.
#include <algorithm>
#include <cmath>

#include "varnel/chart/auto_frame.h"
#include "varnel/chart/chart_view.h"
#include "varnel/legend/legend.h"
#include "varnel/plot/detail/chart_impl.h"
#include "varnel/transform/transform.h"

namespace varnel::plot {

namespace {

/// A line, or the first and last of prices, stands this share of their extent off the frame.
constexpr double kSideRoom = 0.03;
/// Where a viewer of a flat chart with a depth stands, in degrees.
constexpr double kFromTheSide = 8.0, kFromAbove = 10.0;

AxisFrame FrameOf(const PlotAxis& axis) {
    AxisFrame frame;
    frame.logarithmic = axis.options.log;
    frame.dates = axis.kind == DataKind::Dates;
    frame.names.assign(axis.categories.begin(), axis.categories.end());
    frame.min = axis.options.min;
    frame.max = axis.options.max;
    return frame;
}

int IndexOf(const CChartView3D& view, const CChart3D* chart) {
    int index = 0;
    while (index < view.GetNumCharts() && view.GetChart(index) != chart)
        ++index;
    return index;
}

}  // namespace

/// A title from the data is one that all of them share; dates and names speak for themselves.
std::string Chart::Impl::TitleOf(int index) const {
    const PlotAxis& axis = axes[index];
    if (!axis.options.title.empty()) return axis.options.title;
    if (axis.mixed || axis.kind != DataKind::Numbers) return {};
    return axis.name;
}

FrameOptions Chart::Impl::FrameWanted() const {
    FrameOptions frame;
    for (const int axis : {0, 1, 2}) {
        AxisFrame& one = frame.axes[static_cast<std::size_t>(axis)];
        one = FrameOf(axes[axis]);
        if (!hideTitle[axis]) one.title = TitleOf(axis);
    }
    frame.title = title;
    frame.subtitle = subtitle;
    frame.footer = footer;
    frame.theme = theme;
    frame.flat = layout == Layout::Flat;
    if (layout == Layout::Flat) {
        // A viewer in front of a left-handed chart stands at 90 degrees.
        frame.azimuth = 90.0 - azimuth.value_or(depth > 0.0 ? kFromTheSide : 0.0);
        frame.elevation = elevation.value_or(depth > 0.0 ? kFromAbove : 0.0);
        if (depth > 0.0) frame.depth = depth;
        frame.axes[1].show = false;
        const DataRange& along = axes[0].range;
        if (room && !touches && frame.axes[0].names.empty() && !frame.axes[0].logarithmic &&
            along.max > along.min) {
            const double beyond = *room + kSideRoom * (along.max - along.min);
            if (!frame.axes[0].min) frame.axes[0].min = along.min - beyond;
            if (!frame.axes[0].max) frame.axes[0].max = along.max + beyond;
        }
    } else if (layout == Layout::Map) {
        frame.azimuth = -90.0;
        frame.elevation = 90.0;
        frame.axes[2].show = false;
        frame.axes[0].tight = frame.axes[1].tight = true;
    } else {
        frame.azimuth = azimuth.value_or(side) + turn.value_or(0.0);
        if (turn) frame.autoFit = AUTOFIT_TURN;
        frame.elevation = elevation.value_or(30.0);
    }
    return frame;
}

/// Edges in the colour of the ground keep bars apart that are seen from the front; bars with sides
/// and tops have dark ones. Bars that are hardly wider than an edge have none.
void Chart::Impl::DressEdges(const Size& picture) {
    constexpr double kPlot = 0.85;  // of the chart's width, about
    constexpr double kLeast = 5.0;  // pixels for each of an edge's
    const double edge = Pixels(0.6);
    for (EdgedBars& bars : edged) {
        CChartObj3D& object = *bars.object;
        const RGBDType now = object.GetOutlineColor();
        const bool mine =
            bars.color.a == 0 || (object.GetOutlineMode() == bars.mode && now.r == bars.color.r &&
                                  now.g == bars.color.g && now.b == bars.color.b);
        if (!mine) continue;
        bars.mode = kPlot * place.width * picture.width >= kLeast * edge * bars.across ? 1 : 0;
        bars.color = IsDeep() ? theme.outline : theme.background;
        object.SetOutlineMode(bars.mode);
        object.SetOutlineColor(bars.color);
        object.SetOutlineWidth(edge);
    }
}

void Chart::Impl::ShowColorBar(CLegend3D& legend) const {
    // About as high as the plot: a flat one fills its place, a box turned in space less of it.
    legend.SetScaleLength((layout == Layout::Flat ? 0.7 : 0.5) * place.height);
    legend.SetScaleAxis(1);
    if (!bandLevels.empty()) return legend.SetColorBands(bandLevels, bandColors);
    if (colorScale) return legend.SetColorBar(*colorScale);
    if (byHeight == nullptr || !axes[2].options.log) {
        legend.SetColorBar(chart);
        if (noData) legend.SetNoData(kNoDataColor);
        return;
    }
    // The chart's colours are laid over logarithms.
    ColorScale heights{.map = heightMap, .mode = COLORSCALE_LOGARITHMIC};
    chart->GetTextureColorArray(nullptr, &heights.min, &heights.max);
    heights.min = std::pow(10.0, heights.min);
    heights.max = std::pow(10.0, heights.max);
    legend.SetColorBar(heights);
}

int Chart::Impl::LegendCode() const {
    const bool names = !colorBar && contours == nullptr;
    switch (legendPlace) {
        case Legend::Auto:
            return layout == Layout::Flat && names && !IsDeep() ? LEGEND_LEAST_DATA
                                                                : LEGEND_OUTSIDE_RIGHT;
        case Legend::Top:
            return LEGEND_OUTSIDE_TOP;
        case Legend::Bottom:
            return LEGEND_OUTSIDE_BOTTOM;
        case Legend::Inside:
            return LEGEND_LEAST_DATA;
        default:
            return LEGEND_OUTSIDE_RIGHT;
    }
}

void Chart::Impl::ComposeLegend() {
    if (entries.empty() && !colorBar && contours == nullptr) return;
    if (m_Legend == nullptr) m_Legend = view->NewLegend3D();
    CLegend3D* const legend = m_Legend;
    legend->DeleteLegendObjs();
    legend->EnableLegend(legendPlace == Legend::None ? 0 : 1);
    legend->SetPlace(LegendCode());
    legend->SetPlaceChart(IndexOf(*view, chart));
    legend->EnableBorder(LegendCode() == LEGEND_LEAST_DATA ? 1 : 0);
    legend->SetBorderColor(theme.wallEdge);
    legend->SetBorderThickness(theme.gridWidth);
    legend->SetTextColor(theme.text);
    legend->SetLegendBkColor(theme.background);
    // As large as the labels of its chart, whatever was set before.
    legend->SetFontHeightSF(1.0);
    if (colorBar) {
        ShowColorBar(*legend);
        legend->SetLegendTitle(colorBarTitle);
    }
    if (contours != nullptr) legend->SetContours(contours, 0);
    for (const LegendEntry& entry : entries) {
        if (entry.names.size() == 1 && entry.object->GetNumGroups() < 2)
            legend->AddChartObj(entry.object, entry.names[0]);
        else
            legend->AddGroups(entry.object, entry.names.data());
    }
}

void Chart::Impl::Compose(const Size& picture) {
    if (chart == nullptr) return;
    chart->SetChartPosition(place);
    DressEdges(picture);
    chart->AutoFrame(transform, FrameWanted());
    // By the heights as the axis has them.
    if (byHeight != nullptr) chart->ColorSurfaceByHeight(byHeight, heightMap);
    ComposeLegend();
}

}  // namespace varnel::plot
