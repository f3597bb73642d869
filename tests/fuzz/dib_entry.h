// What the fuzzer and the tests do with the bytes of a hostile bitmap file.
#pragma once

#include <cstdlib>

#include "tests/fuzz/memory_path.h"
#include "varnel/bitmap/dib.h"
#include "varnel/foundation/error.h"
#include "varnel/foundation/types.h"
#include "varnel/platform/window.h"

namespace varnel::test {

/// Whether what a picture says about itself fits together.
inline bool IsConsistent(const CDib& dib) {
    const Bitmap* const bitmap = dib.GetBitmap();
    if (bitmap == nullptr)
        return dib.GetDibInfoPtr() == nullptr && dib.GetDibWidth() == 0 &&
               dib.GetDibHeight() == 0 && dib.GetDibNumColors() == 0;
    return dib.GetDibInfoPtr() != nullptr && bitmap->Width() == dib.GetDibWidth() &&
           bitmap->Height() == std::abs(dib.GetDibHeight());
}

/// Loads, paints and stretches the picture that the bytes are. False when a result makes no sense;
/// errors of the library are none.
inline bool UseDib(const BYTE* bytes, std::size_t size) {
    const MemoryPath file(bytes, size);
    static CWnd window(48, 32);
    try {
        CDib dib(file.Path().c_str());
        if (!IsConsistent(dib)) return false;
        const HPALETTE palette = dib.CreateDibPalette();
        const BYTE* const texels = dib.TranslateDIBToOGL(palette, 64);
        const std::size_t count = std::size_t{dib.GetTextureWidth()} * dib.GetTextureHeight();
        if (count < 4 || count > 64 * 64) return false;
        for (std::size_t i = 0; i < count; ++i)
            if (texels[4 * i + 3] != 255) return false;
        const RECT target{-5, -5, 60, 40};
        const RECT source{0, 0, dib.GetDibWidth(), std::abs(dib.GetDibHeight())};
        dib.PaintDIB(window.GetDC(), &target, &source, palette);
    } catch (const CErr3D& error) {
        return error.m_ErrorClass == ERR3DCLASS_DIB && error.m_ErrorType == ERR3D_MEM_ALLOC;
    }
    return true;
}

}  // namespace varnel::test
