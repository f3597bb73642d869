#include <cstdlib>
#include <iostream>

#include "tools/varnel/commands.h"
#include "varnel/foundation/error.h"
#include "varnel/platform/dib_section.h"
#include "varnel/platform/system_report.h"
#include "varnel/platform/window.h"
#include "varnel/varnel.h"

namespace tool {

using namespace varnel;

namespace {

/// Draws a small chart; what is wrong, empty when the picture has something in it.
std::string TryPicture() {
    try {
        constexpr int kSize = 64;
        CWnd window(kSize, kSize);
        CChartView3D view(&window, kSize, kSize);
        CTransform3D* transform = nullptr;
        CChart3D* chart = view.NewChart3D({0, 0, 0, 0}, {2, 1, 1, 0}, &transform);
        const double x[] = {1};
        chart->NewChartObj(transform)->BarChart25D(x, x, 0, 0.5, 1, 1, 1, {1, 0, 0, 1},
                                                   {1, 0, 0, 1}, 1, 1, 0);
        view.DrawView();
        const HBITMAP bitmap = view.GetDIBSectionPntr()->GetBitmap();
        const RGBQUAD middle = bitmap->PixelFromTop(kSize / 2, kSize / 2);
        return middle.rgbRed > middle.rgbBlue ? "" : "the picture is empty";
    } catch (const Error& e) {
        return e.what();
    }
}

void Line(const char* what, const std::string& text) {
    std::cout << what;
    for (std::size_t i = std::string(what).size(); i < 12; ++i)
        std::cout << ' ';
    std::cout << text << '\n';
}

void Missing(const std::string& what, const std::string& package) {
    std::cout << "            missing: " << what << "; install " << package << '\n';
}

void ReportFonts() {
    for (const char* face : {"Arial", "Times New Roman", "Courier New"}) {
        const FontReport font = ReportFont(face);
        Line("font", std::string(face) +
                         (font.file.empty() ? ": none" : ": " + font.family + ", " + font.file));
        if (font.file.empty())
            Missing("any font, so that text is not drawn", "fonts-liberation");
        else if (font.family != face && font.family.rfind("Liberation", 0) != 0 &&
                 font.family.rfind("Arimo", 0) != 0)
            Missing("a face of the widths of " + std::string(face), "fonts-liberation");
    }
}

}  // namespace

int Doctor() {
    const GraphicsReport graphics = ReportGraphics();
    const char* const wanted = std::getenv("VARNEL_EGL");
    if (wanted != nullptr) Line("VARNEL_EGL", wanted);
    if (graphics.usable) {
        Line("EGL", "platform " + graphics.platform);
        Line("renderer", graphics.renderer + " (" + graphics.vendor + ")");
        Line("OpenGL", graphics.version + ", up to " + std::to_string(graphics.maxSamples) +
                           " samples a pixel");
    } else {
        Line("EGL", "none that can be used: " + graphics.why);
        Missing("a driver", "libegl-mesa0 libgl1-mesa-dri");
    }
    ReportFonts();
    const std::string print = FindPrintCommand();
    Line("printing", print.empty() ? "to files only" : "to files and through " + print);
    if (print.empty()) Missing("the print system's command lp", "cups-client");
    if (HasDisplay()) {
        Line("display", std::getenv("DISPLAY"));
        Line("clipboard", "that of the display");
    } else {
        const char* const display = std::getenv("DISPLAY");
        Line("display", display == nullptr || *display == '\0'
                            ? "none: DISPLAY is not set; charts are drawn without one"
                            : std::string(display) + " cannot be reached");
        Line("clipboard", "the program's own");
    }
    const std::string wrong = graphics.usable ? TryPicture() : "there is no driver";
    Line("a picture", wrong.empty() ? "can be made" : "cannot be made: " + wrong);
    return wrong.empty() ? kDone : kFailed;
}

}  // namespace tool
