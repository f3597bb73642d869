#include "varnel/chartobj/chart_object.h"
#include "varnel/chartobj/detail/surfaces_geometry.h"
#include "varnel/foundation/detail/raise.h"
#include "varnel/render/opengl.h"

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

}  // namespace varnel
