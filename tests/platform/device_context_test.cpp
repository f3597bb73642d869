#include "varnel/platform/device_context.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <limits>

#include "tests/support/memory_target.h"
#include "varnel/platform/window.h"

namespace varnel::test {
namespace {

/// A bitmap in which every pixel's colour tells where it is, as far as its depth allows.
void FillWithPositions(Bitmap& bitmap) {
    const auto bytes = static_cast<std::size_t>(bitmap.BitsPerPixel() / 8);
    for (int y = 0; y < bitmap.Height(); ++y) {
        for (int x = 0; x < bitmap.Width(); ++x) {
            BYTE* at = bitmap.RowFromTop(y) + static_cast<std::size_t>(x) * bytes;
            at[0] = static_cast<BYTE>(10 * y + x + 1);
        }
    }
}

unsigned At(const Bitmap& bitmap, int x, int y) {
    return Rgb(bitmap.PixelFromTop(x, y));
}

TEST(CDC, IsNothingWithoutADevice) {
    CDC none;
    CDC memory;
    EXPECT_FALSE(memory.CreateCompatibleDC(nullptr));
    EXPECT_FALSE(memory.CreateCompatibleDC(&none));
    EXPECT_EQ(none.GetDeviceCaps(HORZRES), 0);
    EXPECT_EQ(none.SelectObject(std::make_shared<Bitmap>(1, 1, 8)), nullptr);
    EXPECT_EQ(none.GetBitmap(), nullptr);
    EXPECT_EQ(none.SelectPalette(nullptr, 0), nullptr);
    EXPECT_EQ(none.RealizePalette(), 0u);
    EXPECT_FALSE(none.SetPixelFormat(1));
    EXPECT_EQ(none.GetPixelFormat(), 0);
    MemoryTarget target(2, 2);
    EXPECT_FALSE(none.BitBlt(0, 0, 1, 1, target.memory, 0, 0));
    EXPECT_FALSE(target.memory.BitBlt(0, 0, 1, 1, none, 0, 0));
    EXPECT_FALSE(none.StretchDIBits({0, 0, 1, 1}, *target.bitmap, {0, 0, 1, 1}));
}

TEST(CDC, MemoryDevicesTakeOverCapabilitiesAndOutliveTheirReference) {
    CDC memory;
    {
        CWnd window(30, 20, 24);
        ASSERT_TRUE(memory.CreateCompatibleDC(window.GetDC()));
        EXPECT_EQ(window.GetDC()->SelectObject(std::make_shared<Bitmap>(1, 1, 8)), nullptr);
        EXPECT_EQ(window.GetDC()->GetBitmap(), nullptr) << "windows take no bitmaps";
    }
    EXPECT_EQ(memory.GetDeviceCaps(HORZRES), 30);
    EXPECT_EQ(memory.GetDeviceCaps(VERTRES), 20);
    EXPECT_EQ(memory.GetDeviceCaps(BITSPIXEL), 24);
    EXPECT_EQ(memory.GetDeviceCaps(PLANES), 1);
    EXPECT_EQ(memory.GetDeviceCaps(LOGPIXELSX), 96);
    EXPECT_EQ(memory.GetDeviceCaps(4711), 0);

    const auto first = std::make_shared<Bitmap>(1, 1, 24);
    EXPECT_EQ(memory.SelectObject(first), nullptr);
    const CDC copy = memory;
    EXPECT_EQ(memory.SelectObject(nullptr), first);
    EXPECT_EQ(copy.GetBitmap(), nullptr) << "copies are one device";
}

TEST(CDC, BitBltCutsToBothSides) {
    MemoryTarget from(4, 3);
    FillWithPositions(*from.bitmap);
    struct Case {
        int x, y, width, height, sourceX, sourceY;
        RECT changed;
    };
    constexpr int kMost = std::numeric_limits<int>::max();
    for (const Case& c :
         {Case{1, 1, 2, 2, 0, 0, {1, 1, 3, 3}}, Case{-1, -2, 4, 3, 0, 0, {0, 0, 3, 1}},
          Case{0, 0, 9, 9, -2, -1, {2, 1, 5, 4}}, Case{3, 2, 4, 3, 1, 1, {3, 2, 5, 4}},
          Case{0, 0, kMost, kMost, 2, 2, {0, 0, 2, 1}}, Case{kMost, 0, kMost, 1, 0, 0, {}},
          Case{0, 0, -1, 2, 0, 0, {}}, Case{0, 0, 2, 2, -kMost, 0, {}}}) {
        CWnd window(5, 4);
        EXPECT_TRUE(
            window.GetDC()->BitBlt(c.x, c.y, c.width, c.height, from.memory, c.sourceX, c.sourceY));
        for (int y = 0; y < 4; ++y) {
            for (int x = 0; x < 5; ++x) {
                const bool inside = x >= c.changed.left && x < c.changed.right &&
                                    y >= c.changed.top && y < c.changed.bottom;
                const unsigned expected =
                    inside ? At(*from.bitmap, c.sourceX + x - c.x, c.sourceY + y - c.y) : 0;
                EXPECT_EQ(At(*window.GetPixels(), x, y), expected) << x << ", " << y;
            }
        }
    }
}

TEST(CDC, BitBltInsideOneBitmapReadsBeforeItWrites) {
    for (const int step : {1, -1}) {
        MemoryTarget target(4, 4);
        FillWithPositions(*target.bitmap);
        const MemoryTarget unchanged(4, 4);
        FillWithPositions(*unchanged.bitmap);
        target.memory.BitBlt(step, step, 4, 4, target.memory, 0, 0);
        for (int y = std::max(step, 0); y < std::min(4 + step, 4); ++y)
            for (int x = std::max(step, 0); x < std::min(4 + step, 4); ++x)
                EXPECT_EQ(At(*target.bitmap, x, y), At(*unchanged.bitmap, x - step, y - step));
    }
}

TEST(CDC, BitBltConvertsBetweenDepths) {
    MemoryTarget source(2, 1, 32);
    const BYTE pixels[] = {0, 255, 0, 255, 255, 0, 255, 255};
    std::copy(std::begin(pixels), std::end(pixels), source.bitmap->Bits());
    for (const int first : {8, 16, 24, 32}) {
        MemoryTarget middle(2, 1, first);
        middle.bitmap->ColorTable[40] = {0, 250, 5, 0};
        middle.bitmap->ColorTable[41] = {250, 0, 250, 0};
        for (const int second : {8, 16, 24, 32}) {
            CWnd window(2, 1, second);
            middle.memory.BitBlt(0, 0, 2, 1, source.memory, 0, 0);
            window.GetDC()->BitBlt(0, 0, 2, 1, middle.memory, 0, 0);
            const auto near = [&](int x, int red, int green, int blue) {
                const RGBQUAD got = window.GetPixels()->PixelFromTop(x, 0);
                return std::abs(got.rgbRed - red) < 12 && std::abs(got.rgbGreen - green) < 12 &&
                       std::abs(got.rgbBlue - blue) < 12;
            };
            EXPECT_TRUE(near(0, 0, 255, 0)) << first << " to " << second;
            EXPECT_TRUE(near(1, 255, 0, 255)) << first << " to " << second;
        }
        if (first == 8) {
            EXPECT_EQ(middle.bitmap->Bits()[0], 40) << "the nearest colour of its table";
        }
    }
}

TEST(CDC, StretchTakesTheNearestPixelAndCutsToTheDevice) {
    CWnd window(6, 4);
    Bitmap bitmap(3, 2, 32);
    FillWithPositions(bitmap);
    ASSERT_TRUE(window.GetDC()->StretchDIBits({0, 0, 6, 4}, bitmap, {0, 0, 3, 2}));
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 6; ++x)
            EXPECT_EQ(At(*window.GetPixels(), x, y), At(bitmap, x / 2, y / 2));
    // Two thirds of the width, from the middle of the source, far beyond the device.
    ASSERT_TRUE(window.GetDC()->StretchDIBits({-1000000, 0, 2000000, 1}, bitmap, {1, 1, 3, 2}));
    EXPECT_EQ(At(*window.GetPixels(), 0, 0), At(bitmap, 1, 1));
    EXPECT_EQ(At(*window.GetPixels(), 0, 1), At(bitmap, 0, 0));
    EXPECT_FALSE(window.GetDC()->StretchDIBits({4, 0, 0, 4}, bitmap, {0, 0, 3, 2}));
    EXPECT_FALSE(window.GetDC()->StretchDIBits({0, 0, 6, 4}, bitmap, {0, 0, 4, 2}));
    EXPECT_TRUE(window.GetDC()->StretchDIBits({10, 10, 20, 20}, bitmap, {0, 0, 3, 2}));
}

TEST(CDC, PixelFormats) {
    MemoryTarget target(1, 1);
    PIXELFORMATDESCRIPTOR wanted;
    for (const int bits : {8, 16, 24, 32}) {
        wanted.cColorBits = static_cast<BYTE>(bits);
        PIXELFORMATDESCRIPTOR got;
        ASSERT_TRUE(CDC::DescribePixelFormat(CDC::ChoosePixelFormat(wanted), &got));
        EXPECT_EQ(got.cColorBits, bits);
        EXPECT_EQ(got.cDepthBits, 32);
        EXPECT_EQ((got.dwFlags & PFD_NEED_PALETTE) != 0, bits == 8);
        const auto mask = [](BYTE size, BYTE shift) { return ((1u << size) - 1) << shift; };
        EXPECT_EQ(mask(got.cRedBits, got.cRedShift), bits == 8    ? 7u
                                                     : bits == 16 ? 0x7C00u
                                                                  : 0xFF0000u);
        EXPECT_EQ(mask(got.cGreenBits, got.cGreenShift), bits == 8    ? 0x38u
                                                         : bits == 16 ? 0x3E0u
                                                                      : 0xFF00u);
        EXPECT_EQ(mask(got.cBlueBits, got.cBlueShift), bits == 8    ? 0xC0u
                                                       : bits == 16 ? 0x1Fu
                                                                    : 0xFFu);
    }
    wanted.cColorBits = 4;
    EXPECT_EQ(CDC::ChoosePixelFormat(wanted), 0);
    EXPECT_FALSE(CDC::DescribePixelFormat(0, &wanted));
    EXPECT_FALSE(CDC::DescribePixelFormat(5, &wanted));
    EXPECT_FALSE(target.memory.SetPixelFormat(0));
    EXPECT_TRUE(target.memory.SetPixelFormat(4));
    EXPECT_TRUE(target.memory.SetPixelFormat(4));
    EXPECT_FALSE(target.memory.SetPixelFormat(1));
    EXPECT_EQ(target.memory.GetPixelFormat(), 4);
}

TEST(CDC, ColorTablesBelongToBitmapsOf8Bits) {
    MemoryTarget target(1, 1, 8);
    const RGBQUAD colors[] = {{1, 2, 3, 0}, {4, 5, 6, 0}};
    EXPECT_EQ(target.memory.SetDIBColorTable(255, 2, colors), 1u);
    EXPECT_EQ(target.memory.SetDIBColorTable(256, 2, colors), 0u);
    RGBQUAD got[2] = {};
    EXPECT_EQ(target.memory.GetDIBColorTable(255, 4000000000u, got), 1u);
    EXPECT_EQ(Rgb(got[0]), 0x030201u);
    MemoryTarget deep(1, 1, 24);
    EXPECT_EQ(deep.memory.SetDIBColorTable(0, 2, colors), 0u);
    EXPECT_EQ(deep.memory.GetDIBColorTable(0, 2, got), 0u);
}

TEST(CDC, PalettesAreMappedOntoWindowsOf8Bits) {
    CWnd window(1, 1, 8);
    EXPECT_EQ(Rgb(window.GetPixels()->ColorTable[7]), 0xFF0000u);
    const auto palette = std::make_shared<LOGPALETTE>();
    palette->palNumEntries = 1;
    palette->palPalEntry[0] = {1, 2, 3, 0};
    EXPECT_EQ(window.GetDC()->SelectPalette(palette, 0), nullptr);
    EXPECT_EQ(Rgb(window.GetPixels()->ColorTable[0]), 0u) << "not yet realized";
    EXPECT_EQ(window.GetDC()->RealizePalette(), 1u);
    EXPECT_EQ(Rgb(window.GetPixels()->ColorTable[0]), 0x010203u);
    EXPECT_EQ(Rgb(window.GetPixels()->ColorTable[7]), 0xFF0000u);
    EXPECT_EQ(window.GetDC()->SelectPalette(nullptr, 0), palette);
}

TEST(CWnd, InMemory) {
    CWnd window;
    RECT rect{1, 2, 3, 4};
    window.GetClientRect(&rect);
    EXPECT_EQ(rect.right, 0);
    EXPECT_EQ(window.GetSafeHwnd(), nullptr);
    EXPECT_EQ(window.GetDC(), nullptr);
    EXPECT_EQ(window.GetPixels(), nullptr);
    EXPECT_FALSE(window.CreateInMemory(0, 5));
    EXPECT_FALSE(window.CreateInMemory(5, 5, 15));
    ASSERT_TRUE(window.CreateInMemory(5, 6, 16));
    EXPECT_FALSE(window.CreateInMemory(5, 6, 16));
    window.GetClientRect(&rect);
    EXPECT_EQ(rect.right, 5);
    EXPECT_EQ(rect.bottom, 6);
    EXPECT_EQ(window.GetDC(), window.GetDC());
}

}  // namespace
}  // namespace varnel::test
