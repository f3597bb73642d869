// Windows on a display server: what a view draws to them is what its image has, and losing them is
// an error and not the end of the program.
#include "varnel/platform/x11_window.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <vector>

#include "tests/support/expect_error.h"
#include "tests/support/memory_target.h"
#include "tests/support/x_server.h"
#include "varnel/chart/chart.h"
#include "varnel/chart/chart_view.h"
#include "varnel/chart/header.h"
#include "varnel/platform/dib_section.h"
#include "varnel/transform/transform.h"

namespace varnel::test {
namespace {

/// Something with text, lines and many colours.
void FillView(CChartView3D& view) {
    CTransform3D* t = nullptr;
    CChart3D* chart = view.NewChart3D({0, 0, 0, 0}, {10, 10, 10, 0}, &t);
    t->SetRotate({-20, 0, 25, 0});
    chart->SetChartBkColor({0.85, 0.6, 0.3, 1});
    chart->AutoAxes(t);
    chart->NewAuxObj(t, 1);
    chart->GetHeader()->SetTitle1("Window");
}

/// The part of the view's image that a drawing of width x height fills.
Bitmap DrawnPart(const CChartView3D& view, int width, int height) {
    const Bitmap& image = *view.GetDIBSectionPntr()->GetBitmap();
    Bitmap part(width, height, 32);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const RGBQUAD p = image.PixelFromTop(x, image.Height() - height + y);
            BYTE* out = part.RowFromTop(y) + 4 * x;
            out[0] = p.rgbBlue;
            out[1] = p.rgbGreen;
            out[2] = p.rgbRed;
        }
    return part;
}

std::size_t CountColors(const Bitmap& picture) {
    std::set<unsigned> seen;
    for (int y = 0; y < picture.Height(); ++y)
        for (int x = 0; x < picture.Width(); ++x)
            seen.insert(Rgb(picture.PixelFromTop(x, y)));
    return seen.size();
}

std::vector<X11Event> Pump(X11Window& window, bool* alive = nullptr) {
    std::vector<X11Event> events;
    // Events of one connection are there as soon as another one's requests have been answered, but
    // it takes the kernel a moment to tell.
    window.WaitForEvent(200);
    const bool usable = window.PumpEvents([&](const X11Event& e) { events.push_back(e); });
    if (alive != nullptr) *alive = usable;
    return events;
}

int Count(const std::vector<X11Event>& events, X11Event::Type type) {
    return static_cast<int>(
        std::ranges::count_if(events, [=](const X11Event& e) { return e.type == type; }));
}

struct ScreenCase {
    int depth;
    bool shared;
    int bitsPerPixel;  ///< of the view's image
    int tolerance;     ///< of a component; screens of 16 bits have one more for green
};

class Screens : public testing::TestWithParam<ScreenCase> {};

TEST_P(Screens, ShowTheImageOfTheView) {
    const ScreenCase& screen = GetParam();
    START_X_SERVER(server, screen.depth,
                   screen.shared ? std::vector<std::string>{}
                                 : std::vector<std::string>{"-extension", "MIT-SHM"});
    const auto window = X11Window::Create(311, 203, "varnel", server->Name());
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(window->UsesSharedMemory(), screen.shared);
    CChartView3D view(window->GetWindow());
    EXPECT_EQ(view.GetDIBSectionPntr()->DIBWidth(), 640) << "the screen's resolution";
    EXPECT_EQ(view.GetDIBSectionPntr()->GetDIBHeader()->biBitCount, screen.bitsPerPixel);
    FillView(view);
    view.DrawViewScreen();
    EXPECT_EQ(window->UsesSharedMemory(), screen.shared);
    const auto shown = server->Photograph(window->GetId());
    ASSERT_NE(shown, nullptr);
    EXPECT_GT(CountColors(*shown), 8U);
    EXPECT_LE(LargestDifference(*shown, DrawnPart(view, 311, 203)), screen.tolerance);
}

INSTANTIATE_TEST_SUITE_P(X11Window, Screens,
                         testing::Values(ScreenCase{24, true, 32, 0}, ScreenCase{24, false, 32, 0},
                                         ScreenCase{30, true, 32, 0}, ScreenCase{30, false, 32, 0},
                                         ScreenCase{16, true, 16, 2}, ScreenCase{16, false, 16, 2}),
                         [](const auto& test) {
                             return "Depth" + std::to_string(test.param.depth) +
                                    (test.param.shared ? "Shared" : "Plain");
                         });

TEST(X11Window, ForeignWindowsOfEveryDepthAreDrawnTo) {
    START_X_SERVER(server);
    for (const int depth : {24, 32}) {
        const unsigned long id = server->NewWindow(200, 150, depth);
        const auto window = X11Window::Attach(id, server->Name());
        ASSERT_NE(window, nullptr) << depth;
        CChartView3D view(window->GetWindow(), 400, 300);
        FillView(view);
        view.DrawViewScreen();
        const auto shown = server->Photograph(id);
        EXPECT_EQ(LargestDifference(*shown, DrawnPart(view, 200, 150)), 0) << depth;
    }
    CString why;
    EXPECT_EQ(X11Window::Attach(0x7FFFFFF, server->Name(), &why), nullptr);
    EXPECT_EQ(why.find("there is no window 134217727 on "), 0u) << why;
    EXPECT_EQ(X11Window::Create(9, 9, "", ":77777", &why), nullptr);
    EXPECT_EQ(why, "no display server answers as :77777");
}

TEST(X11Window, ASubWindowLeavesTheRestAlone) {
    START_X_SERVER(server);
    const unsigned long id = server->NewWindow(200, 150, 24);
    const auto window = X11Window::Attach(id, server->Name());
    CChartView3D view(window->GetWindow(), 400, 300);
    FillView(view);
    const auto before = server->Photograph(id);
    // Partly outside of the window, to the left and below.
    view.DrawViewScreen(window->GetWindow()->GetDC(), -30, 90, 120, 100);
    const auto shown = server->Photograph(id);
    const Bitmap image = DrawnPart(view, 120, 100);
    for (int y = 0; y < 150; ++y)
        for (int x = 0; x < 200; ++x) {
            const bool inside = x < 90 && y >= 90;
            const RGBQUAD is = shown->PixelFromTop(x, y);
            const RGBQUAD should =
                inside ? image.PixelFromTop(x + 30, y - 90) : before->PixelFromTop(x, y);
            ASSERT_TRUE(is.rgbRed == should.rgbRed && is.rgbBlue == should.rgbBlue)
                << x << ' ' << y;
        }
}

TEST(X11Window, ManyEventsBecomeFew) {
    START_X_SERVER(server);
    const auto window = X11Window::Create(100, 100, "events", server->Name());
    Pump(*window);
    for (int i = 0; i < 50; ++i)
        server->MovePointer(window->GetId(), 10 + i, 20);
    for (int i = 1; i <= 20; ++i)
        server->ResizeWindow(window->GetId(), 100 + i, 100 + 2 * i);
    const std::vector<X11Event> events = Pump(*window);
    ASSERT_EQ(Count(events, X11Event::Type::Moved), 1);
    EXPECT_EQ(events.front().x, 59);
    EXPECT_EQ(events.front().y, 20);
    ASSERT_EQ(Count(events, X11Event::Type::Resized), 1);
    EXPECT_EQ(Count(events, X11Event::Type::Redraw), 1);
    EXPECT_EQ(events.back().type, X11Event::Type::Redraw) << "after all that led to it";
    RECT client;
    window->GetWindow()->GetClientRect(&client);
    EXPECT_EQ(client.right, 120);
    EXPECT_EQ(client.bottom, 140);

    EXPECT_TRUE(Pump(*window).empty());
    window->GetWindow()->InvalidateRect(nullptr, 1);
    EXPECT_EQ(Count(Pump(*window), X11Event::Type::Redraw), 1);
}

TEST(X11Window, ClosingIsTheHostsDecisionForItsOwnWindow) {
    START_X_SERVER(server);
    const int before = server->CountWindows();
    auto window = X11Window::Create(100, 100, "close", server->Name());
    Pump(*window);
    server->AskToClose(window->GetId());
    bool alive = false;
    EXPECT_EQ(Count(Pump(*window, &alive), X11Event::Type::Close), 1);
    EXPECT_TRUE(alive);
    EXPECT_EQ(server->CountWindows(), before + 1);
    window.reset();
    EXPECT_EQ(server->CountWindows(), before);
}

TEST(X11Window, ADestroyedForeignWindowIsAnError) {
    START_X_SERVER(server);
    const unsigned long id = server->NewWindow(100, 80, 24);
    const auto window = X11Window::Attach(id, server->Name());
    CChartView3D view(window->GetWindow(), 100, 80);
    server->DestroyWindow(id);
    const auto draw = [&] { view.DrawViewScreen(); };
    EXPECT_TRUE(Raises(ERR3D_CDC_PARAMETER, ERR3DCLASS_CHARTVIEW3D, "DrawViewScreen", draw));
    bool alive = true;
    EXPECT_EQ(Count(Pump(*window, &alive), X11Event::Type::Close), 1);
    EXPECT_FALSE(alive);
    window->GetWindow()->InvalidateRect(nullptr, 1);
    RECT client;
    window->GetWindow()->GetClientRect(&client);
    EXPECT_EQ(client.right, 0);
    EXPECT_EQ(server->HostErrors(), 1) << "the host's handlers are in place";
}

TEST(X11Window, ALostServerIsAnErrorAndTheProcessGoesOn) {
    START_X_SERVER(server);
    const auto window = X11Window::Create(100, 80, "lost", server->Name());
    ASSERT_NE(window, nullptr);
    CChartView3D view(window->GetWindow(), 100, 80);
    view.DrawViewScreen();
    server->Kill();
    EXPECT_TRUE(Raises(ERR3D_CDC_PARAMETER, ERR3DCLASS_CHARTVIEW3D, "DrawViewScreen",
                       [&] { view.DrawViewScreen(); }));
    EXPECT_FALSE(window->PumpEvents([](const X11Event&) {}));
    EXPECT_FALSE(window->WaitForEvent(0));
    window->GetWindow()->InvalidateRect(nullptr, 1);
    window->SetTitle("gone");
    view.SetViewSizePrinter();
    view.DrawView();  // the image does not need the server
    EXPECT_EQ(X11Window::Create(100, 80, "none", server->Name()), nullptr);
}

TEST(X11Window, ADeviceContextOutlivesItsWindow) {
    START_X_SERVER(server);
    auto window = X11Window::Create(100, 80, "device", server->Name());
    CDC dc = *window->GetWindow()->GetDC();
    EXPECT_EQ(dc.GetDeviceCaps(HORZRES), 640);
    EXPECT_NEAR(dc.GetDeviceCaps(LOGPIXELSX), 100, 5);
    window.reset();
    const Bitmap white(10, 10, 32);
    EXPECT_FALSE(dc.StretchDIBits({0, 0, 10, 10}, white, {0, 0, 10, 10}));
}

}  // namespace
}  // namespace varnel::test
