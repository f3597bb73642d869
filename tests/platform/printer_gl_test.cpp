// Printed pages, looked at through another program's rendering of the file.
#include "varnel/platform/printer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <vector>

#include "tests/support/expect_error.h"
#include "tests/support/x_server.h"
#include "varnel/chart/chart.h"
#include "varnel/chart/chart_view.h"
#include "varnel/platform/dib_section.h"
#include "varnel/platform/window.h"
#include "varnel/platform/x11_window.h"

namespace varnel::test {
namespace {

/// A page of a PDF file at `dpi`, as another program draws it.
std::unique_ptr<Bitmap> Rendered(const TemporaryFolder& folder, const std::string& pdf, int dpi,
                                 int page = 1) {
    const std::string number = std::to_string(page);
    RunCommand("pdftoppm -singlefile -f " + number + " -r " + std::to_string(dpi) +
               " -aa no -aaVector no " + pdf + " " + folder.File("page"));
    std::ifstream in(folder.File("page.ppm"), std::ios::binary);
    std::string magic;
    int width = 0;
    int height = 0;
    int most = 0;
    in >> magic >> width >> height >> most;
    in.get();
    if (magic != "P6" || most != 255) return nullptr;
    auto picture = std::make_unique<Bitmap>(width, height, 32);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            BYTE* out = picture->RowFromTop(y) + 4 * x;
            for (int c = 2; c >= 0; --c)
                out[c] = static_cast<BYTE>(in.get());
        }
    std::filesystem::remove(folder.File("page.ppm"));
    return picture;
}

bool IsWhite(const RGBQUAD& p) {
    return p.rgbRed == 255 && p.rgbGreen == 255 && p.rgbBlue == 255;
}

/// The box of what is not white.
RECT Content(const Bitmap& page) {
    RECT box{page.Width(), page.Height(), 0, 0};
    for (int y = 0; y < page.Height(); ++y)
        for (int x = 0; x < page.Width(); ++x) {
            if (IsWhite(page.PixelFromTop(x, y))) continue;
            box.left = std::min(box.left, x);
            box.top = std::min(box.top, y);
            box.right = std::max(box.right, x + 1);
            box.bottom = std::max(box.bottom, y + 1);
        }
    return box;
}

void ExpectNear(const RECT& is, const RECT& should, int tolerance) {
    EXPECT_NEAR(is.left, should.left, tolerance);
    EXPECT_NEAR(is.top, should.top, tolerance);
    EXPECT_NEAR(is.right, should.right, tolerance);
    EXPECT_NEAR(is.bottom, should.bottom, tolerance);
}

/// The part of pixels that differ between a picture and the rectangle of a page it was printed to.
double PartDiffering(const Bitmap& picture, const Bitmap& page, const RECT& r, int originX,
                     int originY) {
    int differing = 0;
    int all = 0;
    for (int y = 0; y < picture.Height(); ++y)
        for (int x = 0; x < picture.Width(); ++x) {
            // The middle of the pixel's place on the page.
            const int px =
                originX + r.left + (2 * x + 1) * (r.right - r.left) / 2 / picture.Width();
            const int py =
                originY + r.top + (2 * y + 1) * (r.bottom - r.top) / 2 / picture.Height();
            const RGBQUAD a = picture.PixelFromTop(x, y);
            const RGBQUAD b = page.PixelFromTop(px, py);
            differing += std::abs(a.rgbRed - b.rgbRed) > 3 || std::abs(a.rgbBlue - b.rgbBlue) > 3;
            ++all;
        }
    return static_cast<double>(differing) / all;
}

void FillView(CChartView3D& view) {
    CTransform3D* t = nullptr;
    CChart3D* chart = view.NewChart3D({0, 0, 0, 0}, {10, 10, 10, 0}, &t);
    chart->SetChartBkColor({0.85, 0.6, 0.3, 1});
    chart->AutoAxes(t);
}

class PrinterTest : public testing::Test {
 protected:
    PrinterTest() : m_Window(160, 120), m_View(&m_Window, 160, 120) { FillView(m_View); }

