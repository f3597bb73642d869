// Pixel memory and palettes: the bitmaps that device contexts draw to, and their descriptions.
//
// Rows of a Bitmap stand bottom-up in memory, each padded to a multiple of 4 bytes. A pixel is, by
// depth: 8 bits, an index into the colour table; 16 bits, 5-5-5 with blue in the low bits and the
// top bit 0; 24 bits, bytes blue, green, red; 32 bits, bytes blue, green, red, 255.
#pragma once

#include <array>
#include <cstddef>
#include <memory>

#include "varnel/foundation/export.h"
#include "varnel/foundation/types.h"

namespace varnel {

/// One entry of a bitmap's colour table, in file order.
struct RGBQUAD {
    BYTE rgbBlue = 0;
    BYTE rgbGreen = 0;
    BYTE rgbRed = 0;
    BYTE rgbReserved = 0;
};

/// One entry of a logical palette.
struct PALETTEENTRY {
    BYTE peRed = 0;
    BYTE peGreen = 0;
    BYTE peBlue = 0;
    BYTE peFlags = 0;
};

/// A palette's description; only 8-bit devices have palettes, so 256 entries are the most.
struct LOGPALETTE {
    WORD palVersion = 0x300;
    WORD palNumEntries = 0;
    std::array<PALETTEENTRY, 256> palPalEntry{};
};

/// A palette that device contexts can select; shared by all that hold it. It stands for palette
/// classes too (CPalette*): pass the handle itself.
using HPALETTE = std::shared_ptr<const LOGPALETTE>;

/// Describes a bitmap in files and on the clipboard; 40 bytes, little-endian there.
struct BITMAPINFOHEADER {
    DWORD biSize = 0;
    LONG biWidth = 0;
    LONG biHeight = 0;  ///< positive: rows bottom-up
    WORD biPlanes = 0;
    WORD biBitCount = 0;
    DWORD biCompression = 0;
    DWORD biSizeImage = 0;
    LONG biXPelsPerMeter = 0;
    LONG biYPelsPerMeter = 0;
    DWORD biClrUsed = 0;
    DWORD biClrImportant = 0;
};
static_assert(sizeof(BITMAPINFOHEADER) == 40);

inline constexpr DWORD BI_RGB = 0;
inline constexpr int kColorTableSize = 256;

/// A bitmap's description: its header and its colour table, of which biClrUsed entries count.
struct BITMAPINFO {
    BITMAPINFOHEADER bmiHeader;
    std::array<RGBQUAD, kColorTableSize> bmiColors{};
};

/// Bytes of one row of `width` pixels of `bitsPerPixel`, padded to a multiple of 4.
constexpr std::size_t RowStride(int width, int bitsPerPixel) {
    return (static_cast<std::size_t>(width) * static_cast<std::size_t>(bitsPerPixel) + 31) / 32 * 4;
}

/// A rectangle of pixels with its colour table.
class VARNEL_API Bitmap {
 public:
    /// Zeroed pixels. width and height must be positive and bitsPerPixel 8, 16, 24 or 32; throws
    /// std::bad_alloc when the memory cannot be had or the arguments describe no bitmap.
    Bitmap(int width, int height, int bitsPerPixel);

    int Width() const { return m_Width; }
    int Height() const { return m_Height; }
    int BitsPerPixel() const { return m_BitsPerPixel; }
    std::size_t Stride() const { return m_Stride; }

    /// Stride() * Height() bytes, the lowest row first.
    BYTE* Bits() { return m_Bits.get(); }
    const BYTE* Bits() const { return m_Bits.get(); }

    /// The row `y` pixels below the top edge.
    const BYTE* RowFromTop(int y) const;
    BYTE* RowFromTop(int y);

    /// The colour of the pixel at (x, y), y counted from the top, in 8-bit components; through the
    /// colour table for 8-bit pixels. Coordinates outside the bitmap give black.
    RGBQUAD PixelFromTop(int x, int y) const;

    std::array<RGBQUAD, kColorTableSize> ColorTable{};

 private:
    int m_Width;
    int m_Height;
    int m_BitsPerPixel;
    std::size_t m_Stride;
    struct Free {
        void operator()(BYTE* bytes) const;
    };
    std::unique_ptr<BYTE[], Free> m_Bits;
};

/// A bitmap that device contexts can select; shared by all that hold it.
using HBITMAP = std::shared_ptr<Bitmap>;

}  // namespace varnel
