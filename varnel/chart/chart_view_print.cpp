// CChartView3D: printing and the clipboard.
#include <algorithm>
#include <memory>
#include <new>

#include "varnel/chart/chart_view.h"
#include "varnel/chart/detail/watched.h"
#include "varnel/foundation/detail/raise.h"
#include "varnel/platform/clipboard.h"
#include "varnel/platform/detail/gl_context.h"
#include "varnel/platform/dib_section.h"
#include "varnel/platform/window.h"
#include "varnel/render/opengl.h"

namespace varnel {
namespace {

/// Sets a state for the length of a scope, which an exception may end.
class StateScope {
 public:
    explicit StateScope(int& state) : m_State(state) { m_State = 1; }
    ~StateScope() { m_State = 0; }
    StateScope(const StateScope&) = delete;
    StateScope& operator=(const StateScope&) = delete;

 private:
    int& m_State;
};

/// The most pixels of a page that are drawn at its own resolution (A3 at 600 dots per inch): with
/// colour, depth and samples each takes up to 40 bytes.
constexpr long long kMostPixels = 70'000'000;

HBITMAP NewBitmap(int width, int height) {
    if (width < 1 || height < 1 || static_cast<long long>(width) * height > kMostPixels)
        return nullptr;
    try {
        return std::make_shared<Bitmap>(width, height, 32);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

}  // namespace

void CChartView3D::SelectPalette(CDC* dc) const {
    if (dc == nullptr || m_pDIBSection == nullptr) return;
    dc->SelectPalette(m_pDIBSection->GetDIBPalette(), 0);
    dc->RealizePalette();
}

void CChartView3D::OnPrint(CDC* dc, CPrintInfo* /*info*/) {
    {
        const StateScope printing(m_PrintingState);
        SelectPalette(dc);
        Watched("printing", [&] { DrawViewPrinter(dc); });
    }
    if (CWnd* window = LiveWindow()) window->InvalidateRect(nullptr, 1);
}

void CChartView3D::DrawViewPrinter(CDC* dc) {
    if (m_PrintingState == 0) return;
    RequireContext("DrawViewPrinter");
    RequireImage("DrawViewPrinter");
    m_pDIBSection->SetNormPrintRect(m_Settings.normPrintRect);
    if (m_Settings.printResolution == 2 && PrintVectors(dc)) return;
    if (m_Settings.printResolution != 0 && PrintAtPrinterResolution(dc)) return;
    SetViewSizePrinter();
    DrawView();
    m_pDIBSection->PrintDIBSection(dc, static_cast<WORD>(m_Settings.printScaleMode), "");
}

/// False when there is no such area or it is too large to be drawn; then nothing is printed.
bool CChartView3D::PrintAtPrinterResolution(CDC* dc) {
    if (dc == nullptr || m_BitmapWidth < 1 || m_BitmapHeight < 1) return false;
    RECT area;
    m_pDIBSection->CalculatePrintRect(dc, area, static_cast<WORD>(m_Settings.printScaleMode),
                                      m_Settings.normPrintRect);
    const HBITMAP page = NewBitmap(area.right - area.left, area.bottom - area.top);
    if (!page) return false;
    const GLContext::HostContextGuard host;
    const double scale = std::min(static_cast<double>(page->Width()) / m_BitmapWidth,
                                  static_cast<double>(page->Height()) / m_BitmapHeight);
    if (!m_pOpenGL->SetOutput(page, scale)) return false;
    try {
        SetViewSizeSubWindow(page->Width(), page->Height());
        DrawView();
    } catch (...) {
        m_pOpenGL->SetOutput(nullptr, 1.0);
        throw;
    }
    m_pOpenGL->SetOutput(nullptr, 1.0);
    SetViewSizePrinter();
    if (!dc->StretchDIBits(area, *page, {0, 0, page->Width(), page->Height()}))
        detail::Raise(ERR3D_PRINT_DC, ERR3DCLASS_CHARTVIEW3D, "DrawViewPrinter",
                      "the device context takes no picture");
    return true;
}

void CChartView3D::OnEndPrinting(CDC* /*dc*/, CPrintInfo* /*info*/) {
}

void CChartView3D::CopyToClipboard() {
    RequireWindowToLive("CopyToClipboard");
    CDC* const dc = m_pWnd != nullptr ? m_pWnd->GetDC() : nullptr;
    if (dc == nullptr)
        detail::Raise(ERR3D_CDC_PARAMETER, ERR3DCLASS_CHARTVIEW3D, "CopyToClipboard",
                      "the view has no window with a device context");
    m_pWnd->ReleaseDC(dc);
    RequireContext("CopyToClipboard");
    RequireImage("CopyToClipboard");
    if (!Watched("copying", [this] {
            SetViewSizePrinter();
            DrawView();
        }))
        return;
    // A server that refuses leaves the picture on the clipboard of the process.
    detail::AllocateOrRaise(ERR3D_MEM_ALLOC, {ERR3DCLASS_CHARTVIEW3D, "CopyToClipboard"}, [this] {
        Clipboard::Get().SetPicture(*m_pDIBSection->GetBitmap(),
                                    m_pDIBSection->GetDIBSectionAsDIB(), m_pWnd->GetDisplayName());
        return 0;
    });
}

}  // namespace varnel
