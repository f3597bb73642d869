// CChart3D: automatic charts.
#include "varnel/chart/auto_frame.h"

#include <algorithm>
#include <cmath>

#include "varnel/axes/axes.h"
#include "varnel/chart/apply_theme.h"
#include "varnel/chart/chart.h"
#include "varnel/chart/chart_view.h"
#include "varnel/chart/detail/data_extent.h"
#include "varnel/chart/header.h"
#include "varnel/chartobj/chart_object.h"
#include "varnel/foundation/detail/diagnose.h"
#include "varnel/layout/fit.h"
#include "varnel/legend/legend.h"
#include "varnel/render/codes.h"
#include "varnel/render/opengl.h"
#include "varnel/scale/calendar.h"
#include "varnel/transform/transform.h"

namespace varnel {
namespace {

using detail::AxisData;
using detail::AxisExtent;
using detail::ChartExtent;

/// Room between points or lines in space and the walls, a share of their extent.
constexpr double kPointMargin = 0.02;
/// Of the depth of bars that stand in one plane, before and behind them.
constexpr double kDepthRoom = 0.25;
/// A chart of several planes is deeper, up to a square.
constexpr double kDeepest = 0.7;

struct Limits {
    double min = 0.0;
    double max = 1.0;
};

ScaleOptions OptionsFor(const AxisFrame& frame, const AxisExtent& extent) {
    ScaleOptions options;
    options.logarithmic = frame.logarithmic;
    options.tight = frame.tight || extent.kind == AxisData::kFilled;
    options.round = frame.round;
    options.zero = frame.zero;
    if (!frame.logarithmic) options.base = extent.base;
    if (extent.kind == AxisData::kValues) options.margin = kPointMargin;
    return options;
}

/// Half a place of room at both ends.
Limits CategoryLimits(const AxisFrame& frame) {
    if (frame.positions.empty()) return {0.5, static_cast<double>(frame.names.size()) + 0.5};
    std::vector<double> places = frame.positions;
    std::sort(places.begin(), places.end());
    double nearest = 0.0;
    for (std::size_t i = 1; i < places.size(); ++i) {
        const double distance = places[i] - places[i - 1];
        if (distance > 0.0 && (nearest == 0.0 || distance < nearest)) nearest = distance;
    }
    const double half = nearest > 0.0 ? nearest / 2.0 : 0.5;
    return {places.front() - half, places.back() + half};
}

/// The depth of data in one plane.
Limits DepthLimits(const AxisExtent& extent) {
    const double size = extent.range.max - extent.range.min;
    const double room = size > 0.0 ? kDepthRoom * size : 0.5;
    return {extent.range.min - room, extent.range.max + room};
}

Limits DataLimits(const AxisFrame& frame, const AxisExtent& extent) {
    const DataRange& range = extent.range;
    if (range.count == 0) return frame.logarithmic ? Limits{1.0, 10.0} : Limits{0.0, 1.0};
    if (!frame.logarithmic && extent.kind == AxisData::kNone) return DepthLimits(extent);
    if (!frame.logarithmic && extent.kind == AxisData::kBars)
        return {range.min - extent.gap / 2.0, range.max + extent.gap / 2.0};
    if (frame.dates) {
        CalendarOptions options;
        options.tight = frame.tight || extent.kind == AxisData::kFilled;
        options.round = frame.round;
        const CalendarScale scale = AutoCalendar(range.min, range.max, options);
        return {scale.min, scale.max};
    }
    const AxisScale scale = AutoScale(range.min, range.max, OptionsFor(frame, extent));
    return {scale.min, scale.max};
}

/// The limits, where a host gave one the other follows from the data.
Limits ChooseLimits(const AxisFrame& frame, const AxisExtent& extent) {
    AxisExtent data = extent;
    for (const auto& given : {frame.min, frame.max}) {
        if (given) data.range.Add(*given, frame.logarithmic);
    }
    Limits limits = frame.names.empty() ? DataLimits(frame, data) : CategoryLimits(frame);
    limits.min = frame.min.value_or(limits.min);
    limits.max = frame.max.value_or(limits.max);
    return limits;
}

point3Dtype AsPoint(const std::array<double, 3>& values) {
    return {values[0], values[1], values[2], 0.0};
}

void SetLimits(CTransform3D& t, const FrameOptions& options, const ChartExtent& extent) {
    std::array<double, 3> min{};
    std::array<double, 3> max{};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const Limits limits = ChooseLimits(options.axes[axis], extent.axes[axis]);
        min[axis] = limits.min;
        max[axis] = limits.max;
        t.SetAxisScaleMode(static_cast<int>(axis),
                           options.axes[axis].logarithmic ? SCALE_LOGARITHMIC : SCALE_LINEAR);
    }
    t.SetScale(AsPoint(min), AsPoint(max));
}

void SetFlat(ChartExtent& extent, bool flat) {
    extent.flat = flat;
    if (!flat) return;
    extent.planes.clear();
    extent.depthAxis = 1;
    extent.axes[1].kind = AxisData::kNone;
}

/// Where the viewer of a chart stands, and the shape of its box.
void SetViewAndBox(CTransform3D& t, const FrameOptions& options, const ChartExtent& extent) {
    t.SetTrueProportions(1);
    t.SetRightHanded(extent.flat ? 0 : 1);
    t.SetOffset({});
    double azimuth = -60.0;
    double elevation = 30.0;
    if (extent.flat) {
        // Straight from the front, or a little from the side and above where there are sides and
        // tops to be seen.
        const bool named = !options.axes[static_cast<std::size_t>(extent.depthAxis)].names.empty();
        const bool several = extent.planes.size() > 1 && (extent.solid || named);
        azimuth = (extent.depthAxis == 1 ? 90.0 : 0.0) - (several        ? 20.0
                                                          : extent.solid ? 8.0
                                                                         : 0.0);
        elevation = several ? 20.0 : extent.solid ? 10.0 : 0.0;
    }
    t.SetView(options.azimuth.value_or(azimuth), options.elevation.value_or(elevation));
    if (options.asData) {
        t.SetBoxProportionsAsData(options.proportions ? options.proportions->z : 0.0);
    } else if (options.proportions) {
        t.SetBoxProportions(options.proportions->x, options.proportions->y, options.proportions->z);
    } else {
        t.SetBoxProportions(1.0, 1.0, 0.7);
    }
}

/// The depth of a chart whose box fills the frame: of data in a plane, and of a view from above;
/// 0 for one that keeps its proportions.
double FillingDepth(const FrameOptions& options, const ChartExtent& extent) {
    constexpr double kFromAbove = 89.0;
    constexpr double kMapDepth = 0.02;
    if (options.proportions || options.asData) return 0.0;
    if (std::abs(options.elevation.value_or(0.0)) > kFromAbove) return kMapDepth;
    if (!extent.flat) return 0.0;
    const double planes = static_cast<double>(std::max<std::size_t>(1, extent.planes.size()));
    return std::clamp(options.depth * planes, options.depth, std::max(options.depth, kDeepest));
}

// --- What is seen of the frame -------------------------------------------------------------------

constexpr int kFlat = 0;  // colour mode: not lit
/// In heights of labels.
constexpr double kMajorTic = 0.4;
constexpr double kMinorTic = 0.22;
/// Walls far enough behind what lies on the box's own planes.
constexpr double kWallOffset = 0.001;

/// Planes and grids in the attributes of the three low faces; the axes choose which are seen.
void DressPlanes(CAxes3D& axes, const FrameOptions& options) {
    for (const int plane : {PLANE_MIN_Z, PLANE_MIN_Y, PLANE_MIN_X}) {
        if (options.walls) {
            axes.SetPlaneColor(plane, options.theme.wall, options.theme.wallEdge);
            axes.SetWallOffset(plane, kWallOffset);
            axes.SetOutlineWidth(plane, options.theme.gridWidth);
            axes.SetPlaneColorMode(plane, kFlat);
        }
        if (options.grids)
            axes.SetPlaneGrid(plane, 1, 1, options.theme.grid, options.theme.gridWidth, 0, 0);
    }
}

void DressAxis(CAxes3D& axes, int axis, const AxisFrame& frame, const AxisExtent& extent) {
    axes.SetAxisColorMode(axis, kFlat);
    axes.SetAxisLabelsSize(axis, 1.0);
    axes.SetAxisTitleSize(axis, 1.0);
    axes.SetAxisTitleString(axis, frame.title);
    axes.EnableAxis(axis, frame.show ? 1 : 0);
    axes.EnableAxisLabels(axis, frame.show ? 1 : 0);
    axes.GetAxisLabels(axis)->SetAxisLabels(TEXTPLANE_VIEWER, 0, DIR_MINUS_Z, 0, LABELS_AT_ALL, {});
    if (!frame.names.empty()) {
        const double min = axes.GetAxisMin(axis);
        const double max = axes.GetAxisMax(axis);
        axes.SetCategories(axis, frame.names, frame.positions);
        axes.SetAxisLimits(axis, min, max);
    } else if (frame.dates) {
        axes.SetAxisDates(axis, 1, frame.format);
    } else {
        const bool whole =
            extent.whole && (extent.kind == AxisData::kBars || extent.kind == AxisData::kFilled);
        axes.SetAutoTics(axis, 1, whole ? 1 : 0);
    }
}

/// Legends beside the plot need no frame of their own; those in it have one like the walls.
void DressLegends(CChartView3D& view, const Theme& theme) {
    for (int i = 0; i < view.GetNumLegends(); ++i) {
        CLegend3D& legend = *view.GetLegend(i);
        if (legend.GetPlace() == LEGEND_IN_VIEW) continue;
        const int place = legend.GetPlace();
        const bool inPlot = place == LEGEND_IN_CORNER || place == LEGEND_LEAST_DATA;
        legend.EnableBorder(inPlot ? 1 : 0);
        legend.SetBorderColor(theme.wallEdge);
        legend.SetBorderThickness(theme.gridWidth);
        legend.SetTextColor(theme.text);
        legend.SetLegendBkColor(theme.background);
        const bool plain = legend.GetScaleFormat() == 0 && legend.GetScaleDecimals() < 0 &&
                           !(legend.GetScaleTicSpace() > 0.0);
        if (plain) legend.SetScaleAxis(1);
    }
}

/// A view that is as it was made gets a regular font and smooth edges.
void DressView(CChartView3D& view, const Theme& theme) {
    const CChartView3D fresh;
    const bool sameFont =
        view.GetFontName() == fresh.GetFontName() && view.GetFontWeight() == fresh.GetFontWeight();
    if (sameFont) view.SetFont(theme.fontName, theme.fontWeight, 256);
    if (view.GetAntialiasing() == fresh.GetAntialiasing()) view.SetAntialiasing(theme.antialiasing);
    DressLegends(view, theme);
}

/// What has two sides shows both, surfaces are round and plastic, in whatever colours, lines have
/// no gaps and do not strike through texts, which do not lie on each other; everything ends where
/// the axes say, and areas and ribbons are of one piece.
void DressObject(CChartObj3D& object, const FrameOptions& options) {
    constexpr double kHalo = 0.12;    // ems
    constexpr double kDarkest = 0.5;  // of colours by value
    object.SetTwoSided(1);
    if (object.GetLineJoins() == LINE_JOINS_NONE) object.SetLineJoins(LINE_JOINS_ROUND);
    object.SetTextHalo(kHalo);
    // Most texts stand before a wall.
    const bool walls = options.walls && options.theme.walls != 0;
    object.SetTextHaloColor(walls ? options.theme.wall : options.theme.background);
    object.SetTextBeside(1);
    object.SetExactExtents(1);
    object.SetSegmentOutlines(0);
    if (object.GetChartType() != POLYSURFACECHART3D) return;
    object.SetShading(1);
    object.SetTextureLighting(1, kDarkest);
}

/// Data in one plane have no depth to tell of; positions of several planes have.
bool IsDepthSilent(const FrameOptions& options, const ChartExtent& extent) {
    const AxisFrame& depth = options.axes[static_cast<std::size_t>(extent.depthAxis)];
    return extent.flat && extent.planes.size() < 2 && depth.names.empty() && depth.title.empty();
}

void SetTitles(CHeader3D& header, const FrameOptions& options) {
    constexpr double kTitle = 1.25;
    constexpr double kFooter = 0.8;
    if (!options.title.empty()) header.SetTitle1(options.title);
    if (!options.subtitle.empty()) header.SetTitle2(options.subtitle);
    if (!options.footer.empty()) header.SetFooter(options.footer);
    header.SetTextSizes(kTitle, 1.0, kFooter);
}

}  // namespace

