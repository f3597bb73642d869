// COpenGL: fill styles, filled polygons and outlines.
#include "varnel/foundation/detail/counts.h"
#include "varnel/render/detail/check_color.h"
#include "varnel/render/detail/mesh.h"
#include "varnel/render/detail/renderer.h"
#include "varnel/render/opengl.h"

namespace varnel {

namespace {

bool SamePlace(const point3Dtype& a, const point3Dtype& b) {
    return a.x == b.x && a.y == b.y && a.z == b.z;
}

}  // namespace

void COpenGL::SetFillStyle3D(const RGBDType& fill, const RGBDType& second, const RGBDType& frame) {
    m_FillColor = fill;
    m_FillColor2 = second;
    m_FrameColor = frame;
    detail::CheckColor("SetFillStyle3D", fill);
    if (m_ColorMode == COLOR_MODE_FLAT || m_ColorMode == COLOR_MODE_LIT) SetCurrentColor(fill);
}

detail::SurfaceStyle COpenGL::Style() const {
    // Colours by value replace those of fills, not how far they can be seen through.
    RGBDType color = m_CurrentColor;
    if (m_ColorMode == COLOR_MODE_VALUE) color.a = m_FillColor.a;
    const bool textured = m_TextureEnabled != 0;
    const bool shaded = textured && m_TextureLighting != 0 && m_ColorMode != 0;
    return {{textured, m_FrameFilled != 0, shaded},
            m_ColorMode != 0,
            color,
            m_TextureMode,
            m_TextureOffset,
            m_TextureScale,
            m_TwoSided != 0,
            m_TextureLeast,
            m_TextureMost,
            m_NoDataGrey != 0};
}

void COpenGL::PolyFillAbs3D(const point3Dtype* pts, int n) {
    DropOpenLine();
    if (m_ColorMode == COLOR_MODE_FLAT || m_ColorMode == COLOR_MODE_LIT)
        m_CurrentColor = m_FillColor;
    if (pts == nullptr || n < 3) return;
    const int corners = SamePlace(pts[0], pts[n - 1]) ? n - 1 : n;
    const bool visible = m_Renderer->ToDevice(pts, n);
    if (visible && corners >= 3) m_Renderer->AddFill(Style(), pts, corners);
    if (m_FrameFilled != 0) {
        m_CurrentColor = m_FrameColor;
        UseLineWidth();
        if (visible) m_Renderer->AddOutline(n, false, m_FrameColor);
    }
    FinishPrimitive();
}

void COpenGL::Outline(const point3Dtype* pts, int n, const RGBDType& color, bool closed) {
    DropOpenLine();
    m_SavedColorMode = m_ColorMode;
    m_CurrentColor = color;
    UseLineWidth();
    if (pts == nullptr || n < 2 || !m_Renderer->ToDevice(pts, n)) return;
    m_Renderer->AddOutline(n, closed, color);
    FinishPrimitive();
}

void COpenGL::DrawMesh(const detail::MeshSource& mesh, int drawing,
                       const detail::MeshNormals* normals) {
    DropOpenLine();
    UseLineWidth();
    detail::MeshLook look;
    look.style = Style();
    look.normals = normals;
    look.filled = drawing == MESH_FILLED;
    look.framed = m_FrameFilled != 0;
    look.ownColors = m_ColorMode == COLOR_MODE_FLAT || m_ColorMode == COLOR_MODE_LIT;
    look.oneLineColor = drawing == MESH_WIRE_IN_LINE_COLOR;
    look.lineColor = m_LineColor;
    m_Meshes->Paint(*m_Renderer, mesh, look);
    if (mesh.NumPolygons() > 0) {
        RGBDType fill;
        RGBDType frame;
        mesh.Colors(mesh.NumPolygons() - 1, fill, frame);
        SetFillStyle3D(fill, fill, frame);
        if (!look.filled || look.framed)
            m_CurrentColor = look.oneLineColor ? m_LineColor : m_FrameColor;
    }
    FinishPrimitive();
}

void COpenGL::PolyAbs3D(const point3Dtype* pts, int n) {
    const bool closes = pts != nullptr && n > 2 && !SamePlace(pts[0], pts[n - 1]);
    Outline(pts, n, m_LineColor, closes);
}

void COpenGL::Frame3D(const point3Dtype* pts, int n) {
    Outline(pts, n, m_FrameColor, false);
}

void COpenGL::PolyFillAbs3D(std::span<const point3Dtype> pts) {
    PolyFillAbs3D(pts.data(), detail::CountOf(pts, {ERR3DCLASS_OPENGL, "PolyFillAbs3D"}));
}

void COpenGL::PolyAbs3D(std::span<const point3Dtype> pts) {
    PolyAbs3D(pts.data(), detail::CountOf(pts, {ERR3DCLASS_OPENGL, "PolyAbs3D"}));
}

void COpenGL::Frame3D(std::span<const point3Dtype> pts) {
    Frame3D(pts.data(), detail::CountOf(pts, {ERR3DCLASS_OPENGL, "Frame3D"}));
}

}  // namespace varnel
