// CDib: the picture of a bitmap file (.bmp), to be painted or to become an OpenGL texture.
//
// Read are 1, 4, 8, 16, 24 and 32 bits per pixel, bottom-up and top-down, uncompressed, run-length
// encoded or with bit fields, under headers from OS/2's to V5; alpha is not used. Unless told
// otherwise, the pixels are taken to start right after the colour table, wherever the file header
// puts them; DIB_USE_OFFSET reads files with a gap there, as some programs and SaveDIB at 16 to 32
// bits write them. A file that is no such picture, or of which a part is missing, shows "Not a
// bitmap file" and leaves the object empty.
#pragma once

#include <memory>

#include "varnel/foundation/export.h"
#include "varnel/foundation/file.h"
#include "varnel/foundation/types.h"
#include "varnel/platform/device_context.h"
#include "varnel/platform/pixels.h"

namespace varnel {

/// Where the pixels of a bitmap file are looked for.
enum DibOffset : int {
    DIB_IGNORE_OFFSET = 0,  ///< right after the colour table
    DIB_USE_OFFSET = 1,     ///< where the file header says
};

class VARNEL_API CDib {
 public:
    static constexpr int kSignature = 909;

    /// Textures have at most this many texels in a row or column; larger pictures are scaled down.
    static constexpr unsigned int kMaxTextureSide = 8192;

    /// An empty picture.
    CDib() = default;
    /// The picture in a file. Raises "Error Opening File for Input" when the file cannot be opened,
    /// "Disk I/O Error" when it cannot be read and "Mem Alloc Error" when there is no memory for
    /// the picture or it takes more than 1 GiB, each as "LoadBitmapFile".
    explicit CDib(const char* path);
    /// The same, with a choice of where the pixels are.
    CDib(const char* path, DibOffset offset);
    /// The picture in an open file, with the same errors.
    explicit CDib(File& file, DibOffset offset = DIB_IGNORE_OFFSET);
    ~CDib();
    CDib(const CDib&) = delete;
    CDib& operator=(const CDib&) = delete;

    int GetSignature() const { return m_Magic; }

    /// Width in pixels; 0 when empty.
    int GetDibWidth() const;
    /// Height in pixels, negative when the file stores the upper row first; 0 when empty.
    int GetDibHeight() const;
    /// The size that the header states, or else the number of pixels (not of bytes).
    DWORD GetDibSizeImage() const;
    /// The number of entries of the file's colour table; 0 when it has none.
    DWORD GetDibNumColors() const;
    /// The header, in its 40-byte form, and the first 256 entries of the colour table; null when
    /// empty. Lives as long as this object, which reads its size from it.
    BITMAPINFO* GetDibInfoPtr() const { return m_lpbmih; }
    /// The decoded pixels, 8 or 24 bits each; null when empty. Lives as long as this object.
    const Bitmap* GetBitmap() const { return m_lpDIB.get(); }

    /// Builds a palette of the colour table's entries, at most 256, and returns it; null when there
    /// is no colour table. Raises "Mem Alloc Error".
    HPALETTE CreateDibPalette();
    /// The palette that CreateDibPalette built last.
    HPALETTE GetDibPalette() const { return m_Palette; }

    /// Paints the part `src` of the picture, in pixels from its upper left corner, onto `dst`,
    /// repeating or leaving out pixels where the sizes differ; with a palette, if given, realised
    /// on the device meanwhile. Returns the number of rows of the picture, 0 when nothing was
    /// painted.
    int PaintDIB(CDC* dc, const RECT* dst, const RECT* src, const HPALETTE& palette);
    int PaintDIB(HDC hdc, const RECT* dst, const RECT* src, const HPALETTE& palette);

    /// Makes a texture of the picture: opaque RGBA texels, the lowest row first, with the picture
    /// stretched to sides that are powers of two, of at most `maxSide` (at least 2) texels. Texel i
    /// of n, counted from the left or the top, has the colour of the pixel under its centre, number
    /// floor((i + 1/2) * size / n). An empty picture gives 2 x 2 black texels. A palette changes
    /// nothing, since texels are no indices. The texels live until the next call; raises "Array New
    /// Error" without memory for them, and then the texture made before is kept.
    BYTE* TranslateDIBToOGL(const HPALETTE& palette, unsigned int maxSide = kMaxTextureSide);
    /// The texels of the last TranslateDIBToOGL, null before it, and their number in a row and in a
    /// column, 0 before it.
    BYTE* GetTextureBits() const { return m_pTextureBits.get(); }
    unsigned int GetTextureWidth() const { return m_TextureWidth; }
    unsigned int GetTextureHeight() const { return m_TextureHeight; }

 protected:
    /// Loads the picture of a file, see the constructor.
    void LoadBitmapFile(const char* path, DibOffset offset = DIB_IGNORE_OFFSET);

    /// The smallest power of two that is not below n and at least 2; 2^30 for larger n.
    static int RoundSizeUp(int n);

 private:
    void Load(File& file, DibOffset offset);
    void ReadBitmap(File& file, DibOffset offset);
    void SetInfo(const BITMAPINFOHEADER& header);

    std::unique_ptr<Bitmap> m_lpDIB;
    BITMAPINFO m_Info = {};
    BITMAPINFO* m_lpbmih = nullptr;  // m_Info, or null when empty
    std::unique_ptr<BYTE[]> m_pTextureBits;
    HPALETTE m_Palette = nullptr;
    unsigned int m_TextureWidth = 0;
    unsigned int m_TextureHeight = 0;
    int m_Magic = kSignature;
};

}  // namespace varnel
