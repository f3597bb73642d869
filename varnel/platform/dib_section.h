// CDIBSection: the off-screen image that a view is drawn to, and its ways out.
//
// The image has the depth of the screen it was made for. Its rows stand bottom-up in memory, the
// origin of its pixels in OpenGL's sense is the lower left corner. On an 8-bit screen it has a
// colour table and brings a palette of the same 256 colours.
#pragma once

#include <cstdint>
#include <vector>

#include "varnel/foundation/export.h"
#include "varnel/foundation/types.h"
#include "varnel/platform/device_context.h"
#include "varnel/platform/pixels.h"

namespace varnel {

class VARNEL_API CDIBSection {
 public:
    /// As CreateCDIBSection.
    CDIBSection(CDC* pScreenDC, CDC* pMemDC, int width, int height, int reserved);
    /// Selects the screen's own palette back.
    ~CDIBSection();

    /// A copy shares the bitmap.
    CDIBSection(const CDIBSection&) = default;
    CDIBSection& operator=(const CDIBSection&) = default;

    /// Makes a bitmap of width x height pixels in the depth of the screen. pMemDC is the memory
    /// device context that the bitmap will be selected into (not here). Both device contexts stay
    /// the caller's and must outlive this object. Without a screen device, and where there can be
    /// no such bitmap, there is none afterwards. `reserved` is not read.
    void CreateCDIBSection(CDC* pScreenDC, CDC* pMemDC, int width, int height, int reserved);

    /// The pixels, StorageWidth() * DIBHeight() bytes with the lowest row first; null when there is
    /// no bitmap. They belong to the section.
    BYTE* FindDIBBits() { return m_pBits; }

    /// The bitmap, to be selected into the memory device context; null when there is none.
    const HBITMAP& GetBitmap() const { return m_hBitmap; }

    /// The bitmap's description, null when there is no bitmap. It belongs to the section.
    BITMAPINFOHEADER* GetDIBHeader() { return m_hBitmap ? &m_BitmapInfo.bmiHeader : nullptr; }

    /// Size in pixels, 0 when there is no bitmap.
    int DIBWidth() const { return m_hBitmap ? m_BitmapInfo.bmiHeader.biWidth : 0; }
    int DIBHeight() const { return m_hBitmap ? m_BitmapInfo.bmiHeader.biHeight : 0; }

    /// Bytes of a row, padded to a multiple of 4.
    int StorageWidth() const;

    /// The number of colours that a bitmap's depth can tell apart, 2^bits; 0 for null.
    std::uint64_t DIBNumColors(const BITMAPINFOHEADER* header) const;
    /// Bytes of a colour table with all of them, deep bitmaps included; 0 for null.
    std::uint64_t PaletteSize(const BITMAPINFOHEADER* header) const;

    /// The 256 colours that CreateRGBPalette computed, all 0 before.
    RGBQUAD* GetCDIBColorTable() { return m_BitmapInfo.bmiColors; }
    const RGBQUAD* GetCDIBColorTable() const { return m_BitmapInfo.bmiColors; }
    HPALETTE GetDIBPalette() const { return m_hPalette; }
    CDC* GetMemCDC() const { return m_pMemCDC; }
    CDC* GetScreenCDC() const { return m_pScreenCDC; }

    /// Makes the palette the section's and its colours the selected bitmap's colour table.
    void SetCDIBColorTable(const HPALETTE& hPal);

    /// Where the memory device context's pixel format needs a palette: computes the colour table
    /// from the format, and a palette that is selected into the screen and realized. Raises
    /// "Array New Error".
    void CreateRGBPalette();

    /// The part of the page for mode 3 of PrintDIB, in fractions of the page.
    void SetNormPrintRect(const REALRECT& rect) { m_NormPrintRect = rect; }
    void GetNormPrintRect(REALRECT& rect) const { rect = m_NormPrintRect; }

    /// Scales the image onto a page. mode 1: as large as fits the page in the image's proportions;
    /// 3: the normalised print rectangle; anything else: the whole page; each less a margin.
    /// docName is not used. Raises "DIB Handle Error" without a bitmap and "Print DC Error" without
    /// a printer, or when the printer fails.
    void PrintDIB(CDC* pDC, WORD mode, const char* docName);
    void PrintDIBSection(CDC* pDC, WORD mode, const char* docName);

    /// The rectangle of PrintDIB in device pixels, a third of an inch inside the area on each side.
    /// It is empty when the area has no room for the margins.
    void CalculatePrintRect(CDC* pDC, RECT& r, WORD mode, const REALRECT& norm) const;

    /// Scales the section's image onto a rectangle of a device. header and bits are the section's
    /// own, see GetDIBHeader and FindDIBBits; pMemDC is not used. False when the device fails, an
    /// empty rectangle prints nothing.
    BOOL PrintBand(CDC* pDC, CDC* pMemDC, const RECT& r, const BITMAPINFOHEADER* header,
                   const void* bits);

    /// Writes the image as a .bmp file, always with 256 colour table entries and the pixels at
    /// offset 1078. Raises "DIB Handle Error", "Error Opening File for Output", "Disk I/O Error".
    void SaveDIB(const CString& path) const;

    /// The image as bytes for the clipboard: header, 256 colour table entries, pixels. Raises
    /// "DIB Handle Error" and "Mem Alloc Error".
    std::vector<BYTE> GetDIBSectionAsDIB() const;

 private:
    /// A bitmap's description with its colour table.
    struct BitmapInfo {
        BITMAPINFOHEADER bmiHeader;
        RGBQUAD bmiColors[kColorTableSize];
    };

    std::vector<BYTE> HeaderAndColors() const;
    std::size_t PixelBytes() const;

    BYTE* m_pBits = nullptr;
    HBITMAP m_hBitmap;
    BitmapInfo m_BitmapInfo{};
    HPALETTE m_hPalette;
    HPALETTE m_hOldPalette;
    bool m_PaletteSelected = false;  ///< whether m_hOldPalette is to be selected back
    REALRECT m_NormPrintRect;
    CDC* m_pMemCDC = nullptr;
    CDC* m_pScreenCDC = nullptr;
};

}  // namespace varnel
