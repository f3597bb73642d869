#include <algorithm>

#include "varnel/chartobj/chart_object.h"
#include "varnel/chartobj/detail/common_count.h"
#include "varnel/chartobj/detail/surfaces_geometry.h"
#include "varnel/foundation/detail/raise.h"
#include "varnel/render/opengl.h"
#include "varnel/surface/contour.h"

namespace varnel {

void CChartObj3D::PolysurfaceChart2D(CPolysurface* surface, double constValue,
                                     int projectionPlane) {
    SetProjection(projectionPlane, constValue);
    InitPolysurfaceStorage(surface);
    m_Saved.m_ChartType = POLYSURFACECHART2D;
}

void CChartObj3D::PolysurfaceChart3D(CPolysurface* surface) {
    InitPolysurfaceStorage(surface);
    m_Saved.m_ChartType = POLYSURFACECHART3D;
}

void CChartObj3D::ContourPolysurface3D(CPolysurface* surface, const double* values,
                                       const RGBDType* colors, int numContours, double constValue,
                                       int contourLabelFlag) {
    m_Saved.m_ContourLabelFlag = contourLabelFlag;
    m_Saved.m_ConstValue = constValue;
    m_Saved.m_ChartType = CONTOURPOLYSURFACE3D;
    SetContourStorage(surface, values, colors, numContours);
}

void CChartObj3D::ContourPolysurface3D(CPolysurface* surface, std::span<const double> values,
                                       std::span<const RGBDType> colors, double constValue,
                                       int contourLabelFlag) {
    ContourPolysurface3D(surface, values.data(), detail::DataOf(colors),
                         detail::ContourCount("ContourPolysurface3D", values, colors), constValue,
                         contourLabelFlag);
}

void CChartObj3D::DrawPolysurfaceChart3D() {
    const CPolysurface* const surface = m_Saved.m_pPolysurface.get();
    if (surface == nullptr) return;
    m_pOpenGL->SetLineWidth3D(m_Saved.m_OutlineWidth);
    m_pOpenGL->DrawMesh(detail::SurfaceMesh(*m_pTransform, *surface, {}),
                        surface->GetWireFrame() != 0 ? MESH_WIRE : MESH_FILLED);
}

void CChartObj3D::DrawPolysurfaceChart2D() {
    const CPolysurface* const surface = m_Saved.m_pPolysurface.get();
    if (surface == nullptr) return;
    m_pOpenGL->SetLineWidth3D(m_Saved.m_OutlineWidth);
    const detail::Flattening flat{m_Saved.m_ProjectionPlane, m_Saved.m_ConstValue};
    // Unlike the frames in space, these are in the line colour.
    m_pOpenGL->DrawMesh(detail::SurfaceMesh(*m_pTransform, *surface, flat),
                        surface->GetWireFrame() != 0 ? MESH_WIRE_IN_LINE_COLOR : MESH_FILLED);
}

void CChartObj3D::DrawContourPolysurface3D() {
    const auto levels = m_Saved.m_pIndData.First(m_Saved.m_NumContours);
    const auto colors = m_Saved.m_pSegmentColors.First(m_Saved.m_NumContours);
    const auto numLevels = static_cast<int>(std::min(levels.size(), colors.size()));
    if (m_Saved.m_pPolysurface == nullptr || numLevels == 0) return;
    // Making the object draws everything.
    const auto contour = detail::NewObject<CContour3D>(
        {ERR3DCLASS_CHARTOBJ3D, "DrawContourPolysurface3D"}, m_pOpenGL, m_pTransform,
        m_Saved.m_pPolysurface.get(), levels.data(), detail::DataOf(colors), numLevels,
        m_Saved.m_ConstValue, m_Saved.m_ContourLabelFlag);
}

}  // namespace varnel
