#include <algorithm>
#include <cmath>
#include <vector>

#include "varnel/chartobj/detail/chart_drawing.h"
#include "varnel/chartobj/detail/common_count.h"
#include "varnel/chartobj/detail/lines_geometry.h"
#include "varnel/chartobj/detail/set_up.h"
#include "varnel/render/opengl.h"
#include "varnel/transform/transform.h"

namespace varnel {
namespace {

// Line widths are whole pixels; a width that no int can hold is no line at all.
int TruncatedWidth(double width) {
    return std::abs(width) < 32768.0 ? static_cast<int>(width) : 0;
}

bool SameColor(const RGBDType& a, const RGBDType& b) {
    return a.r == b.r && a.g == b.g && a.b == b.b && a.a == b.a;
}

// Whether a value lies between two limits in any order, or misses them by a rounding error.
bool Between(double value, double a, double b) {
    const double slack = 1e-9 * std::abs(b - a);
    return value >= std::min(a, b) - slack && value <= std::max(a, b) + slack;
}

// Draws polylines whose inner vertices, and the last one where asked for, set the segment colour.
template <class SetSegmentColor>
struct LinePen {
    COpenGL& gl;
    SetSegmentColor setSegmentColor;
    bool colorsLast;

    void Start(const point3Dtype& p) { gl.StartLineAbs3D(p); }
    void Append(std::size_t i, const point3Dtype& p) {
        setSegmentColor(i);
        gl.AppendLineAbs3D(p);
    }
    void End(std::size_t i, const point3Dtype& p) {
        if (colorsLast) setSegmentColor(i);
        gl.EndLineAbs3D(p);
    }
};
template <class SetSegmentColor>
LinePen(COpenGL&, SetSegmentColor, bool) -> LinePen<SetSegmentColor>;

}  // namespace

void CChartObj3D::LineChart25D(const double* ind, const double* dep, double constValue, int n,
                               int lineStyle, double lineWidth, const RGBDType& color,
                               int indAxis) {
    const detail::SetUp set(*this);
    set.Series(ind, n, constValue, indAxis);
    InitDepDataStorage(dep);
    set.Line(lineStyle, TruncatedWidth(lineWidth), color);
    m_Saved.m_ChartType = LINECHART25D;
}

void CChartObj3D::LineChart25D(std::span<const double> ind, std::span<const double> dep,
                               double constValue, int lineStyle, double lineWidth,
                               const RGBDType& color, int indAxis) {
    LineChart25D(ind.data(), dep.data(), constValue, detail::CommonCount("LineChart25D", ind, dep),
                 lineStyle, lineWidth, color, indAxis);
}

void CChartObj3D::LineChart3D(const point3Dtype* points, int n, int lineStyle, int lineWidth,
                              const RGBDType& color) {
    const detail::SetUp set(*this);
    set.Points(points, n);
    set.Line(lineStyle, lineWidth, color);
    m_Saved.m_ChartType = LINECHART3D;
}

void CChartObj3D::LineChart3D(std::span<const point3Dtype> points, int lineStyle, int lineWidth,
                              const RGBDType& color) {
    LineChart3D(points.data(), detail::CommonCount("LineChart3D", points), lineStyle, lineWidth,
                color);
}

void CChartObj3D::ProjectionLineChart3D(const point3Dtype* points, double, int n, int lineStyle,
                                        int lineWidth, const RGBDType& color, int projectionPlane,
                                        double constValue) {
    const detail::SetUp set(*this);
    set.Points(points, n);
    set.Line(lineStyle, lineWidth, color);
    set.Projection(projectionPlane, constValue);
    m_Saved.m_ChartType = PROJECTIONLINECHART3D;
}

void CChartObj3D::ProjectionLineChart3D(std::span<const point3Dtype> points, int lineStyle,
                                        int lineWidth, const RGBDType& color, int projectionPlane,
                                        double constValue) {
    ProjectionLineChart3D(points.data(), 0.0, detail::CommonCount("ProjectionLineChart3D", points),
                          lineStyle, lineWidth, color, projectionPlane, constValue);
}

void detail::ChartDrawing::DrawLineChart3D() const {
    const auto setColor = [this](std::size_t i) { CheckSetSegmentColor(i); };
    m_pOpenGL->SetLineStyle3D(m_Saved.m_LineStyle, m_Saved.m_LineWidth, m_Saved.m_FillColor);
    detail::WalkLine3D(*m_pTransform, m_Saved.m_p3DPoints.First(m_Saved.m_NumDataPnts),
                       LinePen{*m_pOpenGL, setColor, false});
    m_pOpenGL->SetLineStyle3D(0, 1.0, m_Saved.m_OutlineColor);
    DrawMarkers(m_Saved.m_p3DPoints.First(m_Saved.m_NumDataPnts));
}

void detail::ChartDrawing::DrawLineChart25D() const {
    const auto setColor = [this](std::size_t i) { CheckSetSegmentColor(i); };
    m_pOpenGL->SetLineStyle3D(m_Saved.m_LineStyle, m_Saved.m_LineWidth, m_Saved.m_OutlineColor);
    const detail::Data25D data = GetData25D();
    detail::WalkLine25D(*m_pTransform, data, LinePen{*m_pOpenGL, setColor, false});
    m_pOpenGL->SetLineStyle3D(0, 1.0, m_Saved.m_OutlineColor);
    if (m_Added.m_Marker == MARKER_NONE) return;
    const detail::Orientation o{data.indAxis != 0};
    std::vector<point3Dtype> points(detail::Shortest(data.ind, data.dep));
    for (std::size_t i = 0; i < points.size(); ++i)
        points[i] = o.Place(data.ind[i], data.constValue, data.dep[i]);
    DrawMarkers(points);
}

void detail::ChartDrawing::DrawProjectionLineChart3D() const {
    const auto setColor = [this](std::size_t i) { CheckSetSegmentColor(i); };
    m_pOpenGL->SetFillStyle3D(m_Saved.m_FillColor, m_Saved.m_FillColor, m_Saved.m_OutlineColor);
    m_pOpenGL->SetLineStyle3D(m_Saved.m_LineStyle, m_Saved.m_LineWidth, m_Saved.m_OutlineColor);
    detail::WalkProjectedLine(*m_pTransform, m_Saved.m_p3DPoints.First(m_Saved.m_NumDataPnts),
                              m_Saved.m_ProjectionPlane, m_Saved.m_ConstValue,
                              LinePen{*m_pOpenGL, setColor, true});
    m_pOpenGL->SetLineStyle3D(0, 1.0, m_Saved.m_OutlineColor);
}

void CChartObj3D::SetMarker(int kind, double size) {
    m_Added.m_Marker = kind;
    m_Added.m_MarkerSize = size;
}

double CChartObj3D::GetMarkerOutlineWidth() const {
    const bool outlined =
        m_Saved.m_OutlineMode != 0 && !SameColor(m_Saved.m_OutlineColor, m_Saved.m_FillColor);
    return outlined ? m_Saved.m_OutlineWidth : 0.0;
}

void detail::ChartDrawing::DrawMarkers(std::span<const point3Dtype> points) const {
    if (m_Added.m_Marker == MARKER_NONE) return;
    const detail::SegmentColors colors = GetSegmentColors();
    m_pOpenGL->SetMarker3D(m_Added.m_Marker, m_Added.m_MarkerSize,
                           m_Object.GetMarkerOutlineWidth());
    // The box's planes would cut markers on them in two.
    const bool clips = m_Saved.m_Clipping != 0;
    m_pTransform->SetClipping(0);
    m_pOpenGL->LoadMatrixTransform(m_pTransform->GetGraphTransform());
    const point3Dtype min = m_pTransform->GetScaleMin();
    const point3Dtype max = m_pTransform->GetScaleMax();
    for (std::size_t i = 0; i < points.size(); ++i) {
        const point3Dtype& p = points[i];
        if (!detail::IsData(p)) continue;
        if (clips && !(Between(p.x, min.x, max.x) && Between(p.y, min.y, max.y) &&
                       Between(p.z, min.z, max.z)))
            continue;
        m_pOpenGL->MarkerAbs3D(m_pTransform->CPTWS(p), colors.At(i, m_Saved.m_FillColor),
                               m_Saved.m_OutlineColor);
    }
}

void detail::ChartDrawing::ProjectionLine(const point3Dtype& p, const RGBDType& color) const {
    point3Dtype from;
    point3Dtype to;
    if (detail::ProjectPoint(*m_pTransform, p, m_Saved.m_ProjectionPlane, m_Saved.m_ConstValue,
                             from, to)) {
        m_pOpenGL->SetLineStyle3D(m_Saved.m_LineStyle, 1.0, color);
        // Symbols and texts change the matrix between two of these lines.
        m_pOpenGL->LoadMatrixTransform(m_pTransform->GetGraphTransform());
        m_pOpenGL->StartLineAbs3D(from);
        m_pOpenGL->EndLineAbs3D(to);
    }
    m_pOpenGL->SetLineStyle3D(0, 1.0, m_Saved.m_FillColor);
}

}  // namespace varnel
