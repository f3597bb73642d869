// CChartView3D: the object that a host attaches to one of its windows.
//
// A view owns an off-screen image, the rendering context that draws into it, the charts, legends
// and a header. Every drawing renders the whole view into the image and then copies it: to the
// window, to a printer, to the clipboard, to a file. The image has the size asked for at
// construction; a drawing fills the lower left part of it that the view size says. Sizes are
// in pixels.
#pragma once

#include <memory>

#include "varnel/foundation/colors.h"
#include "varnel/foundation/export.h"
#include "varnel/foundation/object_list.h"
#include "varnel/foundation/points.h"
#include "varnel/foundation/types.h"
#include "varnel/platform/device_context.h"

namespace varnel {

class CAxes3D;
class CChart3D;
class CDIBSection;
class CHeader3D;
class CLegend3D;
class COpenGL;
class CTransform3D;
class CWnd;
struct CPrintInfo;

class VARNEL_API CChartView3D {
 public:
    static constexpr int kSignature = 707;

    // --- Construction ------------------------------------------------------------------------

    /// Defaults alone; attributes can be set, what needs a context raises "OpenGL Parameter Error".
    CChartView3D();
    /// A view of `wnd`, which is not owned and may still lack its window ("CWnd Parameter Error"
    /// when null). The image gets the resolution of the window's device.
    explicit CChartView3D(CWnd* wnd);
    /// With an image of width x height.
    CChartView3D(CWnd* wnd, int width, int height);
    ~CChartView3D();
    CChartView3D(const CChartView3D&) = delete;
    CChartView3D& operator=(const CChartView3D&) = delete;

    int GetSignature() const { return m_Signature; }

    void InitChartViewDefaults();
    /// Creates image and context for the window ("CDC Parameter Error" without one);
    /// `useScreenSize` non-zero makes the image as large as the device's resolution.
    void InitDeviceContext(int useScreenSize);
    /// The same for a device context.
    void InitChartView3D(CDC* dc);
    void MakeCompatibleDC(CDC* dc);
    void MakeCompatibleBitmap(int width, int height);
    void MakeCompatibleOpenGL();

    // --- Owned objects: created here, destroyed with the view --------------------------------

    /// A new chart over the whole view. A failed allocation raises "Object New Error".
    CChart3D* NewChart3D();
    /// With a transform and axes over data limits, which the other two variants return.
    CChart3D* NewChart3D(const point3Dtype& min, const point3Dtype& max);
    CChart3D* NewChart3D(const point3Dtype& min, const point3Dtype& max, CTransform3D** t);
    CChart3D* NewChart3D(const point3Dtype& min, const point3Dtype& max, CTransform3D** t,
                         CAxes3D** a);
    CChart3D* GetChart(int index) const { return m_ChartList.GetAt(index); }
    int GetNumCharts() const { return m_ChartList.GetCount(); }
    /// A new, empty legend in the upper right corner, drawn over the charts. A failed allocation
    /// raises "Object New Error".
    CLegend3D* NewLegend3D();
    CLegend3D* GetLegend(int index) const { return m_LegendList.GetAt(index); }
    int GetNumLegends() const { return m_LegendList.GetCount(); }
    CHeader3D* GetHeader() const { return m_pHeader.get(); }
    void DeleteCharts();
    void DeleteLegends();
    /// Both.
    void DeleteChartViewObjects();
    /// Deletes the image; what would read it raises "DIB Handle Error" from then on.
    void DeleteBitmap();

    // --- Sizes -------------------------------------------------------------------------------

    /// The view gets the size of the window's client area.
    void SetViewSizeWindow();
    /// The view gets the size of the image.
    void SetViewSizePrinter();
    void SetViewSizeSubWindow(int width, int height);
    /// Null pointers are skipped.
    void GetViewSize(int* width, int* height) const;

    // --- Attributes --------------------------------------------------------------------------

    /// Face, weight (100..900) and number of characters (128, or 256 for all) of the view's text.
    void SetFont(const CString& name, int weight, int option);
    void SetFontItalics(int on);
    void SetFontUnderline(int on);
    CString GetFontName() const { return m_FontName; }
    int GetFontWeight() const { return m_FontWeight; }
    int GetFontItalics() const { return m_FontItalics; }
    int GetFontUnderline() const { return m_FontUnderline; }
    void SetViewBkColor(const RGBDType& c) { m_ViewBkColor = c; }
    RGBDType GetViewBkColor() const { return m_ViewBkColor; }
    void SetViewBorderColor(const RGBDType& c) { m_ViewBorderColor = c; }
    RGBDType GetViewBorderColor() const { return m_ViewBorderColor; }
    /// In pixels; default 1.
    void SetViewBorderThickness(double width) { m_ViewBorderThickness = width; }
    double GetViewBorderThickness() const { return m_ViewBorderThickness; }
    void EnableBorder(int on) { m_BorderEnable = on; }
    int GetBorderEnable() const { return m_BorderEnable; }
    /// Stored and saved only.
    void SetViewBkMode(int mode) { m_ViewBkMode = mode; }
    int GetViewBkMode() const { return m_ViewBkMode; }
    /// 1 fit the page, 3 the normalized rectangle, others the whole page.
    void SetPrintScaleMode(int mode) { m_PrintScaleMode = mode; }
    int GetPrintScaleMode() const { return m_PrintScaleMode; }
    /// Where on the page mode 3 prints, in fractions of the page.
    void SetNormPrintRect(const REALRECT& rect) { m_NormPrintRect = rect; }
    REALRECT GetNormPrintRect() const { return m_NormPrintRect; }
    int GetPrintingState() const { return m_PrintingState; }
    /// 0 (the default): what is printed is the image, scaled. Otherwise the view is drawn anew at
    /// the resolution and in the proportions of the printed area, lines as thick as in the image.
    void SetPrintResolution(int on) { m_PrintResolution = on; }
    int GetPrintResolution() const { return m_PrintResolution; }

