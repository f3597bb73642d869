#include <cmath>

#include "varnel/chartobj/chart_object.h"
#include "varnel/chartobj/detail/common_count.h"
#include "varnel/chartobj/detail/lines_geometry.h"
#include "varnel/render/opengl.h"

namespace varnel {
namespace {

// Line widths are whole pixels; a width that no int can hold is no line at all.
int TruncatedWidth(double width) {
    return std::abs(width) < 32768.0 ? static_cast<int>(width) : 0;
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

}  // namespace

void CChartObj3D::LineChart25D(const double* ind, const double* dep, double constValue, int n,
                               int lineStyle, double lineWidth, const RGBDType& color,
                               int indAxis) {
    SetSeries(ind, n, constValue, indAxis);
    InitDepDataStorage(dep);
    SetLine(lineStyle, TruncatedWidth(lineWidth), color);
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
    SetPoints(points, n);
    SetLine(lineStyle, lineWidth, color);
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
    SetPoints(points, n);
    SetLine(lineStyle, lineWidth, color);
    SetProjection(projectionPlane, constValue);
    m_Saved.m_ChartType = PROJECTIONLINECHART3D;
}

void CChartObj3D::ProjectionLineChart3D(std::span<const point3Dtype> points, int lineStyle,
                                        int lineWidth, const RGBDType& color, int projectionPlane,
                                        double constValue) {
    ProjectionLineChart3D(points.data(), 0.0, detail::CommonCount("ProjectionLineChart3D", points),
                          lineStyle, lineWidth, color, projectionPlane, constValue);
}

void CChartObj3D::DrawLineChart3D() {
    const auto setColor = [this](std::size_t i) { CheckSetSegmentColor(i); };
    m_pOpenGL->SetLineStyle3D(m_Saved.m_LineStyle, m_Saved.m_LineWidth, m_Saved.m_FillColor);
    detail::WalkLine3D(*m_pTransform, m_Saved.m_p3DPoints.First(m_Saved.m_NumDataPnts),
                       LinePen{*m_pOpenGL, setColor, false});
    m_pOpenGL->SetLineStyle3D(0, 1.0, m_Saved.m_OutlineColor);
}

void CChartObj3D::DrawLineChart25D() {
    const auto setColor = [this](std::size_t i) { CheckSetSegmentColor(i); };
    m_pOpenGL->SetLineStyle3D(m_Saved.m_LineStyle, m_Saved.m_LineWidth, m_Saved.m_OutlineColor);
    detail::WalkLine25D(*m_pTransform, GetData25D(), LinePen{*m_pOpenGL, setColor, false});
    m_pOpenGL->SetLineStyle3D(0, 1.0, m_Saved.m_OutlineColor);
}

void CChartObj3D::DrawProjectionLineChart3D() {
    const auto setColor = [this](std::size_t i) { CheckSetSegmentColor(i); };
    m_pOpenGL->SetFillStyle3D(m_Saved.m_FillColor, m_Saved.m_FillColor, m_Saved.m_OutlineColor);
    m_pOpenGL->SetLineStyle3D(m_Saved.m_LineStyle, m_Saved.m_LineWidth, m_Saved.m_OutlineColor);
    detail::WalkProjectedLine(*m_pTransform, m_Saved.m_p3DPoints.First(m_Saved.m_NumDataPnts),
                              m_Saved.m_ProjectionPlane, m_Saved.m_ConstValue,
                              LinePen{*m_pOpenGL, setColor, true});
    m_pOpenGL->SetLineStyle3D(0, 1.0, m_Saved.m_OutlineColor);
}

void CChartObj3D::ProjectionLine(const point3Dtype& p, const RGBDType& color) {
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
