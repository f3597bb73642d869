// CChartView3D: drawing the view and handing the picture over.
#include <algorithm>

#include "varnel/chart/chart.h"
#include "varnel/chart/chart_view.h"
#include "varnel/chart/detail/border.h"
#include "varnel/chart/detail/watched.h"
#include "varnel/chart/header.h"
#include "varnel/foundation/detail/diagnose.h"
#include "varnel/foundation/detail/raise.h"
#include "varnel/legend/legend.h"
#include "varnel/platform/detail/gl_context.h"
#include "varnel/platform/detail/png_file.h"
#include "varnel/platform/dib_section.h"
#include "varnel/platform/files.h"
#include "varnel/platform/window.h"
#include "varnel/render/opengl.h"

namespace varnel {
namespace {

/// Height of an em of the view's own text, in device units (the view is 2 high).
constexpr double kViewFontSize = 0.2;

void RequireDevice(const CDC* dc, const char* operation) {
    if (dc == nullptr)
        detail::Raise(ERR3D_CDC_PARAMETER, ERR3DCLASS_CHARTVIEW3D, operation,
                      "there is no device context to draw to");
}

/// Colours can be seen through in charts and legends alone; also when drawing is broken off.
class TransparencyScope {
 public:
    TransparencyScope(COpenGL& gl, int on) : m_GL(gl) { m_GL.SetTransparency(on); }
    ~TransparencyScope() { m_GL.SetTransparency(0); }
    TransparencyScope(const TransparencyScope&) = delete;
    TransparencyScope& operator=(const TransparencyScope&) = delete;

