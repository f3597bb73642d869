#include "varnel/platform/detail/pixel_rows.h"

#include <bit>
#include <cstdint>
#include <cstring>

namespace varnel::detail {
namespace {

void PutPixel(BYTE* bgra, unsigned blue, unsigned green, unsigned red) {
    bgra[0] = static_cast<BYTE>(blue);
    bgra[1] = static_cast<BYTE>(green);
    bgra[2] = static_cast<BYTE>(red);
    bgra[3] = 255;
}

void Unpack16(const BYTE* row, std::size_t count, BYTE* bgra) {
    for (std::size_t i = 0; i < count; ++i) {
        const unsigned pixel = row[2 * i] | static_cast<unsigned>(row[2 * i + 1]) << 8;
        PutPixel(bgra + 4 * i, FromLevel(pixel & 31, 31), FromLevel(pixel >> 5 & 31, 31),
                 FromLevel(pixel >> 10 & 31, 31));
    }
}

void Pack16(const BYTE* bgra, std::size_t count, BYTE* out) {
    for (std::size_t i = 0; i < count; ++i, bgra += 4) {
        const unsigned pixel =
            ToLevel(bgra[0], 31) | ToLevel(bgra[1], 31) << 5 | ToLevel(bgra[2], 31) << 10;
        out[2 * i] = static_cast<BYTE>(pixel);
        out[2 * i + 1] = static_cast<BYTE>(pixel >> 8);
    }
}

}  // namespace

std::array<RGBQUAD, kColorTableSize> ColorTable332() {
    std::array<RGBQUAD, kColorTableSize> table;
    for (unsigned i = 0; i < kColorTableSize; ++i) {
        table[i] = {static_cast<BYTE>(FromLevel(i >> 6, 3)),
                    static_cast<BYTE>(FromLevel(i >> 3 & 7, 7)),
                    static_cast<BYTE>(FromLevel(i & 7, 7)), 0};
    }
    return table;
}

void UnpackRow(const Bitmap& bitmap, int x, int y, std::size_t count, BYTE* bgra) {
    const auto bytes = static_cast<std::size_t>(bitmap.BitsPerPixel() / 8);
    const BYTE* row = bitmap.RowFromTop(y) + static_cast<std::size_t>(x) * bytes;
    switch (bitmap.BitsPerPixel()) {
        case 8:
            for (std::size_t i = 0; i < count; ++i) {
                const RGBQUAD& color = bitmap.ColorTable[row[i]];
                PutPixel(bgra + 4 * i, color.rgbBlue, color.rgbGreen, color.rgbRed);
            }
            break;
        case 16:
            Unpack16(row, count, bgra);
            break;
        case 24:
            for (std::size_t i = 0; i < count; ++i, row += 3)
                PutPixel(bgra + 4 * i, row[0], row[1], row[2]);
            break;
        default:
            for (std::size_t i = 0; i < count; ++i) {
                std::uint32_t pixel;  // four bytes at a time
                std::memcpy(&pixel, row + 4 * i, 4);
                pixel |= std::bit_cast<std::uint32_t>(std::array<BYTE, 4>{0, 0, 0, 255});
                std::memcpy(bgra + 4 * i, &pixel, 4);
            }
    }
}

void PackRow(const BYTE* bgra, std::size_t count, int bitsPerPixel, BYTE* out) {
    switch (bitsPerPixel) {
        case 8:
            for (std::size_t i = 0; i < count; ++i, bgra += 4)
                out[i] = Index332(bgra[2], bgra[1], bgra[0]);
            break;
        case 16:
            Pack16(bgra, count, out);
            break;
        case 24:
            for (std::size_t i = 0; i < count; ++i)
                std::memcpy(out + 3 * i, bgra + 4 * i, 3);
            break;
        default:
            std::memcpy(out, bgra, 4 * count);
    }
}

ColorMatcher::ColorMatcher(const std::array<RGBQUAD, kColorTableSize>& table)
    : m_Table(table), m_Cache(kCacheSize) {
}

BYTE ColorMatcher::Match(BYTE red, BYTE green, BYTE blue) {
    const DWORD color = red | static_cast<DWORD>(green) << 8 | static_cast<DWORD>(blue) << 16;
    // The multiplier spreads neighbouring colours over the cache (Knuth's multiplicative hashing).
    Found& found = m_Cache[(color * 2654435761u) >> 20];
    if (found.color == color) return found.index;

    int best = 3 * 256 * 256;
    for (std::size_t i = 0; i < m_Table.size(); ++i) {
        const int dr = m_Table[i].rgbRed - red;
        const int dg = m_Table[i].rgbGreen - green;
        const int db = m_Table[i].rgbBlue - blue;
        const int distance = dr * dr + dg * dg + db * db;
        if (distance >= best) continue;
        best = distance;
        found.index = static_cast<BYTE>(i);
    }
    found.color = color;
    return found.index;
}

}  // namespace varnel::detail