    const Bitmap& Image() const { return *m_View.GetDIBSectionPntr()->GetBitmap(); }

    TemporaryFolder m_Folder;
    CWnd m_Window;
    CChartView3D m_View;
};

TEST_F(PrinterTest, ThePrintableAreaIsThePaperLessItsMargins) {
    PageSetup setup;
    setup.marginLeft = setup.marginRight = 25.4;
    setup.marginTop = 12.7;
    setup.marginBottom = 0;
    setup.dotsPerInchX = 100;
    setup.dotsPerInchY = 200;
    ASSERT_TRUE(setup.SetPaper("Letter"));
    EXPECT_FALSE(setup.SetPaper("letter"));
    Printer upright(m_Folder.File("upright.pdf"), setup);
    EXPECT_EQ(upright.GetDC()->GetDeviceCaps(HORZRES), 650);
    EXPECT_EQ(upright.GetDC()->GetDeviceCaps(VERTRES), 2100);
    EXPECT_EQ(upright.GetDC()->GetDeviceCaps(LOGPIXELSX), 100);
    EXPECT_EQ(upright.GetDC()->GetDeviceCaps(LOGPIXELSY), 200);
    setup.landscape = true;
    Printer turned(m_Folder.File("turned.pdf"), setup);
    EXPECT_EQ(turned.GetDC()->GetDeviceCaps(HORZRES), 900);
    EXPECT_EQ(turned.GetDC()->GetDeviceCaps(VERTRES), 1600);
    // Margins that leave nothing, and numbers that are none.
    setup.marginLeft = 260;
    EXPECT_EQ(Printer(m_Folder.File("a.pdf"), setup).GetDC()->GetDeviceCaps(HORZRES), 0);
    setup.marginLeft = std::nan("");
    EXPECT_EQ(Printer(m_Folder.File("a.pdf"), setup).GetDC()->GetDeviceCaps(HORZRES), 0);
}

TEST_F(PrinterTest, APageShowsTheViewInItsThreeModes) {
    SKIP_WITHOUT("pdftoppm");
    PageSetup setup;
    setup.dotsPerInchX = setup.dotsPerInchY = 150;
    setup.marginLeft = setup.marginTop = setup.marginRight = setup.marginBottom = 25.4;
    for (const int mode : {1, 2, 3}) {
        SCOPED_TRACE(mode);
        m_View.SetPrintScaleMode(mode);
        m_View.SetNormPrintRect({0.25, 0.5, 0.5, 0.4});
        Printer printer(m_Folder.File("a.pdf"), setup);
        m_View.OnPrint(printer.GetDC(), nullptr);
        RECT r;
        m_View.GetDIBSectionPntr()->CalculatePrintRect(printer.GetDC(), r, static_cast<WORD>(mode),
                                                       m_View.GetNormPrintRect());
        ASSERT_TRUE(printer.Finish());
        const auto page = Rendered(m_Folder, m_Folder.File("a.pdf"), 150);
        ASSERT_NE(page, nullptr);
        EXPECT_EQ(page->Width(), 1241);
        EXPECT_EQ(page->Height(), 1754);
        ExpectNear(Content(*page), {r.left + 150, r.top + 150, r.right + 150, r.bottom + 150}, 1);
        EXPECT_LT(PartDiffering(Image(), *page, r, 150, 150), 0.002);
    }
}

TEST_F(PrinterTest, ThePrintersResolutionShowsMore) {
    SKIP_WITHOUT("pdftoppm");
    PageSetup setup;
    setup.dotsPerInchX = setup.dotsPerInchY = 120;
    std::unique_ptr<Bitmap> pages[2];
    m_View.SetViewSizePrinter();
    m_View.DrawView();
    const std::vector<BYTE> image = m_View.GetDIBSectionPntr()->GetDIBSectionAsDIB();
    for (const int resolution : {0, 1}) {
        m_View.SetPrintResolution(resolution);
        Printer printer(m_Folder.File("a.pdf"), setup);
        m_View.OnPrint(printer.GetDC(), nullptr);
        ASSERT_TRUE(printer.Finish());
        pages[resolution] = Rendered(m_Folder, m_Folder.File("a.pdf"), 120);
        ASSERT_NE(pages[resolution], nullptr);
    }
    ExpectNear(Content(*pages[1]), Content(*pages[0]), 1);
    // The same picture: what differs are edges. And a finer one: pixels of the image are 5 wide on
    // the page, so that colours change at every fifth column only.
    const RECT box = Content(*pages[0]);
    int between = 0;
    int differing = 0;
    for (int y = box.top; y < box.bottom; ++y)
        for (int x = box.left + 1; x < box.right; ++x) {
            const auto red = [&](int page, int at) {
                return pages[page]->PixelFromTop(at, y).rgbRed;
            };
            differing += std::abs(red(0, x) - red(1, x)) > 60;
            between += red(1, x) != red(1, x - 1) && red(0, x) == red(0, x - 1);
        }
    EXPECT_GT(between, 500);
    EXPECT_LT(differing, (box.right - box.left) * (box.bottom - box.top) / 10);
    m_View.SetViewSizePrinter();
    m_View.DrawView();
    EXPECT_EQ(m_View.GetDIBSectionPntr()->GetDIBSectionAsDIB(), image) << "all is as it was";
}

TEST_F(PrinterTest, PagesFollowEachOther) {
    SKIP_WITHOUT("pdfinfo");
    Printer printer(m_Folder.File("two.pdf"), {});
    m_View.OnPrint(printer.GetDC(), nullptr);
    EXPECT_TRUE(printer.EndPage());
    m_View.OnPrint(printer.GetDC(), nullptr);
    EXPECT_FALSE(std::filesystem::exists(m_Folder.File("two.pdf"))) << "not before it is whole";
    EXPECT_TRUE(printer.Finish());
    EXPECT_FALSE(printer.Finish());
    const std::string info = RunCommand("pdfinfo " + m_Folder.File("two.pdf"));
    EXPECT_NE(info.find(" 2\n", info.find("Pages:")), std::string::npos) << info;
    EXPECT_NE(info.find("(A4)"), std::string::npos) << info;
}

TEST_F(PrinterTest, PostScriptIsWritten) {
    PageSetup setup;
    setup.format = PageSetup::Format::PostScript;
    Printer printer(m_Folder.File("a.ps"), setup);
    m_View.OnPrint(printer.GetDC(), nullptr);
    ASSERT_TRUE(printer.Finish());
    std::ifstream in(m_Folder.File("a.ps"));
    std::string first;
    std::getline(in, first);
    EXPECT_EQ(first.substr(0, 11), "%!PS-Adobe-");
}

TEST_F(PrinterTest, AFileThatCannotBeMadeIsThePrintersError) {
    Printer printer("/nonexistent/folder/a.pdf", {});
    for (const int resolution : {0, 1}) {
        m_View.SetPrintResolution(resolution);
        EXPECT_TRUE(Raises(ERR3D_PRINT_DC, ERR3DCLASS_DIBSECTION, "PrintDIB",
                           [&] { m_View.OnPrint(printer.GetDC(), nullptr); }));
        EXPECT_TRUE(Raises(ERR3D_PRINT_DC, ERR3DCLASS_DIBSECTION, "PrintDIB",
                           [&] { m_View.OnPrint(nullptr, nullptr); }));
    }
    EXPECT_FALSE(printer.Finish());
    EXPECT_EQ(m_View.GetPrintingState(), 0) << "a failure leaves the screen usable";
    m_View.DrawViewScreen();
    EXPECT_FALSE(IsWhite(m_Window.GetPixels()->PixelFromTop(80, 60)));
}

TEST_F(PrinterTest, AFullDiskIsToldWhenTheFileIsFinished) {
    Printer printer("/dev/full", {});
    m_View.OnPrint(printer.GetDC(), nullptr);
    EXPECT_FALSE(printer.Finish());
}

/// A page that looks at the view while it is printed to.
class Spy : public DeviceContext {
 public:
    explicit Spy(CChartView3D& view, CWnd& window) : m_View(view), m_Window(window) {}
    int Caps(int code) const override {
        return code == LOGPIXELSX || code == LOGPIXELSY ? 72 : 300;
    }
    bool Put(int, int, int, int, const Bitmap&, int, int) override { return false; }
    bool Stretch(const RECT&, const Bitmap&, const RECT&) override {
        stateWhilePrinting = m_View.GetPrintingState();
        m_View.DrawViewScreen();
        drewToScreen = m_Window.GetPixels()->PixelFromTop(80, 60).rgbBlue != 0;
        return true;
    }
    int stateWhilePrinting = -1;
    bool drewToScreen = true;

