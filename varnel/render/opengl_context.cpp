// COpenGL: construction, the context's life, frame and state, matrices.
#include <algorithm>
#include <cmath>
#include <iterator>

#include "varnel/foundation/detail/progress.h"
#include "varnel/foundation/detail/raise.h"
#include "varnel/foundation/notice.h"
#include "varnel/platform/dib_section.h"
#include "varnel/render/detail/gl.h"
#include "varnel/render/detail/mesh.h"
#include "varnel/render/detail/renderer.h"
#include "varnel/render/font.h"
#include "varnel/render/opengl.h"

namespace varnel {

using detail::Matrix4;

COpenGL::COpenGL(CDC* pDC, CDIBSection* pDIB)
    : m_pDC(pDC),
      m_pDIBSection(pDIB),
      m_Renderer(std::make_unique<detail::Renderer>()),
      m_Meshes(std::make_unique<detail::MeshPainter>()) {
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
        detail::Raise(ERR3D_PIXEL_FORMAT, ERR3DCLASS_OPENGL, "InitContext",
                      "the device has no pixel format to draw in");
    m_pDIBSection->CreateRGBPalette();
    std::string why;
    auto context = GLContext::Create(*m_pClientDC, why);
    if (context == nullptr) {
        if (CErr3D::GetErrorReportMode() == 1) ShowNotice(why);
        detail::Raise(ERR3D_PIXEL_FORMAT, ERR3DCLASS_OPENGL, "InitContext", why);
    }
    // A new context covers the whole image, whatever the viewport of one before it was.
    AssignViewport(m_Viewport, 0, 0, m_pDIBSection->DIBWidth(), m_pDIBSection->DIBHeight());
    m_Renderer->Start(std::move(context), m_Viewport);
}

void COpenGL::Close() {
    if (m_Renderer->gl.context != nullptr) {
        // Fonts hold display lists, which end with the context.
        const GLContext::HostContextGuard host;
        Ready();
        m_FontList.RemoveAll();
        m_Renderer->gl.End();
        GLContext::MakeNonCurrent();
        m_Renderer->gl.context.reset();
    }
    if (m_pClientDC != nullptr) m_pClientDC->SelectPalette(nullptr, 0);
}

BOOL COpenGL::MakeCurrent() {
    return Ready();
}

BOOL COpenGL::MakeCurrent(CString& why) {
    why.clear();
    return m_Renderer->gl.MakeCurrent(&why);
}

void COpenGL::MakeNonCurrent() {
    GLContext::MakeNonCurrent();
}

void COpenGL::ExchangeBuffers() {
    m_LabelCharacters = m_AxisLines = 0;
    m_Renderer->StartTexts();
    SyncState();
    const GLContext::HostContextGuard host;
    if (Ready()) glFlush();
}

void COpenGL::ReadBack() {
    m_LabelCharacters = m_AxisLines = 0;
    m_Renderer->StartTexts();
    SyncState();
    const GLContext::HostContextGuard host;
    if (Ready()) m_Renderer->gl.context->ReadBack();
}

void COpenGL::ReadBackDrawn() {
    m_LabelCharacters = m_AxisLines = 0;
    m_Renderer->StartTexts();
    SyncState();
    const GLContext::HostContextGuard host;
    if (Ready()) m_Renderer->gl.ReadBackDrawn();
}

bool COpenGL::Ready() {
    return m_Renderer->gl.MakeCurrent();
}

void COpenGL::SetSink(detail::SceneSink* sink) {
    const GLContext::HostContextGuard host;
    m_Renderer->Flush();
    m_Renderer->sink = sink != nullptr ? sink : &m_Renderer->gl;
    m_Renderer->batch.KeepRecords(m_Renderer->sink->WantsRecords());
    if (Ready()) m_Renderer->UpdateCoverage();
}

void COpenGL::SetElement(int object, int index) {
    m_Renderer->element = {object, index};
}

void COpenGL::SetClearColor(double r, double g, double b, double a) {
    m_Renderer->scene.background = SetRGBD(r, g, b, a);
    const GLContext::HostContextGuard host;
    if (Ready()) m_Renderer->gl.SetClearColor(m_Renderer->scene.background);
}

void COpenGL::Clear(int mask) {
    const GLContext::HostContextGuard host;
    if (!Ready()) return;
    m_Renderer->Flush();
    m_Renderer->sink->Clear(m_Renderer->scene, (mask & CLEAR_COLOR) != 0,
                            (mask & CLEAR_DEPTH) != 0);
}

void COpenGL::SetColorMode(int mode) {
    m_ColorMode = mode;
    const GLContext::HostContextGuard host;
    if (m_Renderer->collecting == 0 && Ready()) m_Renderer->gl.Lighting(mode != 0);
}

void COpenGL::SetViewport(const GLViewportType& viewport) {
    m_Viewport = viewport;
    // OpenGL takes no negative extents.
    m_Viewport.width = std::max(m_Viewport.width, 0);
    m_Viewport.height = std::max(m_Viewport.height, 0);
    const GLContext::HostContextGuard host;
    if (!Ready()) return;
    m_Renderer->Flush();
    m_Renderer->scene.viewport = m_Viewport;
    m_Renderer->gl.SetViewport(m_Viewport);
    m_Renderer->UpdateCoverage();
}

void COpenGL::GetViewport(GLViewportType& viewport) {
    viewport = m_Viewport;
    const GLContext::HostContextGuard host;
    if (!Ready()) return;
    GLint v[4];
    glGetIntegerv(GL_VIEWPORT, v);
    const int scale = m_Renderer->gl.context->PixelScale();
    AssignViewport(viewport, v[0] / scale, v[1] / scale, v[2] / scale, v[3] / scale);
}

void COpenGL::SetClipLimits(const point3Dtype& p1, const point3Dtype& p2) {
    const GLContext::HostContextGuard host;
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
    auto out = m_Renderer->scene.clipPlanes.begin();
    for (const auto& plane : planes) {
        std::array<double, 4> device{};
        if (m_Renderer->matrix.PlaneToDevice(plane, device)) *out = device;
        ++out;
    }
    m_Renderer->gl.SetClipPlanes(m_Renderer->scene);
    MatrixChanged();
}

void COpenGL::EnableClipping(BOOL on) {
    const bool clip = on != 0;
    const GLContext::HostContextGuard host;
    if (clip == m_Renderer->scene.clipping || !Ready()) return;
    m_Renderer->Flush();
    m_Renderer->scene.clipping = clip;
    m_Renderer->gl.SetClipping(clip);
}

void COpenGL::SetSamples(int samples) {
    const GLContext::HostContextGuard host;
    if (!Ready()) return;
    m_Renderer->Flush();
    m_Renderer->gl.context->SetSamples(samples);
    m_Renderer->gl.AllIsNew();
    m_Renderer->UpdateCoverage();
    // The number of framebuffer pixels per image pixel may have changed.
    if (m_Viewport.width > 0) SetViewport(m_Viewport);
}

bool COpenGL::SetOutput(const HBITMAP& bitmap, double lineScale) {
    const GLContext::HostContextGuard host;
    if (!Ready()) return false;
    m_Renderer->Flush();
    if (!m_Renderer->gl.context->SetTarget(bitmap)) return false;
    m_Renderer->gl.lineScale = bitmap ? lineScale : 1.0;
    m_Renderer->gl.AllIsNew();
    m_Renderer->UpdateCoverage();
    return true;
}

int COpenGL::GetSamples() const {
    return m_Renderer->gl.context != nullptr ? m_Renderer->gl.context->GetSamples() : 0;
}

void COpenGL::SetCulling(BOOL on) {
    const GLContext::HostContextGuard host;
    if (Ready()) m_Renderer->SetCulling(on != 0);
}

BOOL COpenGL::GetCulling() const {
    return m_Renderer->IsCulling() ? 1 : 0;
}

void COpenGL::SetTransparency(BOOL on) {
    const GLContext::HostContextGuard host;
    if (Ready()) m_Renderer->Flush();
    m_Renderer->scene.transparent = on != 0;
    m_Renderer->DropTransparent();
}

void COpenGL::DrawTransparent() {
    const GLContext::HostContextGuard host;
    if (Ready()) m_Renderer->DrawTransparent();
}

void COpenGL::SetFrameOffset(BOOL on) {
    const GLContext::HostContextGuard host;
    if (Ready()) m_Renderer->Flush();
    m_Renderer->scene.frameOffset = on != 0;
}

void COpenGL::SetLineAreas(BOOL on) {
    const GLContext::HostContextGuard host;
    if (Ready()) m_Renderer->Flush();
    m_Renderer->scene.lineAreas = on != 0;
}

BOOL COpenGL::GetLineAreas() const {
    return m_Renderer->scene.lineAreas ? 1 : 0;
}

BOOL COpenGL::GetFrameOffset() const {
    return m_Renderer->scene.frameOffset ? 1 : 0;
}

void COpenGL::SyncState() {
    const GLContext::HostContextGuard host;
    if (!Ready()) return;
    m_Renderer->Flush();
    detail::GLSink& gl = m_Renderer->gl;
    gl.matrixSent = false;
    gl.SendMatrix(m_Renderer->matrix.Top());
    gl.Lighting(m_ColorMode != 0);
    gl.Texture(m_TextureEnabled != 0);
    UseLineWidth();
    gl.LineWidth(m_Renderer->lineWidth);
    gl.SendColor(m_CurrentColor);
}

void COpenGL::BeginCollect() {
    if (m_Renderer->collecting++ > 0) return;
    m_Renderer->host.emplace();
    m_Renderer->sink->BeginObject();
}

void COpenGL::EndCollect() {
    if (--m_Renderer->collecting > 0) return;
    SyncState();
    m_Renderer->sink->EndObject();
    m_Renderer->host.reset();
}

void COpenGL::FinishPrimitive() {
    if (m_Renderer->collecting == 0)
        SyncState();
    else if (m_Renderer->batch.IsLarge())
        m_Renderer->HandOver();
    detail::ProgressStep();
}

bool COpenGL::Follows() const {
    return m_Renderer->collecting == 0 && m_Renderer->gl.IsCurrent();
}

void COpenGL::MatrixChanged() {
    m_Renderer->gl.matrixSent = false;
    if (m_Renderer->matrixScopes == 0 && Follows())
        m_Renderer->gl.SendMatrix(m_Renderer->matrix.Top());
}

MatrixScope::MatrixScope(COpenGL* gl) : m_pOpenGL(gl) {
    if (m_pOpenGL != nullptr) ++m_pOpenGL->m_Renderer->matrixScopes;
}

MatrixScope::~MatrixScope() {
    if (m_pOpenGL != nullptr && --m_pOpenGL->m_Renderer->matrixScopes == 0)
        m_pOpenGL->MatrixChanged();
}

void COpenGL::SetCurrentColor(const RGBDType& color) {
    m_CurrentColor = color;
    if (Follows()) m_Renderer->gl.SendColor(color);
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
