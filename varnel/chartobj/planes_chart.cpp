#include "varnel/chartobj/detail/chart_drawing.h"
#include "varnel/chartobj/detail/common_count.h"
#include "varnel/chartobj/detail/planes_geometry.h"
#include "varnel/chartobj/detail/set_up.h"

namespace varnel {

void CChartObj3D::PlaneChart3D(const point3Dtype* points, int n, double indWidth, double depthWidth,
                               const RGBDType& fill, const RGBDType& outline) {
    const detail::SetUp set(*this);
    set.Points(points, n);
    set.Widths(indWidth, depthWidth);
    set.Colors(fill, outline);
    m_Saved.m_ChartType = PLANECHART3D;
}

void CChartObj3D::PlaneChart3D(std::span<const point3Dtype> points, double indWidth,
                               double depthWidth, const RGBDType& fill, const RGBDType& outline) {
    PlaneChart3D(points.data(), detail::CommonCount("PlaneChart3D", points), indWidth, depthWidth,
                 fill, outline);
}

void CChartObj3D::PlaneChart25D(const double* ind, const double* dep, double constValue, int n,
                                double indWidth, double depthWidth, const RGBDType& fill,
                                const RGBDType& outline, int indJustify, int depthJustify,
                                int indAxis) {
    const detail::SetUp set(*this);
    set.Series(ind, n, constValue, indAxis);
    InitDepDataStorage(dep);
    set.Widths(indWidth, depthWidth);
    set.Justify(indJustify, depthJustify);
    set.Colors(fill, outline);
    m_Saved.m_ChartType = PLANECHART25D;
}

void CChartObj3D::PlaneChart25D(std::span<const double> ind, std::span<const double> dep,
                                double constValue, double indWidth, double depthWidth,
                                const RGBDType& fill, const RGBDType& outline, int indJustify,
                                int depthJustify, int indAxis) {
    PlaneChart25D(ind.data(), dep.data(), constValue,
                  detail::CommonCount("PlaneChart25D", ind, dep), indWidth, depthWidth, fill,
                  outline, indJustify, depthJustify, indAxis);
}

void detail::ChartDrawing::DrawPlaneChart3D() const {
    const detail::SegmentColors colors = GetSegmentColors();
    m_pOpenGL->SetLineWidth3D(m_Saved.m_OutlineWidth);
    detail::WalkPlanes3D(*m_pTransform, m_Saved.m_p3DPoints.First(m_Saved.m_NumDataPnts),
                         m_Saved.m_IndWidth, m_Saved.m_DepthWidth, m_Saved.m_PlaneThicknessFactor,
                         m_Added.m_ExactExtents != 0, [&](std::size_t i, const Prism& slab) {
                             Draw(*m_pOpenGL, slab, colors.At(i, m_Saved.m_FillColor),
                                  m_Saved.m_OutlineColor);
                         });
}

void detail::ChartDrawing::DrawPlaneChart25D() const {
    const detail::SegmentColors colors = GetSegmentColors();
    m_pOpenGL->SetLineWidth3D(m_Saved.m_OutlineWidth);
    detail::WalkPlanes25D(*m_pTransform, GetData25D(), m_Saved.m_PlaneThicknessFactor,
                          [&](std::size_t i, const Prism& slab) {
                              Draw(*m_pOpenGL, slab, colors.At(i, m_Saved.m_FillColor),
                                   m_Saved.m_OutlineColor);
                          });
}

}  // namespace varnel
