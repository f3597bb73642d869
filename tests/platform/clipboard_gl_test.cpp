// The clipboard: what other programs paste is the view's image, byte for byte what was offered.
#include "varnel/platform/clipboard.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <thread>

#include "tests/support/expect_error.h"
#include "tests/support/x_server.h"
#include "varnel/chart/chart_view.h"
#include "varnel/platform/detail/png_file.h"
#include "varnel/platform/dib_section.h"
#include "varnel/platform/files.h"
#include "varnel/platform/x11_window.h"

namespace varnel::test {
namespace {

/// Noise, so that a PNG of it needs several pieces.
Bitmap Noise(int width, int height) {
    Bitmap picture(width, height, 32);
    std::uint32_t state = 1;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            BYTE* pixel = picture.RowFromTop(y) + 4 * x;
            for (int c = 0; c < 3; ++c) {
                state = state * 1664525u + 1013904223u;
                pixel[c] = static_cast<BYTE>(state >> 24);
            }
            pixel[3] = 255;
        }
    return picture;
}

std::string PngOf(const Bitmap& picture) {
    MemoryFile file;
    WritePNG(picture, file);
    return {file.GetBytes().begin(), file.GetBytes().end()};
}

class ClipboardTest : public testing::Test {
 protected:
    void TearDown() override { Clipboard::Get().Clear(); }

