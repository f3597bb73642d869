#include "varnel/platform/dib_section.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <new>

#include "varnel/foundation/detail/raise.h"
#include "varnel/platform/detail/system_colors.h"
#include "varnel/platform/files.h"

namespace varnel {
namespace {

using detail::Raise;

constexpr DWORD kFileHeaderSize = 14;
constexpr DWORD kInfoHeaderSize = 40;
constexpr DWORD kColorTableBytes = 4 * kColorTableSize;
constexpr DWORD kPixelOffset = kFileHeaderSize + kInfoHeaderSize + kColorTableBytes;

void Append16(std::vector<BYTE>& bytes, unsigned value) {
    bytes.push_back(static_cast<BYTE>(value));
    bytes.push_back(static_cast<BYTE>(value >> 8));
}

void Append32(std::vector<BYTE>& bytes, DWORD value) {
    Append16(bytes, value & 0xFFFF);
    Append16(bytes, value >> 16);
}

/// A product of page sizes as pixels, cut to a range in which sums of two stay integers.
int ToPixels(double value) {
    if (std::isnan(value)) return 0;
    return static_cast<int>(std::clamp(value, -1e9, 1e9));
}

BYTE Component(unsigned index, unsigned bits, unsigned shift) {
    const unsigned mask = (1u << bits) - 1;
    return mask != 0 ? static_cast<BYTE>((index >> shift & mask) * 255 / mask) : BYTE{0};
}

}  // namespace

CDIBSection::CDIBSection(CDC* pScreenDC, CDC* pMemDC, int width, int height, int reserved) {
    CreateCDIBSection(pScreenDC, pMemDC, width, height, reserved);
}

CDIBSection::~CDIBSection() {
    if (m_PaletteSelected && m_pScreenCDC != nullptr) m_pScreenCDC->SelectPalette(m_hOldPalette, 0);
}

void CDIBSection::CreateCDIBSection(CDC* pScreenDC, CDC* pMemDC, int width, int height,
                                    int /*reserved*/) {
    m_pScreenCDC = pScreenDC;
    m_pMemCDC = pMemDC;
    m_BitmapInfo = {};
    m_hBitmap.reset();
    m_pBits = nullptr;
    m_NormPrintRect = {};
    m_hPalette.reset();
    m_hOldPalette.reset();
    m_PaletteSelected = false;
    if (pScreenDC == nullptr || pScreenDC->GetSafeHdc() == nullptr) return;

    const int bits = pScreenDC->GetDeviceCaps(PLANES) * pScreenDC->GetDeviceCaps(BITSPIXEL);
    try {
        m_hBitmap = std::make_shared<Bitmap>(width, height, bits);
    } catch (const std::bad_alloc&) {
        return;
    }
    m_pBits = m_hBitmap->Bits();
    BITMAPINFOHEADER& header = m_BitmapInfo.bmiHeader;
    header.biSize = kInfoHeaderSize;
    header.biWidth = width;
    header.biHeight = height;
    header.biPlanes = 1;
    header.biBitCount = static_cast<WORD>(bits);
    header.biCompression = BI_RGB;
    header.biSizeImage = static_cast<DWORD>(PixelBytes());
}

int CDIBSection::StorageWidth() const {
    return m_hBitmap ? static_cast<int>(m_hBitmap->Stride()) : 0;
}

std::size_t CDIBSection::PixelBytes() const {
    return m_hBitmap->Stride() * static_cast<std::size_t>(m_hBitmap->Height());
}

std::uint64_t CDIBSection::DIBNumColors(const BITMAPINFOHEADER* header) const {
    return header != nullptr && header->biBitCount < 64 ? std::uint64_t{1} << header->biBitCount
                                                        : 0;
}

std::uint64_t CDIBSection::PaletteSize(const BITMAPINFOHEADER* header) const {
    return 4 * DIBNumColors(header);
}

void CDIBSection::SetCDIBColorTable(const HPALETTE& hPal) {
    m_hPalette = hPal;
    if (!hPal || m_pMemCDC == nullptr) return;
    RGBQUAD colors[kColorTableSize];
    const unsigned count = std::min<unsigned>(hPal->palNumEntries, kColorTableSize);
    for (unsigned i = 0; i < count; ++i) {
        const PALETTEENTRY& entry = hPal->palPalEntry[i];
        colors[i] = {entry.peBlue, entry.peGreen, entry.peRed, 0};
    }
    m_pMemCDC->SetDIBColorTable(0, count, colors);
}

void CDIBSection::CreateRGBPalette() {
    PIXELFORMATDESCRIPTOR format;
    if (m_pMemCDC == nullptr || m_pScreenCDC == nullptr ||
        !CDC::DescribePixelFormat(m_pMemCDC->GetPixelFormat(), &format) ||
        (format.dwFlags & PFD_NEED_PALETTE) == 0)
        return;
    const unsigned count =
        std::min(1u << format.cColorBits, static_cast<unsigned>(kColorTableSize));
    const auto palette =
        detail::AllocateOrRaise(ERR3D_ARRAY_NEW, {ERR3DCLASS_DIBSECTION, "CreateRGBPalette"},
                                [] { return std::make_shared<LOGPALETTE>(); });
    palette->palNumEntries = static_cast<WORD>(count);
    for (unsigned i = 0; i < count; ++i) {
        const BYTE red = Component(i, format.cRedBits, format.cRedShift);
        const BYTE green = Component(i, format.cGreenBits, format.cGreenShift);
        const BYTE blue = Component(i, format.cBlueBits, format.cBlueShift);
        palette->palPalEntry[i] = {red, green, blue, 0};
        m_BitmapInfo.bmiColors[i] = {blue, green, red, 0};
    }
    if (detail::Is332(format)) detail::OverrideSystemColors(*palette);
    m_pMemCDC->SetDIBColorTable(0, count, m_BitmapInfo.bmiColors);
    m_hPalette = palette;
    const HPALETTE before = m_pScreenCDC->SelectPalette(m_hPalette, 0);
    // A second palette finds the first one selected; the screen's own is what was there before
    // both.
    if (!m_PaletteSelected) m_hOldPalette = before;
    m_PaletteSelected = true;
    m_pScreenCDC->RealizePalette();
}

void CDIBSection::PrintDIBSection(CDC* pDC, WORD mode, const char* docName) {
    PrintDIB(pDC, mode, docName);
}

void CDIBSection::PrintDIB(CDC* pDC, WORD mode, const char* /*docName*/) {
    if (!m_hBitmap) Raise(ERR3D_DIB_HANDLE, ERR3DCLASS_DIBSECTION, "PrintDIB");
    if (pDC == nullptr || pDC->GetSafeHdc() == nullptr)
        Raise(ERR3D_PRINT_DC, ERR3DCLASS_DIBSECTION, "PrintDIB");
    RECT r;
    CalculatePrintRect(pDC, r, mode, m_NormPrintRect);
    if (!PrintBand(pDC, m_pMemCDC, r, GetDIBHeader(), m_pBits))
        Raise(ERR3D_PRINT_DC, ERR3DCLASS_DIBSECTION, "PrintDIB");
}

void CDIBSection::CalculatePrintRect(CDC* pDC, RECT& r, WORD mode, const REALRECT& norm) const {
    r = {};
    if (pDC == nullptr) return;
    const int width = pDC->GetDeviceCaps(HORZRES);
    const int height = pDC->GetDeviceCaps(VERTRES);
    const int dx = pDC->GetDeviceCaps(LOGPIXELSX);
    const int dy = pDC->GetDeviceCaps(LOGPIXELSY);
    r.right = width;
    r.bottom = height;
    // The proportions are those on paper: the page's pixels need not be square, the image's are.
    if (mode == 1 && m_hBitmap && dx > 0 && dy > 0) {
        const double w = m_hBitmap->Width();
        const double h = m_hBitmap->Height();
        if (static_cast<double>(height) / dy >= static_cast<double>(width) / dx)
            r.bottom = ToPixels(h * width * dy / (w * dx));
        else
            r.right = ToPixels(w * height * dx / (h * dy));
    } else if (mode == 3) {
        r.top = ToPixels(height * norm.top);
        r.left = ToPixels(width * norm.left);
        r.bottom = ToPixels(height * norm.height) + r.top;
        r.right = ToPixels(width * norm.width) + r.left;
    }
    r.left += dx / 3;
    r.right -= dx / 3;
    r.top += dy / 3;
    r.bottom -= dy / 3;
}

BOOL CDIBSection::PrintBand(CDC* pDC, CDC* /*pMemDC*/, const RECT& r,
                            const BITMAPINFOHEADER* header, const void* bits) {
    if (pDC == nullptr || header == nullptr || bits == nullptr || bits != m_pBits) return 0;
    if (r.left >= r.right || r.top >= r.bottom) return 1;
    const RECT whole{0, 0, m_hBitmap->Width(), m_hBitmap->Height()};
    return pDC->StretchDIBits(r, *m_hBitmap, whole);
}

/// The 40 bytes of the header in file order, and the colour table of the bitmap that is selected
/// into the memory device context: 256 entries for every depth, zeros where there is no table.
std::vector<BYTE> CDIBSection::HeaderAndColors() const {
    const BITMAPINFOHEADER& h = m_BitmapInfo.bmiHeader;
    std::vector<BYTE> bytes;
    bytes.reserve(kInfoHeaderSize + kColorTableBytes);
    Append32(bytes, h.biSize);
    Append32(bytes, static_cast<DWORD>(h.biWidth));
    Append32(bytes, static_cast<DWORD>(h.biHeight));
    Append16(bytes, h.biPlanes);
    Append16(bytes, h.biBitCount);
    Append32(bytes, h.biCompression);
    Append32(bytes, h.biSizeImage);
    Append32(bytes, static_cast<DWORD>(h.biXPelsPerMeter));
    Append32(bytes, static_cast<DWORD>(h.biYPelsPerMeter));
    Append32(bytes, h.biClrUsed);
    Append32(bytes, h.biClrImportant);

    RGBQUAD colors[kColorTableSize] = {};
    if (m_pMemCDC != nullptr) m_pMemCDC->GetDIBColorTable(0, kColorTableSize, colors);
    for (const RGBQUAD& color : colors) {
        bytes.insert(bytes.end(), {color.rgbBlue, color.rgbGreen, color.rgbRed, color.rgbReserved});
    }
    return bytes;
}

void CDIBSection::SaveDIB(const CString& path) const {
    constexpr detail::Origin kOrigin{ERR3DCLASS_DIBSECTION, "SaveDIB"};
    if (!m_hBitmap) Raise(ERR3D_DIB_HANDLE, kOrigin.cls, kOrigin.operation);
    CString why;
    const std::unique_ptr<File> file = OpenOutputFile(path, &why);
    if (!file) Raise(ERR3D_FILE_OPEN_OUTPUT, kOrigin.cls, kOrigin.operation, why);
    std::vector<BYTE> fileHeader;
    Append16(fileHeader, 0x4D42);
    Append32(fileHeader, static_cast<DWORD>(PixelBytes() + kPixelOffset));
    Append32(fileHeader, 0);
    Append32(fileHeader, kPixelOffset);
    const std::vector<BYTE> description =
        detail::AllocateOrRaise(ERR3D_ARRAY_NEW, kOrigin, [this] { return HeaderAndColors(); });
    detail::WithFile(file.get(), kOrigin, [&](File& f) {
        f.Write(fileHeader.data(), fileHeader.size());
        f.Write(description.data(), description.size());
        f.Write(m_pBits, PixelBytes());
        f.Commit();
    });
}

std::vector<BYTE> CDIBSection::GetDIBSectionAsDIB() const {
    constexpr detail::Origin kOrigin{ERR3DCLASS_DIBSECTION, "GetDIBSectionAsDIB"};
    if (!m_hBitmap) Raise(ERR3D_DIB_HANDLE, kOrigin.cls, kOrigin.operation);
    return detail::AllocateOrRaise(ERR3D_MEM_ALLOC, kOrigin, [this] {
        std::vector<BYTE> dib = HeaderAndColors();
        dib.reserve(dib.size() + PixelBytes());
        dib.insert(dib.end(), m_pBits, m_pBits + PixelBytes());
        return dib;
    });
}

}  // namespace varnel
