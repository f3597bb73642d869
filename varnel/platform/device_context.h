// Device contexts: what can be drawn to (memory, a window, a printed page), with its capabilities.
//
// CDC is a cheap handle; copies refer to one device, which lives as long as any of them.
// Coordinates are device pixels from the upper left corner.
#pragma once

#include <functional>
#include <memory>

#include "varnel/foundation/export.h"
#include "varnel/foundation/types.h"
#include "varnel/platform/pixels.h"

namespace varnel {

namespace detail {
class PageCanvas;
}

class DeviceContext;
using HDC = DeviceContext*;

/// Capability codes of CDC::GetDeviceCaps.
enum DeviceCap : int {
    HORZRES = 8,      ///< width in pixels
    VERTRES = 10,     ///< height in pixels
    BITSPIXEL = 12,   ///< bits per pixel of one plane
    PLANES = 14,      ///< colour planes, 1 for every device here
    LOGPIXELSX = 88,  ///< pixels per inch, horizontally
    LOGPIXELSY = 90,  ///< pixels per inch, vertically
};

/// A pixel format's properties; the members that the library reads or sets.
struct PIXELFORMATDESCRIPTOR {
    WORD nSize = 40;
    WORD nVersion = 1;
    DWORD dwFlags = 0;
    BYTE iPixelType = 0;
    BYTE cColorBits = 0;
    BYTE cRedBits = 0;
    BYTE cRedShift = 0;
    BYTE cGreenBits = 0;
    BYTE cGreenShift = 0;
    BYTE cBlueBits = 0;
    BYTE cBlueShift = 0;
    BYTE cDepthBits = 0;
    BYTE iLayerType = 0;
};

inline constexpr DWORD PFD_DRAW_TO_BITMAP = 0x08;
inline constexpr DWORD PFD_SUPPORT_GDI = 0x10;
inline constexpr DWORD PFD_SUPPORT_OPENGL = 0x20;
inline constexpr DWORD PFD_NEED_PALETTE = 0x80;

/// A device. Implementations: memory, in-memory window; platform/ adds real windows and printers.
class VARNEL_API DeviceContext {
 public:
    DeviceContext() = default;
    DeviceContext(const DeviceContext&) = delete;
    DeviceContext& operator=(const DeviceContext&) = delete;
    virtual ~DeviceContext();

    /// The value of a DeviceCap, 0 for codes that a device does not know.
    virtual int Caps(int code) const = 0;

    /// Puts `width` x `height` pixels of `source`, from (sourceX, sourceY), to (x, y); what lies
    /// outside source or device is left out. False where the device cannot be drawn to.
    virtual bool Put(int x, int y, int width, int height, const Bitmap& source, int sourceX,
                     int sourceY) = 0;

    /// Scales `sourceRect` of `source` (the pixel nearest to each target pixel's centre) onto
    /// `target`. False for empty or reversed rectangles, for a sourceRect that is not wholly inside
    /// the source, and where the device cannot be drawn to.
    virtual bool Stretch(const RECT& target, const Bitmap& source, const RECT& sourceRect);

    /// Hands `draw` a canvas of vectors on which `width` x `height` pixels, y up, cover `target`.
    /// False where the device has no such canvas; then nothing was called.
    virtual bool DrawVectors(const RECT& target, double width, double height,
                             const std::function<void(detail::PageCanvas&)>& draw);

    /// Makes the selected palette (null: the device's own) the colours of a palette device. Nothing
    /// by default.
    virtual void MapPalette();

    /// Whether bitmaps can be selected into the device: memory devices alone.
    virtual bool TakesBitmaps() const;

    HBITMAP bitmap;    ///< what is selected; only memory devices have one
    HPALETTE palette;  ///< what is selected, null for the default palette
    int pixelFormat = 0;
};

/// A handle to a device context.
class VARNEL_API CDC {
 public:
    CDC() = default;
    explicit CDC(std::shared_ptr<DeviceContext> device) : m_Device(std::move(device)) {}

    /// The device, null when none is attached.
    HDC GetSafeHdc() const { return m_Device.get(); }

    /// Makes this a memory device context compatible with `reference` (its depth and its pixels per
    /// inch). False when reference is null or has no device.
    BOOL CreateCompatibleDC(const CDC* reference);

    /// Lets go of the device.
    void DeleteDC() { m_Device.reset(); }

    /// The value of a DeviceCap, 0 without a device.
    int GetDeviceCaps(int code) const;

    /// Selects a bitmap (null: none) into a memory device context and returns the one before it.
    /// Other devices take none.
    HBITMAP SelectObject(const HBITMAP& bitmap);
    HBITMAP GetBitmap() const;

    /// Selects a palette (null: the default one) and returns the one before it.
    HPALETTE SelectPalette(const HPALETTE& palette, BOOL background);
    /// Maps the selected palette onto an 8-bit device; returns its number of entries, 0 for the
    /// default palette and on devices of other depths.
    unsigned int RealizePalette();

    /// Copies `count` entries from `first` of the selected bitmap's colour table; returns how many
    /// there were. Only bitmaps of 8 bits have a table.
    unsigned int GetDIBColorTable(unsigned int first, unsigned int count, RGBQUAD* out) const;
    unsigned int SetDIBColorTable(unsigned int first, unsigned int count, const RGBQUAD* in);

    /// Copies pixels of source's selected bitmap, converting between depths; what lies outside
    /// either side is left out. False when either side cannot.
    BOOL BitBlt(int x, int y, int width, int height, const CDC& source, int sourceX, int sourceY);

    /// Scales part of a bitmap onto part of the device, nearest colour.
    BOOL StretchDIBits(const RECT& target, const Bitmap& source, const RECT& sourceRect);

    /// Draws areas, lines and text onto part of a device that has more than pixels: see
    /// DeviceContext::DrawVectors.
    BOOL DrawVectors(const RECT& target, double width, double height,
                     const std::function<void(detail::PageCanvas&)>& draw);

    /// The pixel format that suits `wanted` (by its colour bits: 8, 16, 24 or 32), 0 when none
    /// does.
    static int ChoosePixelFormat(const PIXELFORMATDESCRIPTOR& wanted);
    /// Fills in the properties of a format. False for a number that ChoosePixelFormat never gives.
    static BOOL DescribePixelFormat(int format, PIXELFORMATDESCRIPTOR* out);
    /// Sets the format, once and for all. False without a device, for an unknown format, and for
    /// another format than the one that is set.
    BOOL SetPixelFormat(int format);
    /// The format set, 0 for none.
    int GetPixelFormat() const;

 private:
    std::shared_ptr<DeviceContext> m_Device;
};

}  // namespace varnel
