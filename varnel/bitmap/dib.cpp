#include "varnel/bitmap/dib.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <vector>

#include "varnel/bitmap/detail/bmp_decoder.h"
#include "varnel/foundation/detail/diagnose.h"
#include "varnel/foundation/detail/raise.h"
#include "varnel/foundation/notice.h"
#include "varnel/platform/files.h"

namespace varnel {

namespace {

constexpr detail::Origin kLoad{ERR3DCLASS_DIB, "LoadBitmapFile"};
constexpr std::size_t kFileHeaderBytes = 14;
constexpr WORD kBitmapTag = 19778;  // "BM"
constexpr int kMaxRoundedSize = 1 << 30;

/// The notice, and for who wants to know more what was wrong.
void SayNotABitmap(const char* why) {
    detail::Diagnose(kLoad.operation, "the file ", why);
    ShowNotice("Not a bitmap file");
}

/// Reads on until `bytes` holds `size` bytes or the file ends.
void ReadUpTo(File& file, std::uint64_t size, std::vector<BYTE>& bytes) {
    const std::size_t have = bytes.size();
    const std::uint64_t wanted = std::min(size - have, file.Remaining());
    bytes.resize(have + wanted);
    bytes.resize(have + file.Read(bytes.data() + have, wanted));
}

/// The 14-byte header of a bitmap file, if it comes next.
struct FileHeader {
    bool isBitmap = false;
    std::uint64_t pixelsAt = 0;  ///< from the end of this header
};

FileHeader ReadFileHeader(File& file) {
    BYTE header[kFileHeaderBytes];
    if (file.Read(header, sizeof header) < sizeof header) return {};
    std::uint64_t offset = 0;
    for (const int at : {13, 12, 11, 10})
        offset = offset << 8 | header[at];
    return {(header[0] | header[1] << 8) == kBitmapTag,
            offset - std::min<std::uint64_t>(offset, kFileHeaderBytes)};
}

/// For each of `texels` texels of a row or column, the number of its pixel among `pixels`.
std::vector<int> PixelsUnderTexels(int pixels, unsigned int texels) {
    std::vector<int> pixel(texels);
    for (unsigned int i = 0; i < texels; ++i)
        pixel[i] =
            static_cast<int>((2 * std::uint64_t{i} + 1) * static_cast<std::uint64_t>(pixels) /
                             (2 * std::uint64_t{texels}));
    return pixel;
}

void StretchToTexels(const Bitmap& picture, unsigned int width, unsigned int height, BYTE* texel) {
    const std::vector<int> columns = PixelsUnderTexels(picture.Width(), width);
    const std::vector<int> rows = PixelsUnderTexels(picture.Height(), height);
    for (auto y = rows.rbegin(); y != rows.rend(); ++y) {
        for (const int x : columns) {
            const RGBQUAD color = picture.PixelFromTop(x, *y);
            *texel++ = color.rgbRed;
            *texel++ = color.rgbGreen;
            *texel++ = color.rgbBlue;
            *texel++ = 255;
        }
    }
}

}  // namespace

CDib::CDib(const char* path) : CDib(path, DIB_IGNORE_OFFSET) {
}

CDib::CDib(const char* path, DibOffset offset) {
    LoadBitmapFile(path, offset);
}

CDib::CDib(File& file, DibOffset offset) {
    Load(file, offset);
}

CDib::~CDib() = default;

int CDib::GetDibWidth() const {
    return m_Info.bmiHeader.biWidth;
}

int CDib::GetDibHeight() const {
    return m_Info.bmiHeader.biHeight;
}

DWORD CDib::GetDibSizeImage() const {
    const BITMAPINFOHEADER& header = m_Info.bmiHeader;
    if (header.biSizeImage != 0) return header.biSizeImage;
    return static_cast<DWORD>(std::abs(std::int64_t{header.biWidth} * header.biHeight));
}

DWORD CDib::GetDibNumColors() const {
    const BITMAPINFOHEADER& header = m_Info.bmiHeader;
    if (header.biClrUsed != 0 || header.biBitCount > 8 || m_lpbmih == nullptr)
        return header.biClrUsed;
    return DWORD{1} << header.biBitCount;
}

void CDib::LoadBitmapFile(const char* path, DibOffset offset) {
    CString why;
    const std::unique_ptr<File> file = OpenInputFile(path == nullptr ? "" : path, &why);
    if (file == nullptr) detail::Raise(ERR3D_FILE_OPEN_INPUT, kLoad.cls, kLoad.operation, why);
    Load(*file, offset);
}

void CDib::Load(File& file, DibOffset offset) {
    detail::WithFile(&file, kLoad, [&](File& f) {
        detail::AllocateOrRaise(ERR3D_MEM_ALLOC, kLoad, [&] { ReadBitmap(f, offset); });
    });
}

void CDib::ReadBitmap(File& file, DibOffset offset) {
    m_lpDIB = nullptr;
    m_Info = {};
    m_lpbmih = nullptr;
    const FileHeader start = ReadFileHeader(file);
    if (!start.isBitmap) return SayNotABitmap("does not begin as a bitmap file does");

    const std::uint64_t size = file.Remaining();
    std::vector<BYTE> bytes;
    ReadUpTo(file, detail::kBmpHeaderBytes, bytes);
    const std::uint64_t pixelsAt = offset == DIB_USE_OFFSET ? start.pixelsAt : 0;
    const std::optional<detail::BmpHeader> header = detail::ParseBmpHeader(bytes, size, pixelsAt);
    if (!header)
        return SayNotABitmap("describes no picture that is known, or not all of it is there");
    if (std::max(header->usedBytes, header->decodedBytes) > detail::kMaxBmpBytes)
        detail::Raise(ERR3D_MEM_ALLOC, kLoad.cls, kLoad.operation,
                      detail::Say("a picture of ", header->width, " x ", header->height,
                                  " pixels takes more than 1 GiB"));

    if (bytes.size() < header->usedBytes) ReadUpTo(file, header->usedBytes, bytes);
    m_lpDIB = detail::DecodeBmp(*header, bytes);
    if (m_lpDIB == nullptr) return SayNotABitmap("ends before its picture does");
    SetInfo(header->info);
}

void CDib::SetInfo(const BITMAPINFOHEADER& header) {
    m_lpbmih = &m_Info;
    m_Info.bmiHeader = header;
    m_Info.bmiHeader.biSizeImage = GetDibSizeImage();
    m_Info.bmiHeader.biClrUsed = GetDibNumColors();
    m_Info.bmiColors = m_lpDIB->ColorTable;
}

HPALETTE CDib::CreateDibPalette() {
    const auto count = std::min<std::size_t>(GetDibNumColors(), m_Info.bmiColors.size());
    if (count == 0) return nullptr;
    const auto palette =
        detail::AllocateOrRaise(ERR3D_MEM_ALLOC, {ERR3DCLASS_DIB, "CreateDibPalette"},
                                [] { return std::make_shared<LOGPALETTE>(); });
    palette->palNumEntries = static_cast<WORD>(count);
    for (std::size_t i = 0; i < count; ++i) {
        const RGBQUAD& color = m_Info.bmiColors[i];
        palette->palPalEntry[i] = {color.rgbRed, color.rgbGreen, color.rgbBlue, 0};
    }
    m_Palette = palette;
    return m_Palette;
}

int CDib::PaintDIB(CDC* dc, const RECT* dst, const RECT* src, const HPALETTE& palette) {
    if (m_lpDIB == nullptr || dc == nullptr || dst == nullptr || src == nullptr) return 0;
    HPALETTE previous;
    if (palette != nullptr) {
        previous = dc->SelectPalette(palette, 1);
        dc->RealizePalette();
    }
    const BOOL painted = dc->StretchDIBits(*dst, *m_lpDIB, *src);
    if (palette != nullptr) dc->SelectPalette(previous, 0);
    return painted ? m_lpDIB->Height() : 0;
}

int CDib::PaintDIB(HDC hdc, const RECT* dst, const RECT* src, const HPALETTE& palette) {
    if (hdc == nullptr) return 0;
    CDC dc(std::shared_ptr<DeviceContext>(hdc, [](DeviceContext*) {}));
    return PaintDIB(&dc, dst, src, palette);
}

int CDib::RoundSizeUp(int n) {
    int p = 2;
    while (p < n && p < kMaxRoundedSize)
        p *= 2;
    return p;
}

BYTE* CDib::TranslateDIBToOGL(const HPALETTE&, unsigned int maxSide) {
    const auto side = [maxSide](int pixels) {
        const unsigned int most = std::min(maxSide, kMaxTextureSide);
        auto texels = static_cast<unsigned int>(RoundSizeUp(pixels));
        while (texels > most && texels > 2)
            texels /= 2;
        return texels;
    };
    const unsigned int width = side(m_lpDIB == nullptr ? 0 : m_lpDIB->Width());
    const unsigned int height = side(m_lpDIB == nullptr ? 0 : m_lpDIB->Height());

    constexpr detail::Origin origin{ERR3DCLASS_DIB, "TranslateDIBToOGL"};
    auto texels = detail::NewArray<BYTE>(4LL * width * height, origin);
    if (m_lpDIB != nullptr) {
        detail::AllocateOrRaise(ERR3D_ARRAY_NEW, origin,
                                [&] { StretchToTexels(*m_lpDIB, width, height, texels.get()); });
    } else {
        for (unsigned int i = 0; i < width * height; ++i)
            texels[4 * i + 3] = 255;
    }
    m_pTextureBits = std::move(texels);
    m_TextureWidth = width;
    m_TextureHeight = height;
    return m_pTextureBits.get();
}

}  // namespace varnel