    /// Samples a pixel: 0 (the default) draws without antialiasing, exactly and repeatably; 4 looks
    /// good. The nearest number that the driver has is used.
    void SetAntialiasing(int samples);
    int GetAntialiasing() const { return m_Samples; }
    /// Whether filled polygons with frames are pushed back a little, so that the frames show whole
    /// (the default).
    void SetFrameOffset(int on);
    int GetFrameOffset() const { return m_FrameOffset; }

    /// The rendering context, null before the view is initialised; owned by the view.
    COpenGL* GetOpenGLPntr() const { return m_pOpenGL.get(); }
    /// The image, up to date after each drawing; null before the view is initialised.
    CDIBSection* GetDIBSectionPntr() const { return m_pDIBSection.get(); }
    static double GetVersionNumber() { return 1.0; }

    // --- Drawing -----------------------------------------------------------------------------

    /// Draws the view, at the current view size, into the image.
    void DrawView();
    /// Draws the view at w x h pixels and copies it to (x, y) of a device context.
    void DrawViewScreen(CDC* dc, int x, int y, int w, int h);
    /// At the size of the window, to the upper left corner of a device context.
    void DrawViewScreen(CDC* dc);
    /// To the window's own device context ("CDC Parameter Error", "InitDeviceContext", without
    /// one). All three raise "CDC Parameter Error" ("DrawViewScreen") where the device cannot be
    /// drawn to, as when the window or its display server is gone.
    void DrawViewScreen();

    /// Draws the view at the size of the image and writes a .bmp file.
    void SaveToFile(const CString& fileName);
    /// Draws the view at the size of the image and writes an opaque .png file. "Error Opening File
    /// for Output", "Disk I/O Error".
    void SaveToPNG(const CString& fileName);

    /// Prints the view onto the current page of a printer's device context and has the window drawn
    /// again. Nothing is drawn to the screen meanwhile. The second argument is a host framework's
    /// own record; it is not read. Raises "Print DC Error".
    void OnPrint(CDC* dc, CPrintInfo* info);
    /// The printing itself; nothing outside OnPrint.
    void DrawViewPrinter(CDC* dc);
    /// A host framework's notice that printing has ended; nothing is left to do.
    void OnEndPrinting(CDC* dc, CPrintInfo* info);

    /// Draws the view at the size of the image and puts it on the clipboard: on that of the
    /// window's display server as image/png and image/bmp, see platform/clipboard.h, and on the
    /// process's own as a packed bitmap. "CDC Parameter Error" without a window.
    void CopyToClipboard();

    // --- The chart file ----------------------------------------------------------------------

    /// Writes everything that the view owns. An existing file is replaced only when all is written.
    void Save(const CString& fileName);
    /// Reads a chart file into this view, whose charts are added to those it has.
    void Load(const CString& fileName);
    /// 0 when the last Load met the end of its file too early, else 1.
    int GetLoadComplete() const { return m_LoadComplete; }

    template <class Archive>
    void Record(Archive& record);

 private:
    void ActivateBitmap(int on);
    void CopyBitmap(CDC* dc, int x, int y, int w, int h);
    void DrawBorder();
    void DrawCharts();
    void DrawLegends();
    void DrawHeader();
    void RequireContext(const char* operation);
    void InitAndDraw(CDC* dc, int x, int y);
    void SelectPalette(CDC* dc) const;
    bool PrintAtPrinterResolution(CDC* dc);
    template <class... Args>
    CChart3D* AppendChart(Args... args);

    CDC* m_pDC = nullptr;
    CDC m_WindowDC;  ///< keeps the window's device alive as long as the view uses it
    CDC m_MemDC;
    HDC m_hWindowDC = nullptr;
    HBITMAP m_hOldBitmap;
    bool m_BitmapActive = false;
    CWnd* m_pWnd = nullptr;
    int m_BitmapWidth = 0;
    int m_BitmapHeight = 0;
    int m_RequestedWidth = -1;
    int m_RequestedHeight = -1;
    int m_DrawWidth = 0;
    int m_DrawHeight = 0;
    int m_ViewWidth = 0;
    int m_ViewHeight = 0;
    double m_ViewAspect = 1.0;
    double m_ViewBorderThickness = 1.0;
    RGBDType m_ViewBkColor;
    RGBDType m_ViewBorderColor;
    int m_ViewBkMode = 2;
    int m_PrintScaleMode = 1;
    int m_Initialized = 0;
    int m_FontOption = 128;
    REALRECT m_NormPrintRect;
    int m_PrintingState = 0;
    int m_PrintResolution = 0;
    int m_BorderEnable = 1;
    int m_FontChanged = 1;
    int m_FontItalics = 0;
    int m_FontUnderline = 0;
    CString m_FontName;
    int m_FontWeight = 700;
    int m_Samples = 0;
    int m_FrameOffset = 1;
    int m_LoadComplete = 1;
    int m_Signature = kSignature;
    ObjectList<CChart3D> m_ChartList;
    ObjectList<CLegend3D> m_LegendList;
    std::unique_ptr<CHeader3D> m_pHeader;
    std::unique_ptr<CDIBSection> m_pDIBSection;
    std::unique_ptr<COpenGL> m_pOpenGL;
};

}  // namespace varnel
