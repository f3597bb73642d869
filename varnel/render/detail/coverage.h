// What cannot change the picture: polygons that cover no sample of the image and segments that pass
// through no pixel's diamond.
//
// A large mesh has more polygons than the image has samples, and each costs a rasterizer about 50
// ns even when it draws nothing. The answers err on the side of drawing by a few hundredths of a
// pixel, more than a driver moves vertices when it snaps them to its subpixel grid.
#pragma once

#include <array>
#include <cstddef>
#include <span>

#include "varnel/foundation/viewports.h"

namespace varnel::detail {

/// A place in pixels of the framebuffer from its lower left corner.
struct WindowPoint {
    float x;
    float y;
};

/// A sample's place in its pixel, 0..1 from the lower left corner.
using SamplePlace = WindowPoint;

class Coverage {
 public:
    /// Everything may be seen.
    Coverage() = default;
    /// A viewport in framebuffer pixels and the samples of a pixel. `slack` is how far, in pixels,
    /// a driver may move vertices. No samples: everything may be seen.
    Coverage(const GLViewportType& viewport, std::span<const SamplePlace> samples, float slack);

    bool IsOn() const { return m_NumSamples > 0; }

    /// From device coordinates to pixels.
    WindowPoint ToWindow(float x, float y) const {
        return {x * m_Scale.x + m_Centre.x, y * m_Scale.y + m_Centre.y};
    }

    /// Whether the fan of triangles from the first of n corners can cover a sample. Coordinates
    /// that are not finite may be answered either way.
    bool MayCover(const WindowPoint* corners, int n) const;

    /// Whether a segment, one framebuffer pixel wide and not antialiased, can be seen. OpenGL draws
    /// the pixels whose diamonds |x - cx| + |y - cy| < 1/2 a segment leaves. The diamonds and the
    /// gaps between them are the unit squares of a grid along the diagonals; what stays inside one
    /// of them leaves no diamond.
    bool MayDraw(const WindowPoint& a, const WindowPoint& b) const {
        return !(SameCell(a.x + a.y, b.x + b.y) && SameCell(a.x - a.y, b.x - b.y));
    }
    /// Whether segments of one pixel's width are drawn by that rule: there is one sample a pixel.
    bool HasDiamonds() const { return m_NumSamples == 1; }

 private:
    static constexpr std::size_t kMostSamples = 16;
    static constexpr float kFar = 1 << 20;  // pixels: beyond that, places are not looked at closely

    static int Floor(float v) {
        const int whole = static_cast<int>(v);
        return whole - (v < static_cast<float>(whole) ? 1 : 0);
    }
    bool SameCell(float a, float b) const {
        const float low = (a < b ? a : b) - m_Slack + 0.5F;
        const float high = (a < b ? b : a) + m_Slack + 0.5F;
        return low > -kFar && high < kFar && Floor(low) == Floor(high);
    }
    bool CoversOne(const WindowPoint* corners, int n, const WindowPoint& sample) const;

    WindowPoint m_Scale{};
    WindowPoint m_Centre{};
    WindowPoint m_Low{};  ///< of the viewport
    WindowPoint m_High{};
    float m_Slack = 0.0F;
    std::size_t m_NumSamples = 0;
    std::array<SamplePlace, kMostSamples> m_Samples{};
};

}  // namespace varnel::detail
