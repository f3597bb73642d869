// COpenGL: the palette of an 8-bit target.
#include <algorithm>
#include <iterator>

#include "varnel/foundation/detail/raise.h"
#include "varnel/render/opengl.h"

namespace varnel {
namespace {

/// Three bits of red and green and two of blue, red lowest: the layout in which some palette slots
/// are the system's fixed colours.
bool Is332(const PIXELFORMATDESCRIPTOR& f) {
    return f.cColorBits == 8 && f.cRedBits == 3 && f.cRedShift == 0 && f.cGreenBits == 3 &&
           f.cGreenShift == 3 && f.cBlueBits == 2 && f.cBlueShift == 6;
}

}  // namespace

void COpenGL::InitPaletteConstants() {
    constexpr BYTE three[8] = {0x00, 0x24, 0x49, 0x6D, 0x92, 0xB6, 0xDB, 0xFF};
    constexpr BYTE two[4] = {0x00, 0x55, 0xAA, 0xFF};
    constexpr BYTE one[2] = {0x00, 0xFF};
    constexpr int slots[13] = {0, 3, 24, 27, 64, 67, 88, 173, 181, 236, 247, 164, 91};
    constexpr PALETTEENTRY system[20] = {
        {0, 0, 0, 0},       {128, 0, 0, 0},     {0, 128, 0, 0},     {128, 128, 0, 0},
        {0, 0, 128, 0},     {128, 0, 128, 0},   {0, 128, 128, 0},   {192, 192, 192, 0},
        {192, 220, 192, 0}, {166, 202, 240, 0}, {255, 251, 240, 0}, {160, 160, 164, 0},
        {128, 128, 128, 0}, {255, 0, 0, 0},     {0, 255, 0, 0},     {255, 255, 0, 0},
        {0, 0, 255, 0},     {255, 0, 255, 0},   {0, 255, 255, 0},   {255, 255, 255, 0},
    };
    std::copy(std::begin(three), std::end(three), m_ThreeBitRamp);
    std::copy(std::begin(two), std::end(two), m_TwoBitRamp);
    std::copy(std::begin(one), std::end(one), m_OneBitRamp);
    std::copy(std::begin(slots), std::end(slots), m_DefaultOverride);
    std::copy(std::begin(system), std::end(system), m_DefaultPalEntry);
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
    if (!Is332(pfd)) return;
    for (int k = 1; k <= 12; ++k)
        pal.palPalEntry[static_cast<std::size_t>(m_DefaultOverride[k])] = m_DefaultPalEntry[k];
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
