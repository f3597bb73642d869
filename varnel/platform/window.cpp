#include "varnel/platform/window.h"

#include <new>
#include <utility>

#include "varnel/platform/detail/pixel_rows.h"
#include "varnel/platform/detail/put_pixels.h"

namespace varnel {
namespace {

constexpr int kPixelsPerInch = 96;

/// A screen of the window's size.
class WindowDevice : public DeviceContext {
 public:
    WindowDevice(int width, int height, int bitsPerPixel) : m_Pixels(width, height, bitsPerPixel) {
        WindowDevice::MapPalette();
    }

    const Bitmap& Pixels() const { return m_Pixels; }

    int Caps(int code) const override {
        switch (code) {
            case HORZRES:
                return m_Pixels.Width();
            case VERTRES:
                return m_Pixels.Height();
            case BITSPIXEL:
                return m_Pixels.BitsPerPixel();
            case PLANES:
                return 1;
            case LOGPIXELSX:
            case LOGPIXELSY:
                return kPixelsPerInch;
            default:
                return 0;
        }
    }

    bool Put(int x, int y, int width, int height, const Bitmap& source, int sourceX,
             int sourceY) override {
        detail::PutPixels(m_Pixels, x, y, width, height, source, sourceX, sourceY);
        return true;
    }

    void MapPalette() override {
        if (m_Pixels.BitsPerPixel() != 8) return;
        m_Pixels.ColorTable = detail::ColorTable332();
        for (std::size_t i = 0; palette && i < palette->palNumEntries && i < kColorTableSize; ++i) {
            const PALETTEENTRY& entry = palette->palPalEntry[i];
            m_Pixels.ColorTable[i] = {entry.peBlue, entry.peGreen, entry.peRed, 0};
        }
    }

 private:
    Bitmap m_Pixels;
};

class MemoryWindow : public WindowBackend {
 public:
    MemoryWindow(int width, int height, int bitsPerPixel)
        : m_Device(std::make_shared<WindowDevice>(width, height, bitsPerPixel)) {}

    std::shared_ptr<DeviceContext> Device() override { return m_Device; }
    void ClientSize(int& width, int& height) const override {
        width = m_Device->Pixels().Width();
        height = m_Device->Pixels().Height();
    }
    void Invalidate() override {}
    const Bitmap* Pixels() const override { return &m_Device->Pixels(); }

 private:
    std::shared_ptr<WindowDevice> m_Device;
};

}  // namespace

WindowBackend::~WindowBackend() = default;

const Bitmap* WindowBackend::Pixels() const {
    return nullptr;
}

const char* WindowBackend::DisplayName() const {
    return nullptr;
}

CWnd::CWnd() = default;

CWnd::CWnd(int width, int height, int bitsPerPixel) {
    CreateInMemory(width, height, bitsPerPixel);
}

CWnd::CWnd(std::unique_ptr<WindowBackend> backend) : m_Backend(std::move(backend)) {
}

CWnd::~CWnd() = default;

BOOL CWnd::CreateInMemory(int width, int height, int bitsPerPixel) {
    if (m_Backend) return 0;
    try {
        m_Backend = std::make_unique<MemoryWindow>(width, height, bitsPerPixel);
    } catch (const std::bad_alloc&) {
        return 0;
    }
    return 1;
}

CDC* CWnd::GetDC() {
    if (!m_Backend) return nullptr;
    if (m_DC.GetSafeHdc() == nullptr) m_DC = CDC(m_Backend->Device());
    return &m_DC;
}

void CWnd::ReleaseDC(CDC* /*dc*/) {
}

void CWnd::GetClientRect(RECT* rect) const {
    if (rect == nullptr) return;
    *rect = {};
    if (m_Backend) m_Backend->ClientSize(rect->right, rect->bottom);
}

void CWnd::InvalidateRect(const RECT* /*rect*/, BOOL /*erase*/) {
    if (m_Backend) m_Backend->Invalidate();
}

const Bitmap* CWnd::GetPixels() const {
    return m_Backend ? m_Backend->Pixels() : nullptr;
}

const char* CWnd::GetDisplayName() const {
    return m_Backend ? m_Backend->DisplayName() : nullptr;
}

}  // namespace varnel
