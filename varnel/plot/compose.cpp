// The frame of a chart: what its data say about axes, titles, view and legend, told to AutoFrame.
#include <algorithm>

#include "varnel/chart/auto_frame.h"
#include "varnel/chart/chart_view.h"
#include "varnel/layout/fit.h"
#include "varnel/legend/legend.h"
#include "varnel/plot/detail/chart_impl.h"
#include "varnel/transform/transform.h"

namespace varnel::plot {

namespace {

/// A title from the data is one that all of them share; dates and names speak for themselves.
std::string TitleOf(const PlotAxis& axis) {
    if (!axis.options.title.empty()) return axis.options.title;
    if (axis.mixed || axis.kind != DataKind::Numbers) return {};
    return axis.name;
}

AxisFrame FrameOf(const PlotAxis& axis) {
    AxisFrame frame;
    frame.title = TitleOf(axis);
    frame.logarithmic = axis.options.log;
    frame.dates = axis.kind == DataKind::Dates;
    frame.names.assign(axis.categories.begin(), axis.categories.end());
    frame.min = axis.options.min;
    frame.max = axis.options.max;
    return frame;
}

int CodeOf(Legend place) {
    switch (place) {
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

int IndexOf(const CChartView3D& view, const CChart3D* chart) {
    int index = 0;
    while (index < view.GetNumCharts() && view.GetChart(index) != chart)
        ++index;
    return index;
}

}  // namespace

FrameOptions Chart::Impl::FrameWanted() const {
    FrameOptions frame;
    for (std::size_t axis = 0; axis < 3; ++axis)
        frame.axes[axis] = FrameOf(axes[axis]);
    frame.title = title;
    frame.subtitle = subtitle;
    frame.footer = footer;
    frame.theme = theme;
    frame.flat = layout == Layout::Flat;
    if (layout == Layout::Flat) {
        // A viewer in front of a left-handed chart stands at 90 degrees.
        frame.azimuth = 90.0 - azimuth.value_or(0.0);
        frame.elevation = elevation.value_or(0.0);
        frame.axes[1].show = false;
    } else if (layout == Layout::Map) {
        frame.azimuth = -90.0;
        frame.elevation = 90.0;
        frame.axes[2].show = false;
        frame.axes[0].tight = frame.axes[1].tight = true;
    } else {
        frame.azimuth = azimuth.value_or(-37.5) + turn.value_or(0.0);
        if (turn) frame.autoFit = AUTOFIT_TURN;
        frame.elevation = elevation.value_or(30.0);
    }
    return frame;
}

void Chart::Impl::ComposeLegend(const Size& picture) {
    if (entries.empty() && !colorBar && contours == nullptr) return;
    if (m_Legend == nullptr) m_Legend = view->NewLegend3D();
    CLegend3D* const legend = m_Legend;
    legend->DeleteLegendObjs();
    legend->EnableLegend(legendPlace == Legend::None ? 0 : 1);
    legend->SetPlace(CodeOf(legendPlace));
    legend->SetPlaceChart(IndexOf(*view, chart));
    legend->EnableBorder(0);
    legend->SetTextColor(theme.text);
    legend->SetLegendBkColor(theme.background);
    // As large as the labels of its chart.
    legend->SetFontHeightSF(1.0);
    const double em = legend->GetEm(picture.width, picture.height);
    const TextSizes texts = TextSizesFor(static_cast<int>(picture.width * place.width),
                                         static_cast<int>(picture.height * place.height));
    legend->SetFontHeightSF(texts.label / em);
    if (colorBar) {
        if (pointColors.empty())
            legend->SetColorBar(chart);
        else
            legend->SetColorBar(pointColors.data(), static_cast<int>(pointColors.size()), pointMin,
                                pointMax);
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
    chart->AutoFrame(transform, FrameWanted());
    ComposeLegend(picture);
}

}  // namespace varnel::plot