CAxes3D* CChart3D::FindAxes(const CTransform3D& t) const {
    for (const auto& axes : m_Objects.axes)
        if (axes->GetTransform() == &t) return axes.get();
    return nullptr;
}

Frame CChart3D::AutoFrame(CTransform3D* transform, const FrameOptions& options) {
    CTransform3D& t = *RequireTransform(transform, "AutoFrame");
    if (m_pOpenGL != nullptr) t.InitTransform(m_pOpenGL);  // one that was made bare is not bound
    std::array<bool, 3> logarithmic{};
    for (std::size_t axis = 0; axis < 3; ++axis)
        logarithmic[axis] = options.axes[axis].logarithmic;
    ChartExtent extent;
    for (const auto& object : m_Objects.objects) {
        if (object->GetTransform() == &t) extent.Add(*object, logarithmic);
    }
    if (options.flat) SetFlat(extent, *options.flat);
    if (extent.empty) detail::Diagnose("AutoFrame", "the transform has no data");
    SetLimits(t, options, extent);
    SetViewAndBox(t, options, extent);
    Frame frame{&t, FindAxes(t), extent.flat && !extent.empty, 0};
    if (frame.axes == nullptr) frame.axes = NewAxes(&t);
    CAxes3D& axes = *frame.axes;
    axes.SetAxesLimits(t.GetScaleMin(), t.GetScaleMax());
    DressPlanes(axes, options);
    for (int axis = 0; axis < 3; ++axis)
        DressAxis(axes, axis, options.axes[static_cast<std::size_t>(axis)],
                  extent.axes[static_cast<std::size_t>(axis)]);
    if (IsDepthSilent(options, extent)) {
        axes.EnableAxisLabels(extent.depthAxis, 0);
        axes.EnableAxis(extent.depthAxis, 0);
        axes.GetAxis(extent.depthAxis)->SetTicValues({});
        axes.SetAutoTics(extent.depthAxis, 0);
    }
    axes.SetTicHeights(kMajorTic, kMinorTic);
    axes.SetFollowView(options.autoFit == AUTOFIT_TURN ? FOLLOW_TURN : FOLLOW_VIEW);
    SetTitles(*m_pHeader, options);
    SetFillDepth(FillingDepth(options, extent));
    ApplyTheme(*this, options.theme);
    for (const auto& object : m_Objects.objects) {
        if (object->GetTransform() == &t) DressObject(*object, options);
    }
    // What is seen from below is lit from below.
    if (options.elevation.value_or(0.0) < 0.0) m_Saved.lightPosition.z *= -1.0;
    if (m_pChartView != nullptr) DressView(*m_pChartView, options.theme);
    SetAutoText(1);
    SetLineAreas(1);
    SetNoDataGrey(1);
    SetAutoFit(options.autoFit);
    for (const AxisExtent& axis : extent.axes)
        frame.leftOut += axis.range.leftOut;
    return frame;
}

}  // namespace varnel
