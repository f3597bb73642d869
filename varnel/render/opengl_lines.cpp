// COpenGL: line styles, segments and polylines.
#include <algorithm>
#include <cmath>

#include "varnel/foundation/detail/whole_within.h"
#include "varnel/render/codes.h"
#include "varnel/render/detail/check_color.h"
#include "varnel/render/detail/renderer.h"
#include "varnel/render/opengl.h"

namespace varnel {
namespace {

constexpr WORD kSolid = 0xFFFF;

/// Solid polylines are handed on in pieces of so many vertices, which stay in the caches.
constexpr std::size_t kPiece = 4096;

}  // namespace

WORD COpenGL::GetLineStipple(int style) const {
    return style >= 0 && style < 16 ? m_LineStipple[style] : kSolid;
}

void COpenGL::SetLineStyle3D(int style, double width, const RGBDType& color) {
    SetLineColor3D(color);
    m_LineStyle = style;
    m_LineWidth = static_cast<float>(width);
}

void COpenGL::SetLineColor3D(const RGBDType& color) {
    detail::CheckColor("SetLineColor3D", color);
    m_LineColor = color;
}

void COpenGL::SetLineNormal(const point3Dtype& n, BOOL absolute) {
    m_LineNormal = n;
    if (absolute == 0) return;
    m_LineNormal.x = std::fabs(n.x);
    m_LineNormal.y = std::fabs(n.y);
    m_LineNormal.z = std::fabs(n.z);
}

void COpenGL::UseLineWidth() {
    if (m_LineWidth > 0.0F && std::isfinite(m_LineWidth))
        m_Renderer->lineWidth = m_LineWidth * static_cast<float>(GetLineUnit());
}

void COpenGL::SetupLine() {
    DropOpenLine();
    m_SavedColorMode = m_ColorMode;
    SetColorMode(0);
    m_CurrentColor = m_LineColor;
    UseLineWidth();
}

void COpenGL::DropOpenLine() {
    detail::OpenLine& line = m_Renderer->line;
    if (!line.open) return;
    line.open = false;
    SetColorMode(m_SavedColorMode);
}

void COpenGL::SetResolution(double dpi) {
    if (dpi > 0.0 && std::isfinite(dpi)) m_Resolution = dpi;
}

void COpenGL::SetMarker3D(int kind, double size, double outlineWidth) {
    constexpr double kLargest = 1000.0;
    const double scale = m_Renderer->gl.lineScale;
    const double pixels = size > 0.0 ? std::min(size, kLargest) * m_Resolution / 72.0 * scale : 0.0;
    const double outline =
        outlineWidth > 0.0 ? std::min(outlineWidth * GetLineUnit() * scale, pixels) : 0.0;
    detail::MarkerLook& look = m_Renderer->marker;
    look = {};
    if (!(pixels > 0.0)) return;
    look.size = pixels + outline;
    look.fill = detail::MakeMarkerShape(kind, pixels, -outline / 2.0);
    if (outline > 0.0) look.outline = detail::MakeMarkerShape(kind, pixels, outline / 2.0);
}

void COpenGL::MarkerAbs3D(const point3Dtype& p, const RGBDType& fill, const RGBDType& outline) {
    DropOpenLine();
    m_Renderer->AddMarker(p, fill, outline);
    FinishPrimitive();
}

void COpenGL::LineAbs3D(const point3Dtype& p1, const point3Dtype& p2) {
    StartLineAbs3D(p1);
    EndLineAbs3D(p2);
}

void COpenGL::StartLineAbs3D(const point3Dtype& p) {
    SetupLine();
    detail::OpenLine& line = m_Renderer->line;
    line.open = true;
    line.stippled = GetLineStipple(m_LineStyle) != kSolid;
    line.seeThrough = false;
    line.width = m_Renderer->lineWidth;
    line.vertices.clear();
    AppendLineAbs3D(p);
}

void COpenGL::AppendLineAbs3D(const point3Dtype& p) {
    detail::OpenLine& line = m_Renderer->line;
    if (!line.open) return;
    const detail::Vec3 device = m_Renderer->matrix.ToDevice(p);
    // A vertex that cannot be placed ends the run before it: its two segments are left out.
    if (!IsFinite(device)) {
        FinishRun();
        return;
    }
    line.seeThrough = line.seeThrough || m_Renderer->IsSeeThrough(m_CurrentColor);
    const detail::PackedColor color = m_Renderer->scene.transparent
                                          ? detail::PackWithAlpha(m_CurrentColor)
                                          : detail::Pack(m_CurrentColor);
    line.vertices.push_back(detail::MakeLineVertex(device, color));
    // What is joined at its ends, or must not overlap, stays in one piece.
    const bool whole = line.stippled || line.seeThrough || m_LineJoins == LINE_JOINS_MITRED;
    if (whole || line.vertices.size() < kPiece) return;
    const detail::LineVertex last = line.vertices.back();
    FinishRun();
    line.vertices.push_back(last);
}

void COpenGL::FinishRun() {
    detail::OpenLine& line = m_Renderer->line;
    const double bit = std::clamp(m_LineStyleFactor, 1, 256) * GetLineUnit();
    const WORD pattern = GetLineStipple(m_LineStyle);
    const double mitre = m_LineJoins == LINE_JOINS_MITRED && std::isfinite(m_MitreLimit)
                             ? std::max(m_MitreLimit, 1.0)
                             : 0.0;
    const bool joined = m_LineJoins != LINE_JOINS_NONE && m_Renderer->DrawsImage();
    const bool pieces = line.seeThrough && (line.stippled || mitre > 0.0);
    if (joined || pieces)
        m_Renderer->AddStroke(line, bit, pattern, mitre);
    else if (line.stippled)
        m_Renderer->DrawStippled(line, detail::WholeWithin(std::round(bit), 1, 256), pattern);
    else if (line.seeThrough && m_Renderer->DrawsImage())
        m_Renderer->KeepSegments(line);
    else
        m_Renderer->AddPolyline(line.width, line.vertices,
                                mitre > 0.0 && !m_Renderer->DrawsImage());
    if (mitre > 0.0 && !pieces && !line.stippled && !m_Renderer->DrawsImage())
        m_Renderer->AddMitres(line, mitre);
    line.vertices.clear();
}

void COpenGL::EndLineAbs3D(const point3Dtype& p) {
    detail::OpenLine& line = m_Renderer->line;
    if (!line.open) return;
    AppendLineAbs3D(p);
    FinishRun();
    line.open = false;
    SetColorMode(m_SavedColorMode);
    FinishPrimitive();
}

}  // namespace varnel
