#include "varnel/chartobj/chart_object.h"
#include "varnel/chartobj/detail/lines_geometry.h"
#include "varnel/render/opengl.h"

namespace varnel {
namespace {

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

void CChartObj3D::DrawLineChart3D() {
    const auto setColor = [this](std::size_t i) { CheckSetSegmentColor(i); };
    m_pOpenGL->SetLineStyle3D(m_LineStyle, m_LineWidth, m_FillColor);
    detail::WalkLine3D(*m_pTransform, m_p3DPoints.First(m_NumDataPnts),
                       LinePen{*m_pOpenGL, setColor, false});
    m_pOpenGL->SetLineStyle3D(0, 1.0, m_OutlineColor);
}

void CChartObj3D::DrawLineChart25D() {
    const auto setColor = [this](std::size_t i) { CheckSetSegmentColor(i); };
    m_pOpenGL->SetLineStyle3D(m_LineStyle, m_LineWidth, m_OutlineColor);
    detail::WalkLine25D(*m_pTransform, GetData25D(), LinePen{*m_pOpenGL, setColor, false});
    m_pOpenGL->SetLineStyle3D(0, 1.0, m_OutlineColor);
}

void CChartObj3D::DrawProjectionLineChart3D() {
    const auto setColor = [this](std::size_t i) { CheckSetSegmentColor(i); };
    m_pOpenGL->SetFillStyle3D(m_FillColor, m_FillColor, m_OutlineColor);
    m_pOpenGL->SetLineStyle3D(m_LineStyle, m_LineWidth, m_OutlineColor);
    detail::WalkProjectedLine(*m_pTransform, m_p3DPoints.First(m_NumDataPnts), m_ProjectionPlane,
                              m_ConstValue, LinePen{*m_pOpenGL, setColor, true});
    m_pOpenGL->SetLineStyle3D(0, 1.0, m_OutlineColor);
}

void CChartObj3D::ProjectionLine(const point3Dtype& p, const RGBDType& color) {
    point3Dtype from;
    point3Dtype to;
    if (detail::ProjectPoint(*m_pTransform, p, m_ProjectionPlane, m_ConstValue, from, to)) {
        m_pOpenGL->SetLineStyle3D(m_LineStyle, 1.0, color);
        // Symbols and texts change the matrix between two of these lines.
        m_pOpenGL->LoadMatrixTransform(m_pTransform->GetGraphTransform());
        m_pOpenGL->StartLineAbs3D(from);
        m_pOpenGL->EndLineAbs3D(to);
    }
    m_pOpenGL->SetLineStyle3D(0, 1.0, m_FillColor);
}

}  // namespace varnel
