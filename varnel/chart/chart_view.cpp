// CChartView3D: construction, owned objects, sizes and attributes.
#include "varnel/chart/chart_view.h"

#include "varnel/axes/axes.h"
#include "varnel/chart/chart.h"
#include "varnel/chart/header.h"
#include "varnel/foundation/detail/raise.h"
#include "varnel/legend/legend.h"
#include "varnel/platform/detail/gl_context.h"
#include "varnel/platform/dib_section.h"
#include "varnel/platform/window.h"
#include "varnel/render/opengl.h"
#include "varnel/transform/transform.h"

namespace varnel {
namespace {

detail::Origin At(const char* operation) {
    return {ERR3DCLASS_CHARTVIEW3D, operation};
}

[[noreturn]] void Fail(CErr3DTypes type, const char* operation, const CString& why) {
    detail::Raise(type, ERR3DCLASS_CHARTVIEW3D, operation, why);
}

}  // namespace

CChartView3D::CChartView3D() {
    InitChartViewDefaults();
}

CChartView3D::CChartView3D(CWnd* wnd) {
    InitChartViewDefaults();
    SetWindow(wnd);
    if (wnd->GetSafeHwnd() != nullptr) InitDeviceContext(1);
}

CChartView3D::CChartView3D(CWnd* wnd, int width, int height) {
    InitChartViewDefaults();
    SetWindow(wnd);
    m_RequestedWidth = width;
    m_RequestedHeight = height;
    if (wnd->GetSafeHwnd() != nullptr) InitDeviceContext(0);
}

void CChartView3D::SetWindow(CWnd* wnd) {
    if (wnd == nullptr) Fail(ERR3D_CWND_PARAMETER, "CChartView3D", "the window is null");
    m_pWnd = wnd;
    m_WindowLife = wnd->GetLife();
}

/// The window, null when there is none (any more).
CWnd* CChartView3D::LiveWindow() const {
    return m_WindowLife.expired() ? nullptr : m_pWnd;
}

void CChartView3D::RequireWindowToLive(const char* operation) const {
    if (m_pWnd != nullptr && m_WindowLife.expired())
        Fail(ERR3D_CWND_PARAMETER, operation, "the view's window has been destroyed");
}

CChartView3D::~CChartView3D() {
    const GLContext::HostContextGuard host;
    DeleteChartViewObjects();
    m_pHeader.reset();
    if (m_pOpenGL != nullptr) m_pOpenGL->Close();
    m_pOpenGL.reset();
    DeleteBitmap();
    m_Signature = 0;
}

void CChartView3D::InitChartViewDefaults() {
    m_Saved = {};
    m_Settings = {};
    m_Added = {};
    m_RequestedWidth = m_RequestedHeight = -1;
    m_PrintingState = 0;
    m_FontChanged = 1;
    m_Signature = kSignature;
    m_pHeader = detail::NewObject<CHeader3D>(At("InitChartViewDefaults"));
    if (m_pOpenGL == nullptr) return;
    SetAntialiasing(m_Settings.samples);
    SetFrameOffset(m_Settings.frameOffset);
    m_pHeader->InitHeaders(m_pOpenGL.get());
}

void CChartView3D::InitDeviceContext(int useScreenSize) {
    CWnd* const window = LiveWindow();
    CDC* const dc = window != nullptr ? window->GetDC() : nullptr;
    if (dc == nullptr)
        Fail(ERR3D_CDC_PARAMETER, "InitDeviceContext",
             m_pWnd == nullptr ? "the view has no window" : "the window has no device context");
    if (useScreenSize != 0) {
        m_RequestedWidth = dc->GetDeviceCaps(HORZRES);
        m_RequestedHeight = dc->GetDeviceCaps(VERTRES);
    }
    InitChartView3D(dc);
    window->ReleaseDC(dc);
    m_Initialized = 1;
}

void CChartView3D::InitChartView3D(CDC* dc) {
    const GLContext::HostContextGuard host;
    MakeCompatibleDC(dc);
    MakeCompatibleBitmap(m_RequestedWidth, m_RequestedHeight);
    MakeCompatibleOpenGL();
    m_pOpenGL->SetSamples(m_Settings.samples);
    m_pOpenGL->SetFrameOffset(m_Settings.frameOffset);
    m_pHeader->InitHeaders(m_pOpenGL.get());
    m_Initialized = 1;
}

void CChartView3D::MakeCompatibleDC(CDC* dc) {
    if (dc == nullptr || dc->GetSafeHdc() == nullptr)
        Fail(ERR3D_CDC_PARAMETER, "MakeCompatibleDC",
             "the device context is null or has no device");
    // A copy of the handle: the device then lives as long as the view, whatever the window does.
    m_WindowDC = *dc;
    m_pDC = &m_WindowDC;
    m_MemDC.CreateCompatibleDC(m_pDC);
}

void CChartView3D::MakeCompatibleBitmap(int width, int height) {
    CString why;
    if (!GLContext::CanBeDrawn(width, height, why))
        Fail(ERR3D_OBJECT_NEW, "MakeCompatibleBitmap", why);
    m_pDIBSection = detail::NewObject<CDIBSection>(At("MakeCompatibleBitmap"), m_pDC, &m_MemDC,
                                                   width, height, m_pDC->GetDeviceCaps(BITSPIXEL));
    if (m_pDIBSection->GetBitmap() == nullptr)
        Fail(ERR3D_OBJECT_NEW, "MakeCompatibleBitmap",
             detail::Say("an image of ", width, " x ", height, " pixels cannot be had"));
    m_BitmapWidth = width;
    m_BitmapHeight = height;
    ActivateBitmap(1);
}

void CChartView3D::MakeCompatibleOpenGL() {
    m_pOpenGL = detail::NewObject<COpenGL>(At("MakeCompatibleOpenGL"), m_pDC, m_pDIBSection.get());
}

void CChartView3D::ActivateBitmap(int on) {
    if (on != 0) {
        HBITMAP previous = m_MemDC.SelectObject(m_pDIBSection->GetBitmap());
        if (!m_BitmapActive) m_hOldBitmap = std::move(previous);
        m_BitmapActive = true;
    } else if (m_BitmapActive) {
        m_MemDC.SelectObject(m_hOldBitmap);
        m_hOldBitmap = nullptr;
        m_BitmapActive = false;
    }
}

void CChartView3D::DeleteBitmap() {
    ActivateBitmap(0);
    m_pDIBSection.reset();
}

void CChartView3D::RequireContext(const char* operation) {
    RequireWindowToLive(operation);
    if (m_Initialized == 0 && m_pWnd != nullptr && m_pWnd->GetSafeHwnd() != nullptr)
        InitDeviceContext(m_RequestedWidth == -1 && m_RequestedHeight == -1 ? 1 : 0);
    if (m_pOpenGL == nullptr)
        Fail(ERR3D_OPENGL_PARAMETER, operation,
             "the view has no rendering context: it needs a window with a handle");
}

void CChartView3D::RequireImage(const char* operation) const {
    if (m_pDIBSection == nullptr) Fail(ERR3D_DIB_HANDLE, operation, "the view's image was deleted");
}

/// A context that is closed draws nothing; one that is somewhere else is an error.
void CChartView3D::RequireCurrent(const char* operation) {
    CString why;
    if (m_pOpenGL->MakeCurrent(why) == 0 && !why.empty())
        Fail(ERR3D_OPENGL_PARAMETER, operation, why);
}

template <class... Args>
CChart3D* CChartView3D::AppendChart(Args... args) {
    const GLContext::HostContextGuard host;
    RequireContext("NewChart3D");
    return m_ChartList.Append(detail::NewObject<CChart3D>(At("NewChart3D"), this, args...));
}

CChart3D* CChartView3D::NewChart3D() {
    return AppendChart();
}

CChart3D* CChartView3D::NewChart3D(const point3Dtype& min, const point3Dtype& max) {
    return AppendChart(min, max);
}

CChart3D* CChartView3D::NewChart3D(const point3Dtype& min, const point3Dtype& max,
                                   CTransform3D** t) {
    return AppendChart(min, max, t);
}

CChart3D* CChartView3D::NewChart3D(const point3Dtype& min, const point3Dtype& max, CTransform3D** t,
                                   CAxes3D** a) {
    return AppendChart(min, max, t, a);
}

CLegend3D* CChartView3D::NewLegend3D() {
    const GLContext::HostContextGuard host;
    RequireContext("NewLegend3D");
    return m_LegendList.Append(detail::NewObject<CLegend3D>(At("NewLegend3D"), this));
}

CLegend3D* CChartView3D::NewLegend3D(int place) {
    CLegend3D* const legend = NewLegend3D();
    legend->SetPlace(place);
    return legend;
}

void CChartView3D::DeleteCharts() {
    m_ChartList.RemoveAll();
}

void CChartView3D::DeleteLegends() {
    m_LegendList.RemoveAll();
}

void CChartView3D::DeleteChartViewObjects() {
    DeleteCharts();
    DeleteLegends();
}

void CChartView3D::SetViewSizeWindow() {
    RECT client;
    if (const CWnd* window = LiveWindow()) window->GetClientRect(&client);
    SetViewSizeSubWindow(client.right, client.bottom);
}

void CChartView3D::SetViewSizePrinter() {
    SetViewSizeSubWindow(m_BitmapWidth, m_BitmapHeight);
}

void CChartView3D::SetViewSizeSubWindow(int width, int height) {
    m_ViewWidth = width;
    m_ViewHeight = height;
}

void CChartView3D::GetViewSize(int* width, int* height) const {
    if (width != nullptr) *width = m_ViewWidth;
    if (height != nullptr) *height = m_ViewHeight;
}

void CChartView3D::SetFont(const CString& name, int weight, int option) {
    m_Saved.fontName = name;
    m_Saved.fontWeight = weight;
    m_Saved.fontOption = option;
    m_FontChanged = 1;
}

void CChartView3D::SetFontItalics(int on) {
    m_Saved.fontItalics = on;
    m_FontChanged = 1;
}

void CChartView3D::SetFontUnderline(int on) {
    m_Saved.fontUnderline = on;
    m_FontChanged = 1;
}

void CChartView3D::SetAntialiasing(int samples) {
    m_Settings.samples = samples;
    if (m_pOpenGL == nullptr) return;
    const GLContext::HostContextGuard host;
    m_pOpenGL->SetSamples(samples);
}

void CChartView3D::SetFrameOffset(int on) {
    m_Settings.frameOffset = on;
    if (m_pOpenGL == nullptr) return;
    const GLContext::HostContextGuard host;
    m_pOpenGL->SetFrameOffset(on);
}

}  // namespace varnel