 private:
    CChartView3D& m_View;
    CWnd& m_Window;
};

TEST_F(PrinterTest, NothingIsDrawnToTheScreenWhilePrinting) {
    const auto spy = std::make_shared<Spy>(m_View, m_Window);
    CDC page(spy);
    m_View.DrawViewPrinter(&page);
    EXPECT_EQ(spy->stateWhilePrinting, -1) << "outside of OnPrint nothing is printed";
    m_View.OnPrint(&page, nullptr);
    EXPECT_EQ(spy->stateWhilePrinting, 1);
    EXPECT_FALSE(spy->drewToScreen);
    EXPECT_EQ(m_View.GetPrintingState(), 0);
    m_View.OnEndPrinting(&page, nullptr);
}

TEST_F(PrinterTest, PrintingHasTheWindowDrawnAgain) {
    START_X_SERVER(server);
    const auto window = X11Window::Create(100, 100, "print", server->Name());
    CChartView3D view(window->GetWindow(), 100, 100);
    window->WaitForEvent(1000);
    window->PumpEvents([](const X11Event&) {});
    Printer printer(m_Folder.File("a.pdf"), {});
    view.OnPrint(printer.GetDC(), nullptr);
    int redraws = 0;
    window->WaitForEvent(1000);
    window->PumpEvents([&](const X11Event& e) { redraws += e.type == X11Event::Type::Redraw; });
    EXPECT_EQ(redraws, 1);
}

/// Puts a folder of its own in front of, or in place of, those in which programs are looked for.
class ProgramPath {
 public:
    explicit ProgramPath(const std::string& path) : m_Before(std::getenv("PATH")) {
        setenv("PATH", path.c_str(), 1);
    }
    ~ProgramPath() { setenv("PATH", m_Before.c_str(), 1); }

