#include "varnel/platform/pixels.h"

#include <gtest/gtest.h>

#include <limits>
#include <new>

#include "tests/support/memory_target.h"
#include "varnel/platform/detail/pixel_rows.h"

namespace varnel::test {
namespace {

TEST(Bitmap, RefusesWhatIsNone) {
    EXPECT_THROW(Bitmap(0, 1, 32), std::bad_alloc);
    EXPECT_THROW(Bitmap(1, -1, 32), std::bad_alloc);
    EXPECT_THROW(Bitmap(1, 1, 4), std::bad_alloc);
    constexpr int kMost = std::numeric_limits<int>::max();
    EXPECT_THROW(Bitmap(kMost, kMost, 32), std::bad_alloc);
    EXPECT_THROW(Bitmap(1 << 28, 1 << 28, 24), std::bad_alloc);
}

TEST(Bitmap, PixelFromTopKnowsEveryDepth) {
    Bitmap eight(2, 2, 8);
    eight.ColorTable[9] = {1, 2, 3, 0};
    eight.RowFromTop(0)[1] = 9;
    EXPECT_EQ(Rgb(eight.PixelFromTop(1, 0)), 0x030201u);

    Bitmap sixteen(1, 1, 16);
    sixteen.Bits()[0] = 0x1F;
    sixteen.Bits()[1] = 0x40;
    EXPECT_EQ(Rgb(sixteen.PixelFromTop(0, 0)), 0x8400FFu);

    Bitmap deep(1, 1, 24);
    deep.Bits()[2] = 7;
    EXPECT_EQ(Rgb(deep.PixelFromTop(0, 0)), 0x070000u);
    EXPECT_EQ(Rgb(deep.PixelFromTop(1, 0)), 0u);
    EXPECT_EQ(Rgb(deep.PixelFromTop(0, -1)), 0u);
}

TEST(PixelRows, EveryStorableColorComesBack) {
    const auto table = detail::ColorTable332();
    for (unsigned i = 0; i < 256; ++i)
        EXPECT_EQ(detail::Index332(table[i].rgbRed, table[i].rgbGreen, table[i].rgbBlue), i);
    EXPECT_EQ(Rgb(table[7]), 0xFF0000u);
    EXPECT_EQ(Rgb(table[0xC0]), 0x0000FFu);

    Bitmap bitmap(1, 1, 16);
    for (unsigned pixel = 0; pixel < 0x8000; ++pixel) {
        bitmap.Bits()[0] = static_cast<BYTE>(pixel);
        bitmap.Bits()[1] = static_cast<BYTE>(pixel >> 8);
        BYTE bgra[4];
        detail::UnpackRow(bitmap, 0, 0, 1, bgra);
        BYTE back[2];
        detail::PackRow(bgra, 1, 16, back);
        ASSERT_EQ(back[0] | back[1] << 8, static_cast<int>(pixel));
    }
}

TEST(ColorMatcher, FindsTheNearestWhateverWasAskedBefore) {
    const auto table = detail::ColorTable332();
    detail::ColorMatcher matcher(table);
    unsigned seed = 1;
    for (int i = 0; i < 20000; ++i) {
        seed = seed * 1664525u + 1013904223u;
        const auto red = static_cast<BYTE>(seed >> 8);
        const auto green = static_cast<BYTE>(seed >> 16);
        const auto blue = static_cast<BYTE>(seed >> 24);
        // In an evenly spaced table the nearest entry is that of each component's nearest step.
        const RGBQUAD& found = table[matcher.Match(red, green, blue)];
        ASSERT_LE(std::abs(found.rgbRed - red), 19);
        ASSERT_LE(std::abs(found.rgbGreen - green), 19);
        ASSERT_LE(std::abs(found.rgbBlue - blue), 43);
    }
}

}  // namespace
}  // namespace varnel::test
