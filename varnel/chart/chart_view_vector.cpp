// CChartView3D: pages of vectors instead of pixels.
#include <algorithm>
#include <cmath>
#include <string>

#include "varnel/chart/chart_view.h"
#include "varnel/chart/detail/watched.h"
#include "varnel/chart/header.h"
#include "varnel/chart/pdf_document.h"
#include "varnel/foundation/detail/diagnose.h"
#include "varnel/foundation/detail/raise.h"
#include "varnel/platform/detail/gl_context.h"
#include "varnel/platform/detail/pdf_document.h"
#include "varnel/platform/dib_section.h"
#include "varnel/platform/files.h"
#include "varnel/render/opengl.h"
#include "varnel/vector/detail/page_sink.h"
#include "varnel/vector/detail/svg_canvas.h"

namespace varnel {
namespace {

constexpr double kMillimetresPerInch = 25.4;
constexpr double kPixelsPerInch = 96.0;
constexpr double kPointsPerMillimetre = 72.0 / kMillimetresPerInch;
/// Dots per inch of the pictures that large objects become.
constexpr double kPictureDPI = 300.0;
/// What a PDF page can measure at most: 200 inches.
constexpr double kLongestPage = 5080.0;
/// The shares of the work that are done when all is drawn, and when what shows is found.
constexpr double kDrawn = 0.2;
constexpr double kComposed = 0.9;

/// Gives a context's drawing to a sink for the length of a scope.
class SinkScope {
 public:
    SinkScope(COpenGL& gl, detail::SceneSink& sink) : m_GL(gl) { m_GL.SetSink(&sink); }
    ~SinkScope() { m_GL.SetSink(nullptr); }
    SinkScope(const SinkScope&) = delete;
    SinkScope& operator=(const SinkScope&) = delete;