 private:
    COpenGL& m_GL;
};

/// How many characters a font is made with: an option that no font has is the nearest one.
int CharactersOf(int fontOption) {
    return fontOption < 1 ? 128 : std::min(fontOption, 256);
}

}  // namespace

void CChartView3D::DrawView() {
    RequireContext("DrawView");
    const GLContext::HostContextGuard host;
    Watched("drawing", [this] { DrawWatched(); });
}

void CChartView3D::DrawWatched() {
    if (m_ViewWidth < 1 || m_ViewHeight < 1) SetViewSizePrinter();
    m_DrawWidth = m_ViewWidth;
    m_DrawHeight = m_ViewHeight;
    RequireCurrent("DrawView");
    m_pOpenGL->SetViewport({0, 0, m_DrawWidth, m_DrawHeight});
    m_ViewAspect = static_cast<double>(m_DrawHeight) / static_cast<double>(m_DrawWidth);
    m_pOpenGL->SetResolution(m_Added.dpi > 0.0 ? m_Added.dpi : Added().dpi);
    m_pOpenGL->SetLineUnits(m_Added.lineUnits);
    m_pOpenGL->SetClearColor(m_Saved.bkColor.r, m_Saved.bkColor.g, m_Saved.bkColor.b, 1.0);
    m_pOpenGL->Clear(CLEAR_COLOR_AND_DEPTH);
    m_pOpenGL->LoadIdentity();
    if (m_Saved.borderEnable != 0) DrawBorder();
    UseFont();
    if (m_Added.headerOnTop == 0) DrawHeader();
    ReserveForLegends();
    AlignCharts();
    DrawCharts();
    if (m_Added.headerOnTop != 0) DrawHeaderOnTop();
    PlaceLegends();
    DrawLegends();
    m_pOpenGL->ReadBackDrawn();
}

void CChartView3D::UseFont() {
    if (m_FontChanged == 0 || m_pOpenGL == nullptr) return;
    m_pOpenGL->RegisterFont(m_Saved.fontName, kViewFontSize, m_Saved.fontWeight,
                            m_Saved.fontItalics, m_Saved.fontUnderline,
                            CharactersOf(m_Saved.fontOption));
    m_FontChanged = 0;
}

void CChartView3D::DrawBorder() {
    detail::DrawViewportBorder(*m_pOpenGL, m_DrawWidth, m_DrawHeight, m_Saved.borderThickness,
                               m_Saved.borderColor);
}

void CChartView3D::DrawHeader() {
    // The charts scale the same font for their own texts.
    m_pOpenGL->SetFontScaleFactor(kViewFontSize);
    m_pHeader->SetViewAspect(m_ViewAspect);
    m_pHeader->DrawHeader();
}

void CChartView3D::DrawHeaderOnTop() {
    m_pOpenGL->LoadIdentity();
    m_pOpenGL->SetViewport({0, 0, m_DrawWidth, m_DrawHeight});
    m_pOpenGL->Clear(CLEAR_DEPTH);
    DrawHeader();
}

void CChartView3D::DrawCharts() {
    if (std::ranges::none_of(m_ChartList,
                             [](const auto& chart) { return chart->GetChartEnable() != 0; }))
        detail::Diagnose("DrawView", "the view has no chart that is enabled");
    const TransparencyScope transparency(*m_pOpenGL, m_Added.transparency);
    const double all = m_ChartList.GetCount();
    double done = 0.0;
    for (const auto& chart : m_ChartList) {
        const detail::ProgressPart part(done / all, (done + 1.0) / all);
        chart->DrawChart();
        ++done;
    }
    m_pOpenGL->ExchangeBuffers();
}

void CChartView3D::DrawLegends() {
    if (m_LegendList.IsEmpty()) return;
    const TransparencyScope transparency(*m_pOpenGL, m_Added.transparency);
    for (const auto& legend : m_LegendList)
        legend->DrawLegend();
    m_pOpenGL->ExchangeBuffers();
}

void CChartView3D::InitAndDraw(CDC* dc, int x, int y) {
    RequireWindowToLive("DrawViewScreen");
    // A window that is not shown has no size; one that is gone has none either, and fails here.
    if (m_ViewWidth < 1 || m_ViewHeight < 1) return CopyBitmap(dc, x, y, 0, 0);
    DrawView();
    const HPALETTE palette = m_pDIBSection != nullptr ? m_pDIBSection->GetDIBPalette() : nullptr;
    const HPALETTE previous = dc->SelectPalette(palette, 0);
    dc->RealizePalette();
    CopyBitmap(dc, x, y, m_DrawWidth, m_DrawHeight);
    dc->SelectPalette(previous, 0);
}

void CChartView3D::DrawViewScreen(CDC* dc, int x, int y, int w, int h) {
    if (m_PrintingState != 0) return;
    RequireDevice(dc, "DrawViewScreen");
    if (m_Initialized == 0) InitDeviceContext(1);
    SetViewSizeSubWindow(w, h);
    InitAndDraw(dc, x, y);
}

void CChartView3D::DrawViewScreen(CDC* dc) {
    if (m_PrintingState != 0) return;
    RequireDevice(dc, "DrawViewScreen");
    if (m_Initialized == 0) InitDeviceContext(1);
    SetViewSizeWindow();
    InitAndDraw(dc, 0, 0);
}

void CChartView3D::DrawViewScreen() {
    if (m_PrintingState != 0) return;
    RequireWindowToLive("DrawViewScreen");
    CDC* const dc = m_pWnd != nullptr ? m_pWnd->GetDC() : nullptr;
    RequireDevice(dc, "InitDeviceContext");
    DrawViewScreen(dc);
    m_pWnd->ReleaseDC(dc);
}

void CChartView3D::CopyBitmap(CDC* dc, int x, int y, int w, int h) {
    // OpenGL's origin is the lower left corner of the image.
    if (!dc->BitBlt(x, y, w, h, m_MemDC, 0, m_BitmapHeight - h))
        detail::Raise(ERR3D_CDC_PARAMETER, ERR3DCLASS_CHARTVIEW3D, "DrawViewScreen",
                      "the device cannot be drawn to");
}

void CChartView3D::SaveToFile(const CString& fileName) {
    RequireContext("SaveToFile");
    RequireImage("SaveToFile");
    Watched("saving", [&] {
        SetViewSizePrinter();
        DrawView();
        m_pDIBSection->SaveDIB(fileName);
    });
}

void CChartView3D::SaveToPNG(const CString& fileName, const PictureInfo& about) {
    constexpr detail::Origin here{ERR3DCLASS_CHARTVIEW3D, "SaveToPNG"};
    RequireContext(here.operation);
    RequireImage(here.operation);
    Watched("saving", [&] {
        SetViewSizePrinter();
        DrawView();
        CString why;
        const auto file = OpenOutputFile(fileName, &why);
        if (file == nullptr) detail::Raise(ERR3D_FILE_OPEN_OUTPUT, here.cls, here.operation, why);
        detail::WithFile(file.get(), here, [&](File& f) {
            WritePNG(*m_pDIBSection->GetBitmap(), f, about);
            f.Commit();
        });
    });
}

}  // namespace varnel
