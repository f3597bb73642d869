// COpenGL: colour by value through a one-dimensional texture.
#include <algorithm>
#include <iterator>

#include "varnel/foundation/detail/counts.h"
#include "varnel/render/detail/renderer.h"
#include "varnel/render/opengl.h"

namespace varnel {
namespace {

constexpr int kTextureEntries = 256;

void StoreTexel(BYTE texel[4], const RGBDType& color) {
    const RGBBType bytes = RGBDtoRGBB(color);
    texel[0] = bytes.r;
    texel[1] = bytes.g;
    texel[2] = bytes.b;
    texel[3] = bytes.a;
}

}  // namespace

void COpenGL::SetTextureMode(int mode) {
    m_TextureMode = mode;
    const GLContext::HostContextGuard host;
    if (mode < 0 || !Ready()) return;
    m_Renderer->Flush();
    m_Renderer->gl.SetTableParameters();
}

void COpenGL::EnableTexture(BOOL on) {
    m_TextureEnabled = on;
    const GLContext::HostContextGuard host;
    if (m_Renderer->collecting == 0 && Ready()) m_Renderer->gl.Texture(on != 0);
}

void COpenGL::SetTextureLighting(BOOL on, double least, double most) {
    m_TextureLighting = on;
    m_TextureLeast = least;
    m_TextureMost = most;
}

void COpenGL::SetTextureColorArray(const RGBDType* colors, double min, double max, int n) {
    if (colors == nullptr || n < 1 || n > kTextureEntries) return;
    int size = 2;
    while (size < n)
        size *= 2;
    // The maximum is stretched, not the range: the last colour ends at max when min is 0.
    m_TextureScale = 1.0 / (max * size / n - min);
    m_TextureOffset = min;
    for (int i = 0; i < size; ++i)
        StoreTexel(m_TextureArray[i], colors[i < n ? i : n - 1]);
    UploadTexture(size);
}

void COpenGL::SetTextureColorArray(std::span<const RGBDType> colors, double min, double max) {
    if (colors.empty() || colors.size() > kTextureEntries)
        detail::Raise(ERR3D_PARAMETER, ERR3DCLASS_OPENGL, "SetTextureColorArray",
                      detail::Say("the number of colours is ", colors.size()));
    SetTextureColorArray(colors.data(), min, max, static_cast<int>(colors.size()));
}

void COpenGL::SetTextureEndpointColors(const RGBDType& c1, const RGBDType& c2, double min,
                                       double max, int step) {
    if (step < 1) return;
    m_TextureScale = 1.0 / (max - min);
    m_TextureOffset = min;
    const RGBDType delta = {(c2.r - c1.r) / kTextureEntries, (c2.g - c1.g) / kTextureEntries,
                            (c2.b - c1.b) / kTextureEntries, 0.0};
    StoreTexel(m_TextureArray[0], c1);
    RGBDType running = c1;
    RGBDType held = c1;
    for (int i = 1; i < kTextureEntries - 1; ++i) {
        running = {running.r + delta.r, running.g + delta.g, running.b + delta.b, 1.0};
        if ((i - 1) % step == 0) held = running;
        StoreTexel(m_TextureArray[i], held);
    }
    StoreTexel(m_TextureArray[kTextureEntries - 1], c2);
    // The colours become a grey ramp; the run from c1 to c2 shows in the alpha bytes alone.
    for (int i = 0; i < kTextureEntries; ++i)
        for (int k = 0; k < 3; ++k)
            m_TextureArray[i][k] = static_cast<BYTE>(i);
    UploadTexture(kTextureEntries);
}

void COpenGL::UploadTexture(int size) {
    const GLContext::HostContextGuard host;
    if (!Ready()) return;
    m_Renderer->Flush();
    detail::SceneState& scene = m_Renderer->scene;
    std::transform(std::begin(m_TextureArray), std::end(m_TextureArray), scene.texture.begin(),
                   [](const BYTE(&t)[4]) {
                       return RGBBType{t[0], t[1], t[2], t[3]};
                   });
    scene.textureSize = size;
    m_Renderer->gl.UploadTable(scene);
}

void COpenGL::CopyTextureArray(RGBDType* out) const {
    if (out == nullptr) return;
    for (const BYTE(&texel)[4] : m_TextureArray)
        *out++ = RGBBtoRGBD({texel[0], texel[1], texel[2], texel[3]});
}

void COpenGL::CopyXYorZtoV(point3Dtype* pts, double scale, double offset, int axis, int n) {
    if (pts == nullptr || axis < 0 || axis > 2) return;
    for (int i = 0; i < n; ++i)
        pts[i].w = (GetCoord3D(pts[i], axis) - offset) * scale;
}

void COpenGL::CopyXYorZtoV(std::span<point3Dtype> pts, double scale, double offset, int axis) {
    CopyXYorZtoV(pts.data(), scale, offset, axis,
                 detail::CountOf(pts, {ERR3DCLASS_OPENGL, "CopyXYorZtoV"}));
}

}  // namespace varnel
