#include "varnel/chartobj/detail/chart_drawing.h"
#include "varnel/chartobj/detail/set_up.h"
#include "varnel/chartobj/detail/surface_normals.h"
#include "varnel/chartobj/detail/surfaces_geometry.h"
#include "varnel/foundation/detail/raise.h"
#include "varnel/render/opengl.h"

namespace varnel {

void CChartObj3D::PolysurfaceChart2D(CPolysurface* surface, double constValue,
                                     int projectionPlane) {
    const detail::SetUp set(*this);
    set.Projection(projectionPlane, constValue);
    InitPolysurfaceStorage(surface);
    m_Saved.m_ChartType = POLYSURFACECHART2D;
}

void CChartObj3D::PolysurfaceChart3D(CPolysurface* surface) {
    const detail::SetUp set(*this);
    InitPolysurfaceStorage(surface);
    m_Saved.m_ChartType = POLYSURFACECHART3D;
}

void detail::ChartDrawing::DrawSurface(int plane, double level, int wire) const {
    const CPolysurface* const surface = m_Saved.m_pPolysurface.get();
    if (surface == nullptr) return;
    m_pOpenGL->SetLineWidth3D(m_Saved.m_OutlineWidth);
    const detail::SurfaceMesh mesh(*m_pTransform, *surface, {plane, level});
    const bool filled = surface->GetWireFrame() == 0;
    if (!filled || m_Added.m_Shading == 0 || m_Saved.m_ColorMode == COLOR_MODE_FLAT)
        return m_pOpenGL->DrawMesh(mesh, filled ? MESH_FILLED : wire);
    if (m_Normals.kept == nullptr) m_Normals.kept = std::make_shared<detail::SurfaceNormals>();
    m_pOpenGL->DrawMesh(
        mesh, MESH_FILLED,
        &m_Normals.kept->Of(m_Saved.m_pPolysurface, mesh, *m_pTransform, m_Added.m_CreaseAngle));
}

void detail::ChartDrawing::DrawPolysurfaceChart3D() const {
    DrawSurface(-1, 0.0, MESH_WIRE);
}

void detail::ChartDrawing::DrawPolysurfaceChart2D() const {
    // Unlike the frames in space, these are in the line colour.
    DrawSurface(m_Saved.m_ProjectionPlane, m_Saved.m_ConstValue, MESH_WIRE_IN_LINE_COLOR);
}

}  // namespace varnel
