#include "varnel/chartobj/chart_object.h"
#include "varnel/chartobj/detail/bars_geometry.h"

namespace varnel {

using detail::Prism;

void CChartObj3D::DrawBarChart3D() {
    const detail::SegmentColors colors = GetSegmentColors();
    detail::WalkBars3D(*m_pTransform, m_p3DPoints.First(m_NumDataPnts),
                       m_pBarHeights.First(m_NumDataPnts), m_IndWidth, m_DepthWidth,
                       [&](std::size_t i, const Prism& bar) {
                           Draw(*m_pOpenGL, bar, colors.At(i, m_FillColor), m_OutlineColor);
                       });
}

void CChartObj3D::DrawBarChart25D() {
    const detail::SegmentColors colors = GetSegmentColors();
    m_pOpenGL->SetLineWidth3D(m_OutlineWidth);
    detail::WalkBars25D(*m_pTransform, GetData25D(), [&](std::size_t i, const Prism& bar) {
        Draw(*m_pOpenGL, bar, colors.At(i, m_FillColor), m_OutlineColor);
    });
    m_pOpenGL->SetLineWidth3D(1.0);
}

void CChartObj3D::DrawFloatingBarChart25D() {
    const detail::SegmentColors colors = GetSegmentColors();
    m_pOpenGL->SetLineWidth3D(m_OutlineWidth);
    detail::WalkFloatingBars(*m_pTransform, GetData25D(), [&](std::size_t i, const Prism& bar) {
        Draw(*m_pOpenGL, bar, colors.At(i, m_FillColor), m_OutlineColor);
    });
    m_pOpenGL->SetLineWidth3D(1.0);
}

void CChartObj3D::DrawGroupBarChart25D() {
    const auto draw = [this](std::size_t, std::size_t group, const Prism& bar) {
        Draw(*m_pOpenGL, bar, GroupColor(group), m_OutlineColor);
    };
    m_pOpenGL->SetLineWidth3D(m_OutlineWidth);
    if (m_GroupType == 0) detail::WalkBarsSideBySide(*m_pTransform, GetData25D(), draw);
    if (m_GroupType == 1) detail::WalkStackedBars(*m_pTransform, GetData25D(), draw);
    m_pOpenGL->SetLineWidth3D(1.0);
}

}  // namespace varnel