 private:
    COpenGL& m_GL;
};

/// Millimetres of a page side; 0 stands for that many pixels.
double PageSide(double millimetres, int pixels, const char* operation) {
    if (millimetres == 0.0) return pixels * kMillimetresPerInch / kPixelsPerInch;
    if (!(millimetres > 0.0) || millimetres > kLongestPage)
        detail::Raise(
            ERR3D_PARAMETER, ERR3DCLASS_CHARTVIEW3D, operation,
            detail::Say("a side of the page is ", millimetres, " mm, not 0 to ", kLongestPage));
    return millimetres;
}

std::unique_ptr<File> OpenPage(const CString& fileName, const char* operation) {
    CString why;
    auto file = OpenOutputFile(fileName, &why);
    if (file == nullptr)
        detail::Raise(ERR3D_FILE_OPEN_OUTPUT, ERR3DCLASS_CHARTVIEW3D, operation, why);
    return file;
}

}  // namespace

/// `width` is the page's, in millimetres.
std::unique_ptr<detail::PageSink> CChartView3D::DrawPage(const char* operation, double width) {
    detail::PageOptions options;
    options.pictureLimit = m_Settings.vectorPictureLimit;
    options.dotsPerPixel = kPictureDPI * width / kMillimetresPerInch / m_ViewWidth;
    options.textAsPaths = m_Settings.vectorTextPaths != 0;
    auto page = std::make_unique<detail::PageSink>(m_ViewWidth, m_ViewHeight, options);
    {
        const detail::ProgressPart part(0.0, kDrawn);
        const SinkScope scope(*m_pOpenGL, *page);
        DrawView();
    }
    for (const std::size_t count : page->LargeObjects())
        detail::Diagnose(operation, "an object of ", count,
                         " polygons is a picture in the file; see SetVectorPictureLimit");
    return page;
}

void CChartView3D::DrawOnPdf(detail::PdfWriter& writer, double width, double height,
                             const char* operation) {
    RequireContext(operation);
    SetViewSizePrinter();
    const double pageWidth = PageSide(width, m_ViewWidth, operation);
    const double pageHeight = PageSide(height, m_ViewHeight, operation);
    const auto page = DrawPage(operation, pageWidth);
    const detail::ProgressPart part(kDrawn, kComposed);
    page->Compose(writer.BeginPage(pageWidth * kPointsPerMillimetre,
                                   pageHeight * kPointsPerMillimetre, m_ViewWidth, m_ViewHeight));
}

/// False, and nothing is printed, where the device has pixels alone.
bool CChartView3D::PrintVectors(CDC* dc) {
    if (dc == nullptr) return false;
    RECT area;
    m_pDIBSection->CalculatePrintRect(dc, area, static_cast<WORD>(m_Settings.printScaleMode),
                                      m_Settings.normPrintRect);
    const double width = kMillimetresPerInch *
                         (static_cast<double>(area.right) - static_cast<double>(area.left)) /
                         std::max(1, dc->GetDeviceCaps(LOGPIXELSX));
    RequireContext("DrawViewPrinter");
    SetViewSizePrinter();
    const auto draw = [this, width](detail::PageCanvas& canvas) {
        DrawPage("DrawViewPrinter", width)->Compose(canvas);
    };
    return dc->DrawVectors(area, m_BitmapWidth, m_BitmapHeight, draw) != 0;
}

void CChartView3D::SaveToPDF(const CString& fileName, double width, double height) {
    constexpr detail::Origin here{ERR3DCLASS_CHARTVIEW3D, "SaveToPDF"};
    Watched("saving", [&] {
        const auto file = OpenPage(fileName, here.operation);
        detail::WithFile(file.get(), here, [&](File& f) {
            detail::PdfWriter writer(f);
            DrawOnPdf(writer, width, height, here.operation);
            const detail::ProgressPart part(kComposed, 1.0);
            writer.Finish();
            f.Commit();
        });
    });
}

void CChartView3D::SaveToSVG(const CString& fileName, double width, double height) {
    constexpr detail::Origin here{ERR3DCLASS_CHARTVIEW3D, "SaveToSVG"};
    Watched("saving", [&] {
        RequireContext(here.operation);
        SetViewSizePrinter();
        const double pageWidth = PageSide(width, m_ViewWidth, here.operation);
        const double pageHeight = PageSide(height, m_ViewHeight, here.operation);
        detail::SvgCanvas canvas(pageWidth, pageHeight, m_ViewWidth, m_ViewHeight,
                                 m_pHeader->GetTitle1());
        const auto page = DrawPage(here.operation, pageWidth);
        {
            const detail::ProgressPart part(kDrawn, kComposed);
            page->Compose(canvas);
        }
        const std::string svg = canvas.Finish();
        const auto file = OpenPage(fileName, here.operation);
        detail::WithFile(file.get(), here, [&svg](File& f) {
            f.Write(svg.data(), svg.size());
            f.Commit();
        });
    });
}

PdfDocument::PdfDocument(const CString& fileName)
    : m_File(OpenPage(fileName, "PdfDocument")),
      m_Writer(std::make_unique<detail::PdfWriter>(*m_File)) {
}

PdfDocument::~PdfDocument() = default;

void PdfDocument::AddPage(CChartView3D& view, double width, double height) {
    if (m_Writer == nullptr)
        detail::Raise(ERR3D_FILE_OPEN_OUTPUT, ERR3DCLASS_CHARTVIEW3D, "AddPage",
                      "the document is closed");
    if (view.Watched("saving", [&] { view.DrawOnPdf(*m_Writer, width, height, "AddPage"); }))
        return;
    m_Writer.reset();  // half a page is none
    m_File.reset();
}

void PdfDocument::Close() {
    if (m_Writer == nullptr) return;
    detail::WithFile(m_File.get(), {ERR3DCLASS_CHARTVIEW3D, "Close"}, [this](File& f) {
        m_Writer->Finish();
        f.Commit();
    });
    m_Writer.reset();
    m_File.reset();
}

}  // namespace varnel
