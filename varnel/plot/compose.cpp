// The frame of a chart: limits, axes, titles, view, legend.
#include <algorithm>
#include <cmath>

#include "varnel/axes/axes.h"
#include "varnel/chart/chart_view.h"
#include "varnel/chart/header.h"
#include "varnel/legend/legend.h"
#include "varnel/plot/detail/chart_impl.h"
#include "varnel/scale/calendar.h"
#include "varnel/scale/tic_labels.h"
#include "varnel/transform/transform.h"

namespace varnel::plot {

namespace {

constexpr RGBDType kWall{0.94, 0.95, 0.97, 1};
constexpr RGBDType kEdge{0.70, 0.72, 0.76, 1};
constexpr RGBDType kGrid{0.82, 0.84, 0.88, 1};

/// The limits of an axis: what was asked for, else what its data need.
AxisScale LimitsOf(const PlotAxis& axis, int count) {
    ScaleOptions options;
    if (!axis.options.log) options.base = axis.base;
    options.logarithmic = axis.options.log;
    const DataRange& range = axis.options.log ? axis.positive : axis.range;
    AxisScale scale =
        range.count > 0 ? AutoScale(range.min, range.max, options) : AutoScale(0, 1, options);
    if (axis.kind == DataKind::Names) {
        scale.min = 0.5;
        scale.max = count + 0.5;
    }
    if (axis.kind == DataKind::Dates) {
        scale.min = axis.range.min;
        scale.max = axis.range.max > axis.range.min ? axis.range.max : axis.range.min + 1;
    }
    scale.min = axis.options.min.value_or(scale.min);
    scale.max = axis.options.max.value_or(scale.max);
    return axis.kind == DataKind::Names || axis.kind == DataKind::Dates
               ? scale
               : TicsInside(scale.min, scale.max, options);
}

/// A title from the data is one that all of them share; dates and names speak for themselves.
std::string TitleOf(const PlotAxis& axis) {
    if (!axis.options.title.empty()) return axis.options.title;
    if (axis.mixed || axis.kind != DataKind::Numbers) return {};
    return axis.name;
}

void SetCoord(point3Dtype& p, int axis, double value) {
    coordassign(p, axis, value);
}

}  // namespace

void Chart::Impl::ComposeAxis(int axis) {
    const PlotAxis& state = axes[axis];
    m_Axes->SetAxisTitleString(axis, TitleOf(state));
    if (state.kind == DataKind::Names) {
        m_Axes->SetAxisTics(axis, 1, 1, 1, 0.01, 0.02, m_Axes->GetAxisTicDir(axis));
        m_Axes->SetAxisLabelsStrings(axis, state.categories.data(),
                                     static_cast<int>(state.categories.size()));
    } else if (state.kind == DataKind::Dates) {
        // Even steps that begin with the axis, each told as the calendar tells it.
        const double min = GetCoord3D(transform->GetScaleMin(), axis);
        const double max = GetCoord3D(transform->GetScaleMax(), axis);
        constexpr int kSteps = 5;
        const char* format = max - min > 1500 ? "%Y" : max - min > 8 ? "%e %b %Y" : "%e %b %H:%M";
        std::vector<CString> texts;
        for (int i = 0; i <= kSteps; ++i)
            texts.push_back(FormatTime(min + (max - min) * i / kSteps, format));
        m_Axes->SetAxisTics(axis, min, (max - min) / kSteps, 1, 0.01, 0.02,
                            m_Axes->GetAxisTicDir(axis));
        m_Axes->SetAxisLabelsStrings(axis, texts.data(), static_cast<int>(texts.size()));
    }
}

void Chart::Impl::ComposeView() {
    const bool room = !entries.empty() || colorBar;
    const double aspect = std::max(1.0, place.width * 1.4 / std::max(place.height, 1e-6));
    transform->SetOffset({room ? -0.06 : 0.04, 0, -0.03, 0});
    if (layout == Layout::Flat) {
        transform->SetChartRect({(room ? 0.68 : 0.80), 0.08, 0.66, 0});
        transform->SetRotate({-elevation.value_or(0), 0, azimuth.value_or(0), 0});
    } else if (layout == Layout::Map) {
        transform->SetChartRect({(room ? 0.66 : 0.76), 0.66, 0.02, 0});
        transform->SetRightHanded(1);
        transform->SetView(-90, 90);
    } else {
        const double size = 0.48 / std::min(aspect, 1.2);
        transform->SetChartRect({size * 1.15, size, size * 0.95, 0});
        transform->SetRotate({-elevation.value_or(30), 0, -azimuth.value_or(-37.5), 0});
    }
}

void Chart::Impl::ComposeLegend() {
    if (entries.empty() && !colorBar) return;
    if (m_Legend == nullptr) m_Legend = view->NewLegend3D();
    m_Legend->DeleteLegendObjs();
    m_Legend->EnableBorder(0);
    m_Legend->SetFontHeightSF(0.85);
    if (colorBar) {
        if (pointColors.empty())
            m_Legend->SetColorBar(chart);
        else
            m_Legend->SetColorBar(pointColors.data(), static_cast<int>(pointColors.size()),
                                  pointMin, pointMax);
        m_Legend->SetLegendTitle(colorBarTitle);
    }
    for (const LegendEntry& entry : entries) {
        if (entry.names.size() == 1 && entry.object->GetNumGroups() < 2)
            m_Legend->AddChartObj(entry.object, entry.names[0]);
        else
            m_Legend->AddGroups(entry.object, entry.names.data());
    }
}

void Chart::Impl::Compose() {
    if (chart == nullptr) return;
    point3Dtype min{0, 0, 0, 0}, max{1, 1, 1, 0};
    for (const int axis : {0, 1, 2}) {
        if (layout == Layout::Flat && axis == 1) continue;
        const AxisScale scale =
            LimitsOf(axes[axis], static_cast<int>(axes[axis].categories.size()));
        SetCoord(min, axis, scale.min);
        SetCoord(max, axis, scale.max);
        transform->SetAxisScaleMode(axis, axes[axis].options.log);
    }
    transform->SetScale(min, max);
    ComposeView();
    chart->SetFontSize(0.075);
    chart->SetLightPosition({0, 1.4, 0.9, 0});
    chart->GetHeader()->SetTitle1(title);
    chart->GetHeader()->SetTitle2(subtitle);
    if (m_Axes == nullptr) {
        m_Axes = chart->AutoAxes(transform);
        for (const int plane : {0, 1, 2}) {
            m_Axes->SetWallPlane(plane, kWall, kEdge);
            m_Axes->SetWallThickness(plane, 0.02);
            m_Axes->SetPlaneColorMode(plane, 0);
            m_Axes->SetOutlineWidth(plane, 1);
            m_Axes->SetPlaneGrid(plane, m_Axes->GetAxisNthTicMajor(plane == 2 ? 1 : 0),
                                 m_Axes->GetAxisNthTicMajor(plane == 0 ? 1 : 2), kGrid, 1, 0, 0);
        }
    }
    for (const int axis : {0, 1, 2})
        ComposeAxis(axis);
    const int hidden = layout == Layout::Flat ? 1 : layout == Layout::Map ? 2 : -1;
    if (hidden >= 0) {
        m_Axes->EnableAxis(hidden, 0);
        m_Axes->EnableAxisLabels(hidden, 0);
    }
    // Seen from the front there is nothing for light to shape: colours are those of the legend.
    const bool plain = layout == Layout::Flat && !azimuth && !elevation;
    for (int i = 0; plain && i < chart->GetNumChartObjs(); ++i)
        chart->GetChartObj(i)->SetColorMode(0);
    ComposeLegend();
}

}  // namespace varnel::plot
