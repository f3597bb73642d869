// Many short lines as pixels of a layer, which is drawn over the image at once.
//
// Mesa's llvmpipe takes about 0.3 us for a segment, however short it is, and a large mesh has
// hundreds of thousands of them a frame. Here a segment of one pixel's width becomes the pixels
// that llvmpipe would draw, with the same depths to the last bit, in a tenth of that; of each pixel
// the nearest is kept. What llvmpipe decides by rules of its own, ends on a pixel's border or
// middle, and what the viewport or a clip plane may cut is left to it.
#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <span>
#include <vector>

#include "varnel/foundation/viewports.h"
#include "varnel/render/detail/coverage.h"
#include "varnel/render/detail/primitive_batch.h"

namespace varnel::detail {

struct LayerPixel {
    std::uint32_t depth;  ///< the bits of a float, 0..1; kNone where nothing was drawn
    std::uint32_t color;  ///< red in the lowest byte

    static constexpr std::uint32_t kNone = 0xFFFFFFFFU;
};

class LineLayer {
 public:
    using ClipPlane = std::array<double, 4>;  ///< as SceneState has them

    /// Whether there can be a layer of a viewport, which is in framebuffer pixels.
    static bool Fits(const GLViewportType& viewport);
    /// Begins a layer; it must be empty. `planes` cut off what lies outside of any.
    void Start(const GLViewportType& viewport, std::span<const ClipPlane> planes);
    /// Adds a segment in device coordinates; of pixels as near as earlier ones the later is kept.
    /// False, and nothing is done, for one that is the driver's.
    bool Add(const LineVertex& from, const LineVertex& to);
    /// Forgets what was drawn.
    void Clear();

    bool IsEmpty() const { return m_Low.x > m_High.x; }
    const GLViewportType& Viewport() const { return m_Viewport; }
    /// A rectangle, in framebuffer pixels, that has all that was drawn.
    GLViewportType Touched() const;
    /// A pixel of the viewport; the others of its row follow.
    const LayerPixel* At(int x, int y) const { return &m_Pixels[Index(x, y)]; }

 private:
    /// A place in framebuffer pixels, depth 0..1.
    struct Place {
        float x, y, z;
    };
    static constexpr WindowPoint kNowhereLow{1e9F, 1e9F};
    static constexpr WindowPoint kNowhereHigh{-1e9F, -1e9F};

    std::size_t Index(int x, int y) const {
        return static_cast<std::size_t>(y - m_Viewport.y) *
                   static_cast<std::size_t>(m_Viewport.width) +
               static_cast<std::size_t>(x - m_Viewport.x);
    }
    /// Where a vertex lies; false when it may be cut off.
    bool ToPlace(const LineVertex& vertex, Place& place) const;
    void Put(int x, int y, float depth, std::uint32_t color);
    void Touch(const Place& a, const Place& b);

    GLViewportType m_Viewport{};
    WindowPoint m_Low = kNowhereLow;  ///< of what was drawn
    WindowPoint m_High = kNowhereHigh;
    std::vector<ClipPlane> m_Planes;
    std::vector<LayerPixel> m_Pixels;
};

}  // namespace varnel::detail
