// COpenGL: the palette of an 8-bit target.
#include <algorithm>
#include <iterator>

#include "varnel/foundation/detail/raise.h"
#include "varnel/platform/detail/system_colors.h"
#include "varnel/render/opengl.h"

namespace varnel {

void COpenGL::InitPaletteConstants() {
    constexpr BYTE three[8] = {0x00, 0x24, 0x49, 0x6D, 0x92, 0xB6, 0xDB, 0xFF};
    constexpr BYTE two[4] = {0x00, 0x55, 0xAA, 0xFF};
    constexpr BYTE one[2] = {0x00, 0xFF};
    std::copy(std::begin(three), std::end(three), m_ThreeBitRamp);
    std::copy(std::begin(two), std::end(two), m_TwoBitRamp);
    std::copy(std::begin(one), std::end(one), m_OneBitRamp);
}

BYTE COpenGL::ComponentFromIndex(int index, unsigned bits, unsigned shift) const {
    if (shift > 31) return 0;
    const unsigned value = static_cast<unsigned>(index) >> shift;
    switch (bits) {
        case 1:
            return m_OneBitRamp[value & 1U];
        case 2:
            return m_TwoBitRamp[value & 3U];
        case 3:
            return m_ThreeBitRamp[value & 7U];
        default:
            return 0;
    }
}

void COpenGL::FillLogPalette(const PIXELFORMATDESCRIPTOR& pfd, LOGPALETTE& pal, int n) const {
    const int count = std::clamp(n, 0, static_cast<int>(pal.palPalEntry.size()));
    pal.palVersion = 0x300;
    pal.palNumEntries = static_cast<WORD>(count);
    for (int i = 0; i < count; ++i)
        pal.palPalEntry[static_cast<std::size_t>(i)] = {
            ComponentFromIndex(i, pfd.cRedBits, pfd.cRedShift),
            ComponentFromIndex(i, pfd.cGreenBits, pfd.cGreenShift),
            ComponentFromIndex(i, pfd.cBlueBits, pfd.cBlueShift), 0};
    if (detail::Is332(pfd)) detail::OverrideSystemColors(pal);
}

void COpenGL::CreateLogPalette(const PIXELFORMATDESCRIPTOR* pfd, LOGPALETTE* pal, int n) const {
    if (pfd != nullptr && pal != nullptr) FillLogPalette(*pfd, *pal, n);
}

void COpenGL::CreateRGBPalette() {
    PIXELFORMATDESCRIPTOR format;
    if (CDC::DescribePixelFormat(m_pClientDC->GetPixelFormat(), &format) == 0) return;
    if ((format.dwFlags & PFD_NEED_PALETTE) == 0) return;
    auto palette = detail::AllocateOrRaise(ERR3D_ARRAY_NEW, {ERR3DCLASS_OPENGL, "CreateRGBPalette"},
                                           [] { return std::make_shared<LOGPALETTE>(); });
    FillLogPalette(format, *palette, 1 << format.cColorBits);
    m_Palette = palette;
    m_pClientDC->SelectPalette(m_Palette, 0);
    m_pClientDC->RealizePalette();
}

}  // namespace varnel
