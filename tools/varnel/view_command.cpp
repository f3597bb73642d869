#include <cstdlib>
#include <filesystem>
#include <iostream>

#include "tools/varnel/chart_files.h"
#include "tools/varnel/commands.h"
#include "tools/varnel/viewer.h"
#include "varnel/foundation/notice.h"

namespace tool {

using namespace varnel;

namespace {

std::string NoDisplay(const std::string& file) {
    const char* display = std::getenv("DISPLAY");
    return (display == nullptr || *display == '\0'
                ? std::string("There is no display to show the chart on: DISPLAY is not set.")
                : "The display " + std::string(display) + " cannot be used.") +
           " A picture can be made with: varnel render " + file + " -o picture.png";
}

/// Shows the library's notices in the viewer while there is one.
class ViewerNotices {
 public:
    explicit ViewerNotices(Viewer& viewer)
        : m_Before(SetNoticeHandler([&viewer](const std::string& text) { viewer.Tell(text); })) {}
    ~ViewerNotices() { SetNoticeHandler(m_Before); }
    ViewerNotices(const ViewerNotices&) = delete;
    ViewerNotices& operator=(const ViewerNotices&) = delete;

 private:
    NoticeHandler m_Before;
};

}  // namespace

int View(const std::string& file, const PictureSize& size, int samples) {
    // What is wrong with the file is told before a window comes up for it.
    CErr3D::SetErrorReportMode(0);
    {
        CWnd nothing(16, 16);
        CChartView3D trial(&nothing, 16, 16);
        const Loaded loaded = LoadChartFile(trial, file);
        if (!loaded.usable) {
            std::cerr << "varnel: " << loaded.sentence << '\n';
            return 1;
        }
    }
    const std::string name = std::filesystem::path(file).filename().string();
    const auto window = X11Window::Create(size.width, size.height, name + " - varnel");
    if (window == nullptr) {
        std::cerr << "varnel: " << NoDisplay(file) << '\n';
        return 1;
    }
    try {
        CChartView3D view(window->GetWindow());
        view.SetAntialiasing(samples);
        const Loaded loaded = LoadChartFile(view, file);
        Viewer viewer(*window, view, file, samples);
        const ViewerNotices notices(viewer);
        viewer.Tell(loaded.sentence.empty() ? "Press h for help." : loaded.sentence);
        CErr3D::SetErrorReportMode(1);
        const bool closed = viewer.Run();
        CErr3D::SetErrorReportMode(0);
        if (closed) return 0;
        std::cerr << "varnel: The display is gone.\n";
        return 1;
    } catch (const Error& e) {
        std::cerr << "varnel: " << Describe("The chart cannot be shown", e) << '\n';
        return 1;
    }
}

}  // namespace tool