    /// Runs a command while the clipboard is served, as the loop of a host would.
    static std::string While(const XServer& server, const std::string& command,
                             int* status = nullptr) {
        std::string text;
        std::atomic<bool> done = false;
        std::thread other([&] {
            text = RunCommand("DISPLAY=" + server.Name() + " " + command, status);
            done = true;
        });
        while (!done) {
            Clipboard::Get().Pump();
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        other.join();
        return text;
    }
};

TEST_F(ClipboardTest, WithoutADisplayTheProcessHasThePackedBitmap) {
    CWnd window(40, 30);
    CChartView3D view(&window, 40, 30);
    view.SetViewBkColor({0.2, 0.4, 0.6, 1});
    EXPECT_TRUE(Clipboard::Get().GetDIB().empty());
    view.CopyToClipboard();
    const std::vector<BYTE> dib = Clipboard::Get().GetDIB();
    EXPECT_EQ(dib.size(), 40u + 1024u + 40u * 30u * 4u);
    EXPECT_EQ(dib, view.GetDIBSectionPntr()->GetDIBSectionAsDIB());
    EXPECT_FALSE(Clipboard::Get().IsOffered());
    EXPECT_FALSE(Clipboard::Get().Pump());
    EXPECT_EQ(Clipboard::Get().ConnectionFd(), -1);
    EXPECT_TRUE(Clipboard::Get().ServeUntilTakenOver());
    Clipboard::Get().Clear();
    EXPECT_TRUE(Clipboard::Get().GetDIB().empty());
}

TEST_F(ClipboardTest, AServerThatIsNotThereLeavesTheProcesssOwn) {
    const Bitmap picture(2, 2, 32);
    EXPECT_FALSE(Clipboard::Get().SetPicture(picture, {1, 2, 3}, ":9999"));
    EXPECT_EQ(Clipboard::Get().GetDIB(), (std::vector<BYTE>{1, 2, 3}));
    EXPECT_FALSE(Clipboard::Get().IsOffered());
}

TEST_F(ClipboardTest, AViewIsPastedByAnotherProgram) {
    SKIP_WITHOUT("xclip");
    START_X_SERVER(server);
    const auto window = X11Window::Create(200, 150, "copy", server->Name());
    CChartView3D view(window->GetWindow(), 300, 200);
    view.SetViewBkColor({0.9, 0.5, 0.1, 1});
    view.CopyToClipboard();
    ASSERT_TRUE(Clipboard::Get().IsOffered());
    const std::string targets = While(*server, "xclip -selection clipboard -o -t TARGETS");
    EXPECT_EQ(targets, "TARGETS\nTIMESTAMP\nMULTIPLE\nimage/png\nimage/bmp\n");
    EXPECT_EQ(While(*server, "xclip -selection clipboard -o -t image/png"),
              PngOf(*view.GetDIBSectionPntr()->GetBitmap()));
    EXPECT_EQ(Clipboard::Get().GetDIB(), view.GetDIBSectionPntr()->GetDIBSectionAsDIB());
    int status = 0;
    EXPECT_EQ(While(*server, "xclip -selection clipboard -o -t text/plain 2>&1", &status),
              "Error: target text/plain not available\n");
    EXPECT_NE(status, 0);
}

TEST_F(ClipboardTest, LargePicturesArriveWholeEvenAtTwoAtOnce) {
    SKIP_WITHOUT("xclip");
    START_X_SERVER(server);
    const Bitmap picture = Noise(900, 500);
    ASSERT_TRUE(Clipboard::Get().SetPicture(picture, {}, server->Name().c_str()));
    const TemporaryFolder folder;
    While(*server, "xclip -selection clipboard -o -t image/png > " + folder.File("a.png") +
                       " & DISPLAY=" + server->Name() +
                       " xclip -selection clipboard -o -t image/bmp > " + folder.File("b.bmp") +
                       "; wait");
    EXPECT_EQ(ReadAll(folder.File("a.png")), PngOf(picture));
    const std::string bmp = ReadAll(folder.File("b.bmp"));
    constexpr std::size_t kStart = 54;
    constexpr std::size_t kStride = 900 * 3;
    ASSERT_EQ(bmp.size(), kStart + 500 * kStride);
    EXPECT_EQ(bmp.substr(0, 2), "BM");
    int wrong = 0;
    for (int y = 0; y < 500; ++y)
        for (int x = 0; x < 900; ++x) {
            const std::size_t at = kStart + static_cast<std::size_t>(499 - y) * kStride +
                                   static_cast<std::size_t>(x) * 3;
            const RGBQUAD p = picture.PixelFromTop(x, y);
            wrong += bmp[at] != static_cast<char>(p.rgbBlue) ||
                     bmp[at + 1] != static_cast<char>(p.rgbGreen) ||
                     bmp[at + 2] != static_cast<char>(p.rgbRed);
        }
    EXPECT_EQ(wrong, 0);
}

TEST_F(ClipboardTest, ARequestorThatVanishesIsForgotten) {
    SKIP_WITHOUT("xclip");
    START_X_SERVER(server);
    ASSERT_TRUE(Clipboard::Get().SetPicture(Noise(900, 500), {}, server->Name().c_str()));
    // The requestor gets the first piece and no time for the others.
    std::thread other([&] {
        RunCommand("DISPLAY=" + server->Name() +
                   " timeout -s KILL 0.3 xclip -selection clipboard -o -t image/bmp");
    });
    for (int i = 0; i < 20; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
        if (i == 10) Clipboard::Get().Pump();
    }
    other.join();
    EXPECT_TRUE(Clipboard::Get().Pump());
    EXPECT_EQ(While(*server, "xclip -selection clipboard -o -t TIMESTAMP").empty(), false);
}

TEST_F(ClipboardTest, ServingEndsWhenAnotherProgramCopies) {
    SKIP_WITHOUT("xclip");
    START_X_SERVER(server);
    ASSERT_TRUE(Clipboard::Get().SetPicture(Noise(20, 20), {7}, server->Name().c_str()));
    EXPECT_FALSE(Clipboard::Get().ServeUntilTakenOver(50)) << "the time passed first";
    std::thread other([&] {
        RunCommand("echo text | DISPLAY=" + server->Name() +
                   " xclip -selection clipboard -i -loops 0 > /dev/null 2>&1");
    });
    EXPECT_TRUE(Clipboard::Get().ServeUntilTakenOver(20000));
    other.join();
    EXPECT_FALSE(Clipboard::Get().IsOffered());
    EXPECT_EQ(Clipboard::Get().GetDIB(), (std::vector<BYTE>{7}));
}

TEST_F(ClipboardTest, ALostServerEndsTheOffer) {
    START_X_SERVER(server);
    ASSERT_TRUE(Clipboard::Get().SetPicture(Noise(20, 20), {}, server->Name().c_str()));
    server->Kill();
    EXPECT_TRUE(Clipboard::Get().ServeUntilTakenOver(5000));
    EXPECT_FALSE(Clipboard::Get().IsOffered());
}

}  // namespace
}  // namespace varnel::test
