// What hosts do wrong with views and is told instead of survived by luck.
#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <functional>
#include <memory>
#include <thread>

#include "tests/support/expect_error.h"
#include "varnel/varnel.h"

namespace varnel::test {
namespace {

/// What() of the error that drawing a view raises, with its type; "drawn" without one.
std::string Drawing(CChartView3D& view) {
    try {
        view.DrawView();
        return "drawn";
    } catch (const Error& error) {
        return std::to_string(error.m_ErrorType) + " " + error.what();
    }
}

TEST(Misuse, DrawingOnASecondThread) {
    CErr3D::SetErrorReportMode(0);
    CWnd window(20, 20);
    CChartView3D view(&window, 20, 20);
    EXPECT_EQ(Drawing(view), "drawn");
    std::string told;
    std::thread([&] { told = Drawing(view); }).join();
    EXPECT_EQ(told, "16 DrawView: its OpenGL context is current on another thread");
    view.GetOpenGLPntr()->MakeNonCurrent();
    std::thread([&] { told = Drawing(view); }).join();
    EXPECT_EQ(told, "drawn");
}

TEST(Misuse, DrawingInAForkedProcess) {
    CErr3D::SetErrorReportMode(0);
    CWnd window(20, 20);
    auto view = std::make_unique<CChartView3D>(&window, 20, 20);
    EXPECT_EQ(Drawing(*view), "drawn");
    const pid_t child = ::fork();
    if (child == 0) {
        ::alarm(20);
        const bool told = Drawing(*view).starts_with("16 DrawView: this process was forked");
        bool refused = false;
        try {
            const CChartView3D another(&window, 20, 20);
        } catch (const CErr3D& error) {
            refused = error.m_ErrorType == ERR3D_PIXEL_FORMAT;
        }
        view.reset();
        ::_exit(told && refused ? 0 : 1);
    }
    int status = -1;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(Drawing(*view), "drawn") << "the parent goes on";
}

/// Another library of the process ends EGL between two views. Exits with 0 when the later view
/// draws and the earlier one says what happened.
[[noreturn]] void EndEglBetweenTwoViews() {
    CErr3D::SetErrorReportMode(0);
    CWnd window(20, 20);
    CChartView3D earlier(&window, 20, 20);
    bool well = Drawing(earlier) == "drawn";
    eglTerminate(eglGetCurrentDisplay());
    {
        CChartView3D later(&window, 20, 20);
        well = well && Drawing(later) == "drawn";
        std::cerr << Drawing(earlier) << '\n';
    }
    std::exit(well ? 0 : 1);
}

TEST(MisuseDeathTest, EglEndedByAnotherLibrary) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(EndEglBetweenTwoViews(), testing::ExitedWithCode(0),
                "16 DrawView: another library terminated EGL");
}

/// Views that live until the process ends are destroyed after the thread's variables.
[[noreturn]] void EndWithStaticViews() {
    static CWnd window(20, 20);
    static CChartView3D first(&window, 20, 20), second(&window, 20, 20);
    const bool well = Drawing(first) == "drawn" && Drawing(second) == "drawn";
    std::exit(well ? 0 : 1);
}

TEST(MisuseDeathTest, ViewsThatAreStatic) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(EndWithStaticViews(), testing::ExitedWithCode(0), "");
}

TEST(Misuse, AWindowThatIsDestroyedFirst) {
    CErr3D::SetErrorReportMode(0);
    auto window = std::make_unique<CWnd>(20, 20);
    CDC memory;
    memory.CreateCompatibleDC(window->GetDC());
    CChartView3D view(window.get(), 20, 20);
    window.reset();
    const std::function<void()> uses[] = {
        [&] { view.DrawView(); },
        [&] { view.DrawViewScreen(); },
        [&] { view.DrawViewScreen(&memory); },
        [&] { view.SaveToPNG("/dev/null"); },
        [&] { view.CopyToClipboard(); },
    };
    for (const auto& use : uses) {
        try {
            use();
            ADD_FAILURE() << "nothing was raised";
        } catch (const CErr3D& error) {
            EXPECT_EQ(error.m_ErrorType, ERR3D_CWND_PARAMETER);
        }
    }
    view.SetViewSizeWindow();
}

std::size_t MegabytesInUse() {
    std::size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages >> pages;
    return pages / 256;
}

TEST(Misuse, AnImageBeyondTheDriversLimitTakesNoMemory) {
    CErr3D::SetErrorReportMode(0);
    const std::size_t before = MegabytesInUse();
    CWnd window(20000, 20000);
    try {
        const CChartView3D view(&window);
        ADD_FAILURE() << "nothing was raised";
    } catch (const Error& error) {
        EXPECT_EQ(error.m_ErrorType, ERR3D_OBJECT_NEW);
        EXPECT_STREQ(error.what(),
                     "MakeCompatibleBitmap: an image of 20000 x 20000 pixels cannot be drawn: the "
                     "driver's limit is 16384 x 16384");
    }
    EXPECT_LT(MegabytesInUse(), before + 200);
}

}  // namespace
}  // namespace varnel::test
