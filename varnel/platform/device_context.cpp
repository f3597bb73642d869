#include "varnel/platform/device_context.h"

#include <algorithm>
#include <array>
#include <utility>

#include "varnel/platform/detail/pixel_rows.h"
#include "varnel/platform/detail/put_pixels.h"

namespace varnel {
namespace {

/// Draws to the bitmap that is selected into it.
class MemoryDevice : public DeviceContext {
 public:
    /// Takes over the capabilities of `reference`, which may be gone later.
    explicit MemoryDevice(const DeviceContext& reference) {
        for (std::size_t i = 0; i < kCodes.size(); ++i)
            m_Caps[i] = reference.Caps(kCodes[i]);
    }

    int Caps(int code) const override {
        const auto* at = std::find(kCodes.begin(), kCodes.end(), code);
        return at != kCodes.end() ? m_Caps[static_cast<std::size_t>(at - kCodes.begin())] : 0;
    }

    bool TakesBitmaps() const override { return true; }

    bool Put(int x, int y, int width, int height, const Bitmap& source, int sourceX,
             int sourceY) override {
        if (!bitmap) return false;
        detail::PutPixels(*bitmap, x, y, width, height, source, sourceX, sourceY);
        return true;
    }

 private:
    static constexpr std::array<int, 6> kCodes = {HORZRES, VERTRES,    BITSPIXEL,
                                                  PLANES,  LOGPIXELSX, LOGPIXELSY};
    std::array<int, kCodes.size()> m_Caps{};
};

constexpr std::array<PIXELFORMATDESCRIPTOR, 4> MakePixelFormats() {
    constexpr DWORD kBitmap = PFD_DRAW_TO_BITMAP | PFD_SUPPORT_GDI | PFD_SUPPORT_OPENGL;
    std::array<PIXELFORMATDESCRIPTOR, 4> formats{};
    const auto component = [](BYTE& bits, BYTE& shift, BYTE newBits, BYTE newShift) {
        bits = newBits;
        shift = newShift;
    };
    for (std::size_t i = 0; i < formats.size(); ++i) {
        PIXELFORMATDESCRIPTOR& f = formats[i];
        f.dwFlags = kBitmap | (i == 0 ? PFD_NEED_PALETTE : 0);
        f.cColorBits = static_cast<BYTE>(8 * (i + 1));
        f.cDepthBits = 32;
        const BYTE bits = i == 0 ? 3 : i == 1 ? 5 : 8;
        const auto width = static_cast<BYTE>(bits * 2);
        // The palette layout alone has red in the low bits.
        component(f.cRedBits, f.cRedShift, bits, i == 0 ? 0 : width);
        component(f.cGreenBits, f.cGreenShift, bits, bits);
        component(f.cBlueBits, f.cBlueShift, i == 0 ? 2 : bits, i == 0 ? width : 0);
    }
    return formats;
}

/// Format n is entry n - 1.
constexpr std::array<PIXELFORMATDESCRIPTOR, 4> kPixelFormats = MakePixelFormats();

/// The entries `first` to `first` + `count` of a colour table that exist.
unsigned int CountInTable(unsigned int first, unsigned int count) {
    return first < kColorTableSize ? std::min(count, kColorTableSize - first) : 0;
}

bool HasColorTable(const HBITMAP& bitmap) {
    return bitmap && bitmap->BitsPerPixel() == 8;
}

/// A bitmap's rectangle, sampled at the centres of the pixels of `size` and cut to `shown`.
Bitmap Scale(const Bitmap& source, const RECT& from, long long width, long long height,
             const RECT& shown) {
    Bitmap scaled(shown.right - shown.left, shown.bottom - shown.top, 32);
    const auto pick = [](long long i, long long size, long long start, long long extent) {
        return static_cast<int>(start + (2 * i + 1) * extent / (2 * size));
    };
    for (int y = 0; y < scaled.Height(); ++y) {
        BYTE* out = scaled.RowFromTop(y);
        const int fromY = pick(shown.top + y, height, from.top, from.bottom - from.top);
        for (int x = 0; x < scaled.Width(); ++x, out += 4) {
            const int fromX = pick(shown.left + x, width, from.left, from.right - from.left);
            detail::UnpackRow(source, fromX, fromY, 1, out);
        }
    }
    return scaled;
}

}  // namespace

DeviceContext::~DeviceContext() = default;

bool DeviceContext::DrawVectors(const RECT& /*target*/, double /*width*/, double /*height*/,
                                const std::function<void(detail::PageCanvas&)>& /*draw*/) {
    return false;
}

void DeviceContext::MapPalette() {
}

bool DeviceContext::TakesBitmaps() const {
    return false;
}

bool DeviceContext::Stretch(const RECT& target, const Bitmap& source, const RECT& sourceRect) {
    const auto width = static_cast<long long>(target.right) - target.left;
    const auto height = static_cast<long long>(target.bottom) - target.top;
    if (width <= 0 || height <= 0 || sourceRect.left < 0 || sourceRect.top < 0 ||
        sourceRect.right > source.Width() || sourceRect.bottom > source.Height() ||
        sourceRect.left >= sourceRect.right || sourceRect.top >= sourceRect.bottom)
        return false;
    // Only what the device shows is scaled: a target can be far larger than any device.
    const RECT visible{std::max(target.left, 0), std::max(target.top, 0),
                       std::min(target.right, Caps(HORZRES)),
                       std::min(target.bottom, Caps(VERTRES))};
    if (visible.left >= visible.right || visible.top >= visible.bottom) return true;
    const auto from = [](int at, int origin) {
        return static_cast<int>(static_cast<long long>(at) - origin);
    };
    const RECT shown{from(visible.left, target.left), from(visible.top, target.top),
                     from(visible.right, target.left), from(visible.bottom, target.top)};
    const Bitmap scaled = Scale(source, sourceRect, width, height, shown);
    return Put(visible.left, visible.top, scaled.Width(), scaled.Height(), scaled, 0, 0);
}

BOOL CDC::CreateCompatibleDC(const CDC* reference) {
    if (reference == nullptr || !reference->m_Device) return 0;
    m_Device = std::make_shared<MemoryDevice>(*reference->m_Device);
    return 1;
}

int CDC::GetDeviceCaps(int code) const {
    return m_Device ? m_Device->Caps(code) : 0;
}

HBITMAP CDC::SelectObject(const HBITMAP& bitmap) {
    if (!m_Device || !m_Device->TakesBitmaps()) return nullptr;
    return std::exchange(m_Device->bitmap, bitmap);
}

HBITMAP CDC::GetBitmap() const {
    return m_Device ? m_Device->bitmap : nullptr;
}

HPALETTE CDC::SelectPalette(const HPALETTE& palette, BOOL /*background*/) {
    return m_Device ? std::exchange(m_Device->palette, palette) : nullptr;
}

unsigned int CDC::RealizePalette() {
    if (!m_Device || GetDeviceCaps(BITSPIXEL) != 8) return 0;
    m_Device->MapPalette();
    return m_Device->palette ? m_Device->palette->palNumEntries : 0;
}

unsigned int CDC::GetDIBColorTable(unsigned int first, unsigned int count, RGBQUAD* out) const {
    const HBITMAP bitmap = GetBitmap();
    if (!HasColorTable(bitmap) || out == nullptr) return 0;
    count = CountInTable(first, count);
    std::copy_n(bitmap->ColorTable.begin() + first, count, out);
    return count;
}

unsigned int CDC::SetDIBColorTable(unsigned int first, unsigned int count, const RGBQUAD* in) {
    const HBITMAP bitmap = GetBitmap();
    if (!HasColorTable(bitmap) || in == nullptr) return 0;
    count = CountInTable(first, count);
    std::copy_n(in, count, bitmap->ColorTable.begin() + first);
    return count;
}

BOOL CDC::BitBlt(int x, int y, int width, int height, const CDC& source, int sourceX, int sourceY) {
    const HBITMAP from = source.GetBitmap();
    if (!m_Device || !from) return 0;
    return m_Device->Put(x, y, width, height, *from, sourceX, sourceY);
}

BOOL CDC::DrawVectors(const RECT& target, double width, double height,
                      const std::function<void(detail::PageCanvas&)>& draw) {
    return m_Device && m_Device->DrawVectors(target, width, height, draw);
}

BOOL CDC::StretchDIBits(const RECT& target, const Bitmap& source, const RECT& sourceRect) {
    return m_Device && m_Device->Stretch(target, source, sourceRect);
}

int CDC::ChoosePixelFormat(const PIXELFORMATDESCRIPTOR& wanted) {
    for (std::size_t i = 0; i < kPixelFormats.size(); ++i)
        if (kPixelFormats[i].cColorBits == wanted.cColorBits) return static_cast<int>(i) + 1;
    return 0;
}

BOOL CDC::DescribePixelFormat(int format, PIXELFORMATDESCRIPTOR* out) {
    if (format < 1 || format > static_cast<int>(kPixelFormats.size()) || out == nullptr) return 0;
    *out = kPixelFormats[static_cast<std::size_t>(format - 1)];
    return 1;
}

BOOL CDC::SetPixelFormat(int format) {
    PIXELFORMATDESCRIPTOR known;
    if (!m_Device || !DescribePixelFormat(format, &known)) return 0;
    if (m_Device->pixelFormat == 0) m_Device->pixelFormat = format;
    return m_Device->pixelFormat == format;
}

int CDC::GetPixelFormat() const {
    return m_Device ? m_Device->pixelFormat : 0;
}

}  // namespace varnel
