// Rows of pixels between the depths that bitmaps have, always by way of 32 bits.
//
// The 32-bit form is the one of a 32-bit Bitmap: bytes blue, green, red, 255. Counts are pixels.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "varnel/platform/pixels.h"

namespace varnel::detail {

/// An 8-bit component as one of `levels` + 1 equally spaced steps, and back.
constexpr unsigned ToLevel(unsigned component, unsigned levels) {
    return (component * levels + 127) / 255;
}
constexpr unsigned FromLevel(unsigned level, unsigned levels) {
    return (level * 255 + levels / 2) / levels;
}

/// The index of a colour in the 3-3-2 layout: red in bits 0-2, green in 3-5, blue in 6-7.
constexpr BYTE Index332(unsigned red, unsigned green, unsigned blue) {
    return static_cast<BYTE>(ToLevel(red, 7) | ToLevel(green, 7) << 3 | ToLevel(blue, 3) << 6);
}

/// The colours of the 3-3-2 layout.
std::array<RGBQUAD, kColorTableSize> ColorTable332();

/// `count` pixels of a bitmap from (x, y), y counted from the top, as 32-bit pixels. All of them
/// must lie inside the bitmap.
void UnpackRow(const Bitmap& bitmap, int x, int y, std::size_t count, BYTE* bgra);

/// 32-bit pixels in a depth of 16, 24 or 32 bits; 8 bits get the index of the 3-3-2 layout.
void PackRow(const BYTE* bgra, std::size_t count, int bitsPerPixel, BYTE* out);

/// Finds the nearest entry of a colour table, the first one where several are equally near.
class ColorMatcher {
 public:
    explicit ColorMatcher(const std::array<RGBQUAD, kColorTableSize>& table);

    BYTE Match(BYTE red, BYTE green, BYTE blue);

 private:
    struct Found {
        DWORD color = 0xFFFFFFFFu;  ///< none of the 24-bit colours
        BYTE index = 0;
    };
    static constexpr std::size_t kCacheSize = 4096;

    std::array<RGBQUAD, kColorTableSize> m_Table;
    std::vector<Found> m_Cache;
};

}  // namespace varnel::detail
