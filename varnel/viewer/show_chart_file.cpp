#include "varnel/viewer/show_chart_file.h"

#include <cstdlib>
#include <filesystem>

#include "varnel/foundation/notice.h"
#include "varnel/viewer/chart_files.h"
#include "varnel/viewer/detail/viewer.h"

namespace varnel {

namespace {

std::string NoDisplay(const std::string& file) {
    const char* display = std::getenv("DISPLAY");
    return (display == nullptr || *display == '\0'
                ? std::string("There is no display to show the chart on: DISPLAY is not set.")
                : "The display " + std::string(display) + " cannot be used.") +
           " A picture can be made with: varnel render " + file + " -o picture.png";
}

/// Failures are told by those who call, and the mode comes back.
struct ReportMode {
    int before = CErr3D::GetErrorReportMode();
    ReportMode() { CErr3D::SetErrorReportMode(0); }
    ~ReportMode() { CErr3D::SetErrorReportMode(before); }
    ReportMode(const ReportMode&) = delete;
    ReportMode& operator=(const ReportMode&) = delete;
};

/// Shows the library's notices in the viewer while there is one.
class ViewerNotices {
 public:
    explicit ViewerNotices(detail::Viewer& viewer)
        : m_Before(SetNoticeHandler([&viewer](const std::string& text) { viewer.Tell(text); })) {}
    ~ViewerNotices() { SetNoticeHandler(m_Before); }
    ViewerNotices(const ViewerNotices&) = delete;
    ViewerNotices& operator=(const ViewerNotices&) = delete;

 private:
    NoticeHandler m_Before;
};

}  // namespace

bool ShowChartFile(const std::string& file, const ShowOptions& options, std::string& problem) {
    const ReportMode mode;
    // What is wrong with the file is told before a window comes up for it.
    {
        CWnd nothing(16, 16);
        CChartView3D trial(&nothing, 16, 16);
        const Loaded loaded = LoadChartFile(trial, file);
        problem = loaded.sentence;
        if (!loaded.usable) return false;
    }
    const std::string title = options.title.empty()
                                  ? std::filesystem::path(file).filename().string() + " - varnel"
                                  : options.title;
    const auto window = X11Window::Create(options.width, options.height, title);
    if (window == nullptr) {
        problem = NoDisplay(file);
        return false;
    }
    try {
        CChartView3D view(window->GetWindow());
        const Loaded loaded = LoadChartFile(view, file);
        view.SetAntialiasing(options.samples);
        detail::Viewer viewer(*window, view, file, options.samples);
        const ViewerNotices notices(viewer);
        viewer.Tell(loaded.sentence.empty() ? "Press h for help." : loaded.sentence);
        CErr3D::SetErrorReportMode(1);
        problem = "The display is gone.";
        return viewer.Run();
    } catch (const Error& e) {
        problem = Describe("The chart cannot be shown", e);
        return false;
    }
}

}  // namespace varnel
