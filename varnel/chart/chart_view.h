// CChartView3D: the object that a host attaches to one of its windows.
//
// A view owns an off-screen image, the rendering context that draws into it, the charts, legends
// and a header. Every drawing renders the whole view into the image and then copies it: to the
// window, to a printer, to the clipboard, to a file. The image has the size asked for at
// construction; a drawing fills the lower left part of it that the view size says. Sizes are
// in pixels.
#pragma once

#include <memory>
#include <utility>

#include "varnel/chart/page_size.h"
#include "varnel/foundation/colors.h"
#include "varnel/foundation/export.h"
#include "varnel/foundation/file.h"
#include "varnel/foundation/object_list.h"
#include "varnel/foundation/picture_info.h"
#include "varnel/foundation/points.h"
#include "varnel/foundation/progress.h"
#include "varnel/foundation/types.h"
#include "varnel/foundation/version.h"
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

namespace detail {
class AddedFields;
class PageSink;
class PdfWriter;
}  // namespace detail

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

    /// Gives every attribute its default and makes a new header, which is bound where the view has
    /// its context. Charts and legends stay.
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
    /// One beside or in a plot: a code of LegendPlacement3D.
    CLegend3D* NewLegend3D(int place);
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

    /// Face, weight (100..900) and number of characters (128, or 256 for all) of the view's text;
    /// below 1 counts as 128 and above 256 as 256 when text is drawn.
    void SetFont(const CString& name, int weight, int option);
    void SetFontItalics(int on);
    void SetFontUnderline(int on);
    CString GetFontName() const { return m_Saved.fontName; }
    int GetFontWeight() const { return m_Saved.fontWeight; }
    int GetFontItalics() const { return m_Saved.fontItalics; }
    int GetFontUnderline() const { return m_Saved.fontUnderline; }
    void SetViewBkColor(const RGBDType& c) { m_Saved.bkColor = c; }
    RGBDType GetViewBkColor() const { return m_Saved.bkColor; }
    void SetViewBorderColor(const RGBDType& c) { m_Saved.borderColor = c; }
    RGBDType GetViewBorderColor() const { return m_Saved.borderColor; }
    /// In pixels; default 1.
    void SetViewBorderThickness(double width) { m_Saved.borderThickness = width; }
    double GetViewBorderThickness() const { return m_Saved.borderThickness; }
    void EnableBorder(int on) { m_Saved.borderEnable = on; }
    int GetBorderEnable() const { return m_Saved.borderEnable; }
    /// Stored and saved only.
    void SetViewBkMode(int mode) { m_Saved.bkMode = mode; }
    int GetViewBkMode() const { return m_Saved.bkMode; }
    /// How the image lies on the page, inside a margin of a third of an inch. 1, the default, in
    /// its own proportions: over the width of an upright page, over the height of a wide one, where
    /// an image that is longer than the page is printed beyond it. 3: over the rectangle of
    /// SetNormPrintRect. Others: over the whole page.
    void SetPrintScaleMode(int mode) { m_Settings.printScaleMode = mode; }
    int GetPrintScaleMode() const { return m_Settings.printScaleMode; }
    /// Where on the page mode 3 prints, in fractions of the page.
    void SetNormPrintRect(const REALRECT& rect) { m_Settings.normPrintRect = rect; }
    REALRECT GetNormPrintRect() const { return m_Settings.normPrintRect; }
    int GetPrintingState() const { return m_PrintingState; }
    /// 0 (the default): what is printed is the image, scaled. 2: areas, lines and text, where the
    /// device takes them, in the proportions of the image. Otherwise the view is drawn anew at the
    /// resolution and in the proportions of the printed area, lines as thick as in the image.
    void SetPrintResolution(int mode) { m_Settings.printResolution = mode; }
    int GetPrintResolution() const { return m_Settings.printResolution; }

    /// Samples a pixel: 0 (the default) draws without antialiasing, exactly and repeatably; 4 looks
    /// good. The nearest number that the driver has is used.
    void SetAntialiasing(int samples);
    int GetAntialiasing() const { return m_Settings.samples; }
    /// Whether filled polygons with frames are pushed back a little, so that the frames show whole
    /// (the default).
    void SetFrameOffset(int on);
    int GetFrameOffset() const { return m_Settings.frameOffset; }

    /// 1: the alpha of fill, outline, line, text, symbol and marker colours, of solids, walls and
    /// bitmap planes counts: 1 is opaque, 0 is not seen. What can be seen through is drawn over
    /// what is opaque, chart by chart, from the back to the front; polygons larger than 40 pixels
    /// are split where they pass through each other, and what lies in one plane keeps its order.
    /// Markers whose fill can be seen through have no outline, such texts no halo; a line is twice
    /// as strong where it crosses itself. 0, the default: alpha has no effect.
    void SetTransparency(int on) { m_Added.transparency = on; }
    int GetTransparency() const { return m_Added.transparency; }

    /// 1: the view's header is drawn after the charts and over them; 0 (the default): before them,
    /// so that a chart that covers the whole view hides it.
    void SetHeaderOnTop(int on) { m_Added.headerOnTop = on != 0 ? 1 : 0; }
    int GetHeaderOnTop() const { return m_Added.headerOnTop; }
    /// Pixels per inch of the picture, above 0 (others count as the default). Markers have their
    /// size in points, and so has everything that SetLineUnits is about: twice the pixels per inch
    /// in a picture twice as large make it look the same, sharper. Default 96.
    void SetDPI(double dpi) { m_Added.dpi = dpi; }
    double GetDPI() const { return m_Added.dpi; }
    /// 1: the widths of all lines, outlines and borders are in points, 1/72 inch; 0 (the default):
    /// in pixels.
    void SetLineUnits(int points) { m_Added.lineUnits = points; }
    int GetLineUnits() const { return m_Added.lineUnits; }

    /// Is told at least every 50 ms how far drawing, loading, saving and printing are (see
    /// foundation/progress.h), and can stop them: then the view, the file and, while it is drawn,
    /// the picture are as they were, and no error is raised. Calls of the driver and of other
    /// libraries that take longer cannot be broken off. An empty handler, the default: nobody is
    /// told.
    void SetProgressHandler(ProgressHandler handler) { m_ProgressHandler = std::move(handler); }
    /// 1 when the handler stopped the last such operation, else 0.
    int GetStopped() const { return m_Stopped; }

    /// Registers the font that was set, if drawing has not done so yet: texts can be measured then.
    void UseFont();

    /// 1: charts that fill their frames (CChart3D::SetFillDepth) and are laid out at every drawing
    /// have boxes that begin and end at the same places where their positions do, above each other
    /// and side by side, so that axes can be compared. 0, the default: each box is as large as its
    /// own labels allow.
    void SetAlignCharts(int on) { m_Added.alignCharts = on; }
    int GetAlignCharts() const { return m_Added.alignCharts; }

    /// The rendering context, null before the view is initialised; owned by the view.
    COpenGL* GetOpenGLPntr() const { return m_pOpenGL.get(); }
    /// The image, up to date after each drawing; null before the view is initialised.
    CDIBSection* GetDIBSectionPntr() const { return m_pDIBSection.get(); }
    /// Major and minor version as one number, 1.0; see foundation/version.h for the parts.
    static double GetVersionNumber() { return VARNEL_VERSION_MAJOR + VARNEL_VERSION_MINOR / 10.0; }

    // --- Drawing -----------------------------------------------------------------------------

    /// Draws the view, at the current view size, into the image. A view of size 0 gets the image's.
    /// Raises "CWnd Parameter Error" when the view's window has been destroyed, and "OpenGL
    /// Parameter Error" where the context cannot be used: it is current on another thread, the
    /// process was forked from the one that made it, or another library terminated EGL.
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
    /// Draws the view at the size of the image and writes an opaque .png file, with what it is to
    /// say about itself. "Error Opening File
    /// for Output", "Disk I/O Error".
    void SaveToPNG(const CString& fileName, const PictureInfo& about = {});

    // Vectors: areas, lines and selectable text instead of pixels; what the picture hides is not in
    // the file. The page measures `width` x `height` millimetres and shows the image's size; 0, the
    // default: 96 pixels to the inch. Sides outside 0..5080 raise "Parameter Error", a file that
    // cannot be created "Error Opening File for Output", a failing medium "Disk I/O Error".
    // Finding what shows of many thousands of areas that lie over each other takes seconds, of
    // files made for it minutes; a progress handler stops it. Triangles coloured by value beyond
    // 250,000 pieces have one colour each, letters of more than 20,000 pixels are left out, and
    // tiles of more than 64 MB in all become one picture.

    void SaveToPDF(const CString& fileName, double width = 0.0, double height = 0.0);
    void SaveToSVG(const CString& fileName, double width = 0.0, double height = 0.0);
    void SaveToPDF(const CString& fileName, const PageSize& page) {
        SaveToPDF(fileName, page.width, page.height);
    }
    void SaveToSVG(const CString& fileName, const PageSize& page) {
        SaveToSVG(fileName, page.width, page.height);
    }

    /// From how many polygons on an object is a picture of 300 dots per inch in them, of that
    /// object alone and cut to what shows of it, which a diagnostic tells: its polygons would take
    /// minutes and megabytes. Default 50,000; 0: none is.
    void SetVectorPictureLimit(int polygons) { m_Settings.vectorPictureLimit = polygons; }
    int GetVectorPictureLimit() const { return m_Settings.vectorPictureLimit; }
    /// 1: letters are areas in them, which look the same in every viewer and cannot be selected or
    /// searched for. 0, the default: text in fonts.
    void SetVectorTextPaths(int on) { m_Settings.vectorTextPaths = on; }
    int GetVectorTextPaths() const { return m_Settings.vectorTextPaths; }

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
    /// Reads a chart file into this view, whose charts are added to those it has. What cannot be
    /// opened, and a file that cannot be a chart file, raises "Error Opening File for Input"; after
    /// any error the view is as it was. A file that ends too early is no error: what is there is
    /// loaded.
    void Load(const CString& fileName);
    /// 0 when the last Load met the end of its file too early, or settings behind the charts that
    /// are damaged; else 1.
    int GetLoadComplete() const { return m_LoadComplete; }

 private:
    /// What the chart file's record of a view holds.
    struct Saved {
        int fontWeight = 700;
        int fontOption = 128;  ///< how many characters the font has
        int fontItalics = 0;
        int fontUnderline = 0;
        CString fontName = "Arial";
        RGBDType bkColor{1.0, 1.0, 1.0, 1.0};
        int bkMode = 2;
        double borderThickness = 1.0;  ///< pixels
        RGBDType borderColor{0.0, 0.0, 0.0, 1.0};
        int borderEnable = 1;

        template <class Archive>
        void Record(Archive& record) {
            record(fontWeight, fontOption, fontItalics, fontUnderline, fontName, bkColor, bkMode,
                   borderThickness, borderColor, borderEnable);
        }
    };

    /// What the host sets anew for each view.
    struct Settings {
        int printScaleMode = 1;
        REALRECT normPrintRect;
        int printResolution = 0;
        int samples = 0;
        int frameOffset = 1;
        int vectorPictureLimit = 50'000;
        int vectorTextPaths = 0;
    };

    struct Staged;

    /// What the chart file's plain records lack.
    struct Added {
        int headerOnTop = 0;  ///< 1: the header is drawn after the charts
        int transparency = 0;
        double dpi = 96.0;  ///< pixels per inch
        int lineUnits = 0;  ///< 1: widths are in points
        int alignCharts = 0;
        int samples = 0;  ///< antialiasing of a view with automatic charts
    };

    void VisitAdded(detail::AddedFields& fields, const ObjectList<CChart3D>& charts,
                    const ObjectList<CLegend3D>& legends);
    void WriteAll(File& file);
    void ReadStaged(File& file, Staged& staged);
    void ActivateBitmap(int on);
    void CopyBitmap(CDC* dc, int x, int y, int w, int h);
    void DrawBorder();
    void DrawCharts();
    void DrawLegends();
    void ChooseLegendSides();
    void ReserveForLegends();
    void AlignCharts();
    void AlignOnce();
    CChart3D* ChartOfLegend(const CLegend3D& legend) const;
    void PlaceLegends();
    void DrawHeader();
    void DrawHeaderOnTop();
    void SetWindow(CWnd* wnd);
    CWnd* LiveWindow() const;
    void RequireWindowToLive(const char* operation) const;
    void RequireContext(const char* operation);
    void RequireCurrent(const char* operation);
    void RequireImage(const char* operation) const;
    void InitAndDraw(CDC* dc, int x, int y);
    template <class Work>
    bool Watched(const char* what, Work&& work);
    void DrawWatched();
    void SelectPalette(CDC* dc) const;
    friend class PdfDocument;
    bool PrintVectors(CDC* dc);
    std::unique_ptr<detail::PageSink> DrawPage(const char* operation, double width);
    void DrawOnPdf(detail::PdfWriter& writer, double width, double height, const char* operation);
    bool PrintAtPrinterResolution(CDC* dc);
    template <class... Args>
    CChart3D* AppendChart(Args... args);

    CDC* m_pDC = nullptr;
    CDC m_WindowDC;  ///< keeps the window's device alive as long as the view uses it
    CDC m_MemDC;
    HBITMAP m_hOldBitmap;
    bool m_BitmapActive = false;
    CWnd* m_pWnd = nullptr;
    std::weak_ptr<const void> m_WindowLife;  ///< expires with the window
    int m_BitmapWidth = 0;
    int m_BitmapHeight = 0;
    int m_RequestedWidth = -1;
    int m_RequestedHeight = -1;
    int m_DrawWidth = 0;
    int m_DrawHeight = 0;
    int m_ViewWidth = 0;
    int m_ViewHeight = 0;
    double m_ViewAspect = 1.0;
    int m_Initialized = 0;
    int m_PrintingState = 0;
    int m_FontChanged = 1;
    Saved m_Saved;
    Settings m_Settings;
    Added m_Added;
    ProgressHandler m_ProgressHandler;
    int m_Stopped = 0;
    int m_LoadComplete = 1;
    int m_Signature = kSignature;
    ObjectList<CChart3D> m_ChartList;
    ObjectList<CLegend3D> m_LegendList;
    std::unique_ptr<CHeader3D> m_pHeader;
    std::unique_ptr<CDIBSection> m_pDIBSection;
    std::unique_ptr<COpenGL> m_pOpenGL;
};

}  // namespace varnel
