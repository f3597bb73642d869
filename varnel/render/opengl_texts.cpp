// COpenGL: texts and pictures.
#include "varnel/foundation/detail/diagnose.h"
#include "varnel/render/detail/gl.h"
#include "varnel/render/detail/renderer.h"
#include "varnel/render/font.h"
#include "varnel/render/opengl.h"

namespace varnel {

void COpenGL::DrawTextRun(const CFont3D& font, std::string_view text, double halo,
                          const RGBDType* haloColor) {
    const std::string_view shown = m_Renderer->TakeText(text);
    if (shown.size() < text.size())
        detail::Diagnose("DrawText", "a line of text or the texts of a picture are too long: ",
                         text.size() - shown.size(), " bytes are not drawn");
    if (shown.empty()) return;
    // Lines in the plane of the text are not to strike through it.
    constexpr double kInFront = 0.01;
    SyncState();
    detail::Matrix4 placement = m_Renderer->matrix.Top();
    if (halo > 0.0) placement.m[14] -= kInFront;
    const detail::SceneState& scene = m_Renderer->scene;
    const detail::TextRun run{shown,
                              font,
                              placement,
                              m_CurrentColor,
                              m_Renderer->element,
                              halo,
                              haloColor ? *haloColor : scene.background};
    // Through a halo nothing would be seen.
    if (!m_Renderer->IsSeeThrough(m_CurrentColor))
        m_Renderer->sink->DrawText(scene, run);
    else if (font.GetFace() != nullptr)
        m_Renderer->KeepText(run);
    SyncState();
}

void COpenGL::DrawPicture(const BYTE* pixels, int width, int height, const point3Dtype corners[4],
                          int repeatX, int repeatY) {
    if (pixels == nullptr || width < 1 || height < 1) return;
    SyncState();
    const detail::MatrixStack& matrix = m_Renderer->matrix;
    detail::ImageQuad image{pixels,
                            width,
                            height,
                            {},
                            repeatX,
                            repeatY,
                            matrix.NormalToDevice({0.0, 1.0, 0.0}),
                            m_Renderer->element};
    for (std::size_t i = 0; i < image.corners.size(); ++i)
        image.corners[i] = matrix.ToDevice(corners[i]);
    if (m_Renderer->IsKept({0.0, 0.0, 0.0, 0.0}))
        m_Renderer->transparentImages.push_back(image);
    else
        m_Renderer->sink->DrawImage(m_Renderer->scene, image);
    SyncState();
}

int COpenGL::GetLargestPicture() {
    GLint most = 0;
    const GLContext::HostContextGuard host;
    if (Ready()) glGetIntegerv(GL_MAX_TEXTURE_SIZE, &most);
    return most;
}

}  // namespace varnel
