#include "varnel/chart/apply_theme.h"

#include "varnel/axes/axes.h"
#include "varnel/axes/text_object.h"
#include "varnel/chart/chart.h"
#include "varnel/chart/chart_view.h"
#include "varnel/chart/header.h"
#include "varnel/foundation/detail/named_colors.h"
#include "varnel/legend/legend.h"
#include "varnel/render/opengl.h"
#include "varnel/transform/transform.h"

namespace varnel {
namespace {

constexpr int kPlanes = 6;
constexpr double kWallThickness = 0.03;  // device units, whatever the box's size
constexpr double kWallOffset = 0.001;
constexpr int kAllCharacters = 256;

bool IsSame(const RGBDType& a, const RGBDType& b) {
    return a.r == b.r && a.g == b.g && a.b == b.b;
}

/// Whether a text has the colour that classes or themes give texts, not one of its own.
bool HasDefaultColor(const RGBDType& color) {
    return IsSame(color, detail::kBlack) || IsSame(color, Theme::Light().text) ||
           IsSame(color, Theme::Dark().text) || IsSame(color, Theme::Print().text);
}

bool RunsBackwards(const CTransform3D& t, int axis) {
    return GetCoord3D(t.GetScaleMax(), axis) < GetCoord3D(t.GetScaleMin(), axis);
}

bool HasPlanes(const CAxes3D& axes) {
    for (int plane = 0; plane < kPlanes; ++plane)
        if (axes.GetWallEnable(plane) != 0 || axes.GetGridEnable(plane) != 0) return true;
    return false;
}

/// Walls at the smallest values of each axis, or where those are on a scale that runs backwards.
void AddWalls(CAxes3D& axes, const CTransform3D& t, const Theme& theme) {
    constexpr int kInPlane[3][2] = {{0, 1}, {0, 2}, {1, 2}};
    const point3Dtype box = t.GetChartRect();
    for (int lowest = 0; lowest < 3; ++lowest) {
        const int normal = 2 - lowest;
        const int plane = RunsBackwards(t, normal) ? lowest + 3 : lowest;
        axes.SetWallPlane(plane, theme.wall, theme.wallEdge);
        axes.SetWallThickness(plane, kWallThickness / (2.0 * GetCoord3D(box, normal)));
        axes.SetWallOffset(plane, kWallOffset);
        axes.SetOutlineWidth(plane, theme.gridWidth);
        axes.SetPlaneColorMode(plane, COLOR_MODE_FLAT);
        axes.SetPlaneGrid(plane, axes.GetAxisNthTicMajor(kInPlane[lowest][0]),
                          axes.GetAxisNthTicMajor(kInPlane[lowest][1]), theme.grid, theme.gridWidth,
                          0, 0);
    }
}

void ThemePlanes(CAxes3D& axes, const Theme& theme) {
    for (int plane = 0; plane < kPlanes; ++plane) {
        axes.SetPlaneGridColor(plane, theme.grid);
        axes.SetPlaneGridThickness(plane, theme.gridWidth);
        axes.SetWallColor(plane, theme.wall);
        axes.SetOutlineColor(plane, theme.wallEdge);
        if (theme.walls != 0) continue;
        axes.EnableWall(plane, 0);
        axes.EnableGrid(plane, 0);
    }
}

void ThemeAxes(CAxes3D& axes, const Theme& theme) {
    for (int axis = 0; axis < 3; ++axis) {
        axes.SetAxisColor(axis, theme.axis);
        axes.SetAxisTicColor(axis, theme.axis);
        axes.SetAxisThickness(axis, theme.axisWidth);
        axes.SetAxisLabelsColor(axis, theme.text);
        axes.SetAxisTitleColor(axis, theme.text);
    }
    const CTransform3D* const t = axes.GetTransform();
    if (theme.walls != 0 && t != nullptr && !HasPlanes(axes)) AddWalls(axes, *t, theme);
    ThemePlanes(axes, theme);
}

void ThemeLegend(CLegend3D& legend, const Theme& theme) {
    legend.SetTextColor(theme.text);
    legend.SetLegendBkColor(theme.background);
    legend.SetBorderColor(theme.wallEdge);
    legend.SetBorderThickness(theme.gridWidth);
}

}  // namespace

void ApplyTheme(CChart3D& chart, const Theme& theme) {
    chart.SetChartBkColor(theme.background);
    chart.EnableBorder(0);
    chart.SetFontSize(theme.fontSize);
    chart.SetLightPosition(theme.lightPosition);
    chart.SetLightComponent(LIGHT_MODEL_AMBIENT, theme.ambientLight);
    chart.SetLightComponent(LIGHT_DIFFUSE, theme.diffuseLight);
    chart.SetLightLimit(1);
    chart.GetHeader()->SetTextColor(theme.text);
    for (int i = 0; i < chart.GetNumAxes(); ++i)
        ThemeAxes(*chart.GetAxes(i), theme);
    for (int i = 0; i < chart.GetNumChartTextObjs(); ++i) {
        CTextObj3D& text = *chart.GetChartTextObj(i);
        if (HasDefaultColor(text.GetColor())) text.SetColor(theme.text);
    }
}

void ApplyTheme(CChartView3D& view, const Theme& theme) {
    view.SetViewBkColor(theme.background);
    view.EnableBorder(0);
    view.SetFont(theme.fontName, theme.fontWeight, kAllCharacters);
    view.SetAntialiasing(theme.antialiasing);
    view.GetHeader()->SetTextColor(theme.text);
    for (int i = 0; i < view.GetNumCharts(); ++i)
        ApplyTheme(*view.GetChart(i), theme);
    for (int i = 0; i < view.GetNumLegends(); ++i)
        ThemeLegend(*view.GetLegend(i), theme);
}

}  // namespace varnel
