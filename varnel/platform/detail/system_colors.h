// The fixed system colours of palette devices, and the slots of the 3-3-2 palette that hold them.
#pragma once

#include <array>

#include "varnel/platform/device_context.h"
#include "varnel/platform/pixels.h"

namespace varnel::detail {

inline constexpr std::array<PALETTEENTRY, 20> kSystemColors = {{
    {0, 0, 0, 0},       {128, 0, 0, 0},     {0, 128, 0, 0},     {128, 128, 0, 0},
    {0, 0, 128, 0},     {128, 0, 128, 0},   {0, 128, 128, 0},   {192, 192, 192, 0},
    {192, 220, 192, 0}, {166, 202, 240, 0}, {255, 251, 240, 0}, {160, 160, 164, 0},
    {128, 128, 128, 0}, {255, 0, 0, 0},     {0, 255, 0, 0},     {255, 255, 0, 0},
    {0, 0, 255, 0},     {255, 0, 255, 0},   {0, 255, 255, 0},   {255, 255, 255, 0},
}};

/// Slot k of a 3-3-2 palette's exceptions: entry kSystemColorSlots[k] gets kSystemColors[k].
inline constexpr std::array<int, 13> kSystemColorSlots = {0,   3,   24,  27,  64,  67, 88,
                                                          173, 181, 236, 247, 164, 91};

/// Whether a pixel format is the one with 3 bits of red (lowest), 3 of green and 2 of blue.
constexpr bool Is332(const PIXELFORMATDESCRIPTOR& f) {
    return f.cColorBits == 8 && f.cRedBits == 3 && f.cRedShift == 0 && f.cGreenBits == 3 &&
           f.cGreenShift == 3 && f.cBlueBits == 2 && f.cBlueShift == 6;
}

/// Puts the system colours into their slots of a 3-3-2 palette. Slot 0 stays as it is.
inline void OverrideSystemColors(LOGPALETTE& palette) {
    for (std::size_t k = 1; k < kSystemColorSlots.size(); ++k)
        palette.palPalEntry[static_cast<std::size_t>(kSystemColorSlots[k])] = kSystemColors[k];
}

}  // namespace varnel::detail
