#include "varnel/chartobj/chart_object.h"
#include "varnel/chartobj/detail/planes_geometry.h"

namespace varnel {

using detail::Prism;

void CChartObj3D::DrawPlaneChart3D() {
    const detail::SegmentColors colors = GetSegmentColors();
    m_pOpenGL->SetLineWidth3D(m_OutlineWidth);
    detail::WalkPlanes3D(*m_pTransform, m_p3DPoints.First(m_NumDataPnts), m_IndWidth, m_DepthWidth,
                         [&](std::size_t i, const Prism& slab) {
                             Draw(*m_pOpenGL, slab, colors.At(i, m_FillColor), m_OutlineColor);
                         });
    m_pOpenGL->SetLineWidth3D(1.0);
}

void CChartObj3D::DrawPlaneChart25D() {
    const detail::SegmentColors colors = GetSegmentColors();
    m_pOpenGL->SetLineWidth3D(m_OutlineWidth);
    detail::WalkPlanes25D(*m_pTransform, GetData25D(), m_PlaneThicknessFactor,
                          [&](std::size_t i, const Prism& slab) {
                              Draw(*m_pOpenGL, slab, colors.At(i, m_FillColor), m_OutlineColor);
                          });
    m_pOpenGL->SetLineWidth3D(1.0);
}

}  // namespace varnel
