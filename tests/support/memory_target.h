// What a context draws to in tests: an in-memory window, a memory device of its depth and a bitmap
// of its size selected into it.
#pragma once

#include <memory>

#include "varnel/platform/device_context.h"
#include "varnel/platform/window.h"

namespace varnel::test {

struct MemoryTarget {
    MemoryTarget(int width, int height, int bitsPerPixel = 32)
        : window(width, height, bitsPerPixel),
          bitmap(std::make_shared<Bitmap>(width, height, bitsPerPixel)) {
        memory.CreateCompatibleDC(window.GetDC());
        memory.SelectObject(bitmap);
    }

    CWnd window;
    CDC memory;
    HBITMAP bitmap;
};

/// A colour as 0xRRGGBB.
inline unsigned Rgb(const RGBQUAD& color) {
    return color.rgbRed * 0x10000u + color.rgbGreen * 0x100u + color.rgbBlue;
}

}  // namespace varnel::test
