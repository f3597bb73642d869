// COpenGL: construction, the context's life, frame and state, matrices.
#include <algorithm>
#include <cmath>
#include <iterator>

#include "varnel/foundation/detail/raise.h"
#include "varnel/foundation/notice.h"
#include "varnel/platform/dib_section.h"
#include "varnel/render/detail/gl.h"
#include "varnel/render/detail/renderer.h"
#include "varnel/render/font.h"
#include "varnel/render/opengl.h"

namespace varnel {

using detail::Matrix4;

COpenGL::COpenGL(CDC* pDC, CDIBSection* pDIB)
    : m_pDC(pDC), m_pDIBSection(pDIB), m_Renderer(std::make_unique<detail::Renderer>()) {
    if (pDC == nullptr) detail::Raise(ERR3D_CDC_PARAMETER, ERR3DCLASS_OPENGL, "COpenGL");
    if (pDIB == nullptr) detail::Raise(ERR3D_DIB_HANDLE, ERR3DCLASS_OPENGL, "COpenGL");
    m_pClientDC = pDIB->GetMemCDC();
    SetOpenGLDefaults();
}

COpenGL::~COpenGL() {
    m_FontList.RemoveAll();
    m_Magic = 0;
}

void COpenGL::SetOpenGLDefaults() {
    InitPaletteConstants();
    m_FillColor = m_FillColor2 = m_LineColor = SetRGBD(0, 0, 0, 0);
    m_FrameColor = m_CurrentColor = SetRGBD(1, 1, 1, 1);
    m_LineStyle = 0;
    m_LineStyleFactor = 1;
    m_LineWidth = 1.0F;
    m_TextureMode = 0;
    m_TextureEnabled = 0;
    m_FrameFilled = 0;
    m_ColorMode = 0;
    m_LightModelAmbient = SetRGBF(0.4F, 0.4F, 0.4F, 1.0F);
    m_LightAmbient = SetRGBF(0.1F, 0.1F, 0.1F, 1.0F);
    m_LightDiffuse = SetRGBF(1.0F, 1.0F, 1.0F, 1.0F);
    m_LightSpecular = SetRGBF(0.0F, 0.0F, 0.0F, 1.0F);
    const float position[4] = {1.0F, 0.0F, 0.0F, 0.0F};
    std::copy(std::begin(position), std::end(position), m_LightPosition);
    constexpr WORD stipple[16] = {0xFFFF, 0x0101, 0x1111, 0x5555, 0x0303, 0x0707, 0x0F0F, 0xFF00,
                                  0xFE10, 0xFF3C, 0xFE44, 0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF};
    std::copy(std::begin(stipple), std::end(stipple), m_LineStipple);
    InitContext();
    NewFont3D();
}

BOOL COpenGL::bSetupPixelFormat() {
    PIXELFORMATDESCRIPTOR wanted;
    wanted.dwFlags = PFD_DRAW_TO_BITMAP | PFD_SUPPORT_GDI | PFD_SUPPORT_OPENGL;
    wanted.cColorBits =
        static_cast<BYTE>(m_pClientDC->GetDeviceCaps(PLANES) * m_pDC->GetDeviceCaps(BITSPIXEL));
    wanted.cDepthBits = 32;
    const int format = CDC::ChoosePixelFormat(wanted);
    const BOOL set = m_pClientDC->SetPixelFormat(format);
    return format != 0 && set != 0;
}

void COpenGL::InitContext() {
    if (m_pClientDC == nullptr || bSetupPixelFormat() == 0)
        detail::Raise(ERR3D_PIXEL_FORMAT, ERR3DCLASS_OPENGL, "InitContext");
    m_pDIBSection->CreateRGBPalette();
    std::string why;
    m_Renderer->context = GLContext::Create(*m_pClientDC, why);
    if (m_Renderer->context == nullptr) {
        ShowNotice(why);
        detail::Raise(ERR3D_PIXEL_FORMAT, ERR3DCLASS_OPENGL, "InitContext");
    }
    glClearDepth(1.0);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    // A chart's box may reach beyond the near and far planes when it turns; it is not cut there.
    glEnable(GL_DEPTH_CLAMP);
    glDisable(GL_POLYGON_SMOOTH);
    glPolygonOffset(1.0F, 1.0F);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glEnable(GL_NORMALIZE);
    glColorMaterial(GL_FRONT, GL_AMBIENT_AND_DIFFUSE);
}

void COpenGL::Close() {
    if (m_Renderer->context != nullptr) {
        // Fonts hold display lists, which end with the context.
        Ready();
        m_FontList.RemoveAll();
        GLContext::MakeNonCurrent();
        m_Renderer->context.reset();
    }
    if (m_pClientDC != nullptr) m_pClientDC->SelectPalette(nullptr, 0);
}

BOOL COpenGL::MakeCurrent() {
    return Ready();
}

void COpenGL::MakeNonCurrent() {
    GLContext::MakeNonCurrent();
}

void COpenGL::ExchangeBuffers() {
    SyncState();
    if (Ready()) glFlush();
}

void COpenGL::ReadBack() {
    SyncState();
    if (Ready()) m_Renderer->context->ReadBack();
}

void COpenGL::ReadBackDrawn() {
    SyncState();
    if (!Ready()) return;
    m_Renderer->context->ReadBack(m_Renderer->drawnWidth, m_Renderer->drawnHeight);
    m_Renderer->drawnWidth = m_Renderer->drawnHeight = 0;
}

bool COpenGL::Ready() {
    return m_Renderer->MakeCurrent();
}

void COpenGL::SetClearColor(double r, double g, double b, double /*a*/) {
    if (!Ready()) return;
    glClearColor(static_cast<float>(r), static_cast<float>(g), static_cast<float>(b), 0.0F);
}

void COpenGL::Clear(int mask) {
    if (!Ready()) return;
    m_Renderer->Flush();
    glClear(static_cast<GLbitfield>(mask) & (GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT));
}

void COpenGL::SetColorMode(int mode) {
    m_ColorMode = mode;
    if (m_Renderer->collecting == 0 && Ready()) m_Renderer->Lighting(mode != 0);
}

void COpenGL::SetViewport(const GLViewportType& viewport) {
    m_Viewport = viewport;
    // OpenGL takes no negative extents.
    m_Viewport.width = std::max(m_Viewport.width, 0);
    m_Viewport.height = std::max(m_Viewport.height, 0);
    if (!Ready()) return;
    m_Renderer->Flush();
    const int scale = m_Renderer->context->PixelScale();
    const GLViewportType& v = m_Viewport;
    m_Renderer->Extend(v);
    glViewport(v.x * scale, v.y * scale, v.width * scale, v.height * scale);
    glScissor(v.x * scale, v.y * scale, v.width * scale, v.height * scale);
    glEnable(GL_SCISSOR_TEST);
}

void COpenGL::GetViewport(GLViewportType& viewport) {
    viewport = m_Viewport;
    if (!Ready()) return;
    GLint v[4];
    glGetIntegerv(GL_VIEWPORT, v);
    const int scale = m_Renderer->context->PixelScale();
    AssignViewport(viewport, v[0] / scale, v[1] / scale, v[2] / scale, v[3] / scale);
}

void COpenGL::SetClipLimits(const point3Dtype& p1, const point3Dtype& p2) {
    if (!Ready()) return;
    m_Renderer->Flush();
    constexpr double kMargin = 0.00123456;
    const double mx = (p2.x - p1.x) * kMargin;
    const double my = (p2.y - p1.y) * kMargin;
    const double mz = (p2.z - p1.z) * kMargin;
    const point3Dtype& low = p1.x <= p2.x ? p1 : p2;
    const point3Dtype& high = p1.x <= p2.x ? p2 : p1;
    const std::array<double, 4> planes[6] = {
        {1, 0, 0, -low.x - mx},  {0, 1, 0, -low.y - my},  {0, 0, 1, -low.z - mz},
        {-1, 0, 0, high.x + mx}, {0, -1, 0, high.y + my}, {0, 0, -1, high.z + mz},
    };
    m_Renderer->SendIdentity();
    GLenum id = GL_CLIP_PLANE0;
    for (const auto& plane : planes) {
        std::array<double, 4> device{};
        if (m_Renderer->matrix.PlaneToDevice(plane, device)) glClipPlane(id, device.data());
        ++id;
    }
    MatrixChanged();
}

void COpenGL::EnableClipping(BOOL on) {
    const bool clip = on != 0;
    if (clip == m_Renderer->clipping || !Ready()) return;
    m_Renderer->Flush();
    m_Renderer->clipping = clip;
    for (GLenum i = 0; i < 6; ++i)
        clip ? glEnable(GL_CLIP_PLANE0 + i) : glDisable(GL_CLIP_PLANE0 + i);
}

void COpenGL::SetSamples(int samples) {
    if (!Ready()) return;
    m_Renderer->Flush();
    m_Renderer->context->SetSamples(samples);
    m_Renderer->AllIsNew();
    // The number of framebuffer pixels per image pixel may have changed.
    if (m_Viewport.width > 0) SetViewport(m_Viewport);
}

bool COpenGL::SetOutput(const HBITMAP& bitmap, double lineScale) {
    if (!Ready()) return false;
    m_Renderer->Flush();
    if (!m_Renderer->context->SetTarget(bitmap)) return false;
    m_Renderer->lineScale = bitmap ? lineScale : 1.0;
    m_Renderer->AllIsNew();
    return true;
}

int COpenGL::GetSamples() const {
    return m_Renderer->context != nullptr ? m_Renderer->context->GetSamples() : 0;
}

void COpenGL::SetFrameOffset(BOOL on) {
    if (Ready()) m_Renderer->Flush();
    m_Renderer->frameOffset = on != 0;
}

BOOL COpenGL::GetFrameOffset() const {
    return m_Renderer->frameOffset ? 1 : 0;
}

void COpenGL::SyncState() {
    if (!Ready()) return;
    m_Renderer->Flush();
    m_Renderer->matrixSent = false;
    m_Renderer->SendMatrix();
    m_Renderer->Lighting(m_ColorMode != 0);
    m_Renderer->Texture(m_TextureEnabled != 0);
    UseLineWidth();
    m_Renderer->LineWidth(m_Renderer->lineWidth);
    glColor3d(m_CurrentColor.r, m_CurrentColor.g, m_CurrentColor.b);
}

void COpenGL::BeginCollect() {
    ++m_Renderer->collecting;
}

void COpenGL::EndCollect() {
    if (--m_Renderer->collecting == 0) SyncState();
}

void COpenGL::FinishPrimitive() {
    if (m_Renderer->collecting == 0)
        SyncState();
    else if (m_Renderer->batch.IsLarge())
        m_Renderer->Flush();
}

void COpenGL::MatrixChanged() {
    m_Renderer->matrixSent = false;
}

void COpenGL::LoadIdentity() {
    m_Renderer->matrix.Load(Matrix4::Identity());
    MatrixChanged();
}

void COpenGL::PushMatrix() {
    m_Renderer->matrix.Push();
}

void COpenGL::PopMatrix() {
    m_Renderer->matrix.Pop();
    MatrixChanged();
}

void COpenGL::LoadMatrixTransform(const double* m) {
    if (m == nullptr) return;
    Matrix4 matrix;
    std::copy(m, m + 16, matrix.m.begin());
    m_Renderer->matrix.Load(matrix);
    MatrixChanged();
}

void COpenGL::Translate3D(double x, double y, double z) {
    m_Renderer->matrix.Translate(x, y, z);
    MatrixChanged();
}

void COpenGL::Scale3D(double x, double y, double z) {
    m_Renderer->matrix.Scale(x, y, z);
    MatrixChanged();
}

void COpenGL::Rotate3D(double degrees, int axis) {
    if (axis < 0 || axis > 2 || !std::isfinite(degrees)) return;
    m_Renderer->matrix.Multiply(detail::Rotation(degrees, axis));
    MatrixChanged();
}

void COpenGL::GetModelView(double m[16]) const {
    const auto& top = m_Renderer->matrix.Top().m;
    std::copy(top.begin(), top.end(), m);
}

}  // namespace varnel