 private:
    std::string m_Before;
};

TEST_F(PrinterTest, JobsGoToThePrintSystemsProgram) {
    const std::string paper = m_Folder.File("a.pdf");
    std::ofstream(paper) << "page";
    CString why;
    {
        const ProgramPath none("/nonexistent");
        EXPECT_FALSE(Printer::Submit(paper, "", why));
        EXPECT_EQ(why, "There is no print system: its program lp is not installed.");
    }
    const std::string lp = m_Folder.File("lp");
    const auto install = [&](const std::string& body) {
        std::ofstream(lp) << "#!/bin/sh\n" << body << '\n';
        std::filesystem::permissions(lp, std::filesystem::perms::owner_all);
    };
    const ProgramPath path(std::filesystem::path(lp).parent_path().string() + ":/usr/bin:/bin");
    install("printf \"%s|\" \"$@\" > " + m_Folder.File("seen"));
    EXPECT_TRUE(Printer::Submit(paper, "office printer", why)) << why;
    std::string seen;
    std::getline(std::ifstream(m_Folder.File("seen")), seen);
    EXPECT_EQ(seen, "-d|office printer|--|" + paper + "|");
    install("echo 'lp: Error - scheduler not responding.' >&2; exit 1");
    EXPECT_FALSE(Printer::Submit(paper, "", why));
    EXPECT_EQ(why, "The print system did not take the job: lp: Error - scheduler not responding.");
    EXPECT_FALSE(Printer::Submit(m_Folder.File("missing.pdf"), "", why));
    EXPECT_NE(why.find("missing.pdf"), std::string::npos);
}

}  // namespace
}  // namespace varnel::test
