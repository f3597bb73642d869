#include "varnel/platform/pixels.h"

#include <cstdlib>
#include <limits>
#include <new>

#include "varnel/platform/detail/pixel_rows.h"

namespace varnel {
namespace {

bool IsDepth(int bitsPerPixel) {
    return bitsPerPixel == 8 || bitsPerPixel == 16 || bitsPerPixel == 24 || bitsPerPixel == 32;
}

}  // namespace

Bitmap::Bitmap(int width, int height, int bitsPerPixel)
    : m_Width(width), m_Height(height), m_BitsPerPixel(bitsPerPixel) {
    if (width <= 0 || height <= 0 || !IsDepth(bitsPerPixel)) throw std::bad_alloc();
    m_Stride = RowStride(width, bitsPerPixel);
    const auto rows = static_cast<std::size_t>(height);
    constexpr auto kMost = static_cast<std::size_t>(std::numeric_limits<std::ptrdiff_t>::max());
    if (m_Stride > kMost / rows) throw std::bad_alloc();
    // Zeroed by the system, page by page as they are used: a window that nothing is drawn to takes
    // no memory.
    m_Bits.reset(static_cast<BYTE*>(std::calloc(rows, m_Stride)));
    if (!m_Bits) throw std::bad_alloc();
}

void Bitmap::Free::operator()(BYTE* bytes) const {
    std::free(bytes);
}

const BYTE* Bitmap::RowFromTop(int y) const {
    return m_Bits.get() + static_cast<std::size_t>(m_Height - 1 - y) * m_Stride;
}

BYTE* Bitmap::RowFromTop(int y) {
    return m_Bits.get() + static_cast<std::size_t>(m_Height - 1 - y) * m_Stride;
}

RGBQUAD Bitmap::PixelFromTop(int x, int y) const {
    if (x < 0 || y < 0 || x >= m_Width || y >= m_Height) return {};
    BYTE bgra[4];
    detail::UnpackRow(*this, x, y, 1, bgra);
    return {bgra[0], bgra[1], bgra[2], 0};
}

}  // namespace varnel
