#include "varnel/render/detail/line_layer.h"

#include <algorithm>
#include <cmath>

namespace varnel::detail {
namespace {

/// llvmpipe moves places to a grid of so many steps a pixel.
constexpr int kGrid = 256;

/// One multiplication and addition that are rounded together, as llvmpipe computes on processors
/// that can; in doubles, since here any processor has to.
float MultiplyAdd(float a, float b, float c) {
    return static_cast<float>(static_cast<double>(a) * static_cast<double>(b) +
                              static_cast<double>(c));
}

/// The step of the grid that a place of at least half a pixel moves to, counted from the middle of
/// the first pixel.
int Snap(float place) {
    constexpr float kHalf = 0.5F;
    return static_cast<int>((place - kHalf) * static_cast<float>(kGrid) + kHalf);
}

/// How far a place, not negative, lies beyond the middle of its pixel.
float FromMiddle(float place) {
    return place - static_cast<float>(static_cast<int>(place)) - 0.5F;
}

/// An end of a segment: where it lies along the direction that the segment runs most in, and
/// across.
struct End {
    float along, across;
    float shift = 0.0F;  ///< along

    /// Moves an end that has passed its pixel's middle within the pixel's diamond back to where the
    /// segment comes into the pixel: there a segment that starts draws the pixel, and one that ends
    /// does not. False when the end is one of those that the driver decides about.
    bool Move(float direction) {
        const float a = FromMiddle(along);
        const float b = FromMiddle(across);
        // No branches: processors cannot foresee them.
        const bool isMoved = (std::fabs(a) + std::fabs(b) < 0.5F) & (a * direction > 0.0F);
        shift = isMoved ? -a - 0.5F * direction : 0.0F;
        return (a != -0.5F) & (a != 0.0F) & (b != -0.5F) & (b != 0.0F);
    }
    int Along() const { return Snap(along + shift); }
    int Across(float slope) const { return Snap(across + shift * slope); }
};

/// The middles of pixels that a segment passes, pixel by pixel along its main direction. Places are
/// steps of the grid.
class Walk {
 public:
    Walk(int low, int high)
        : m_Low(low),
          m_Length(high - low),
          m_First((low + kGrid - 1) / kGrid),
          m_End((high + kGrid - 1) / kGrid) {}
    int First() const { return m_First; }
    int End() const { return m_End; }  ///< not above First() when no middle is passed

    void SetAcross(int low, int high, bool steep) {
        m_Rise = static_cast<double>(high - low);
        // A line through the border between two pixels takes the left or lower one, but the upper
        // one where it rises.
        m_TakesUpper = !steep && high > low;
        m_Start =
            static_cast<double>(low) * m_Length + (m_TakesUpper ? 0.5 : -0.5) * kGrid * m_Length;
        m_Scale = static_cast<double>(kGrid) * m_Length;
    }
    /// The pixel across at a pixel along. All numbers but the quotient are whole, and the quotient
    /// is not rounded to a whole number that it is not.
    int Across(int along) const {
        const double place = (m_Start + (along * kGrid - m_Low) * m_Rise) / m_Scale;
        const int whole = static_cast<int>(place);
        return whole + ((!m_TakesUpper & (place > whole)) ? 1 : 0);
    }

 private:
    int m_Low;
    int m_Length;
    int m_First;
    int m_End;
    bool m_TakesUpper = false;
    double m_Rise = 0.0;
    double m_Start = 0.0;
    double m_Scale = 1.0;
};

}  // namespace

bool LineLayer::Fits(const GLViewportType& viewport) {
    constexpr int kMost = 4096;
    return viewport.x >= 0 && viewport.y >= 0 && std::min(viewport.width, viewport.height) > 2 &&
           std::max({viewport.x + viewport.width, viewport.y + viewport.height}) <= kMost;
}

void LineLayer::Start(const GLViewportType& viewport, std::span<const ClipPlane> planes) {
    m_Viewport = viewport;
    m_Planes.assign(planes.begin(), planes.end());
    const auto size =
        static_cast<std::size_t>(viewport.width) * static_cast<std::size_t>(viewport.height);
    if (m_Pixels.size() < size) m_Pixels.resize(size, {LayerPixel::kNone, 0});
}

bool LineLayer::ToPlace(const LineVertex& vertex, Place& place) const {
    // Nearer to a border, rounding may decide.
    constexpr float kInside = 1.0F;
    constexpr double kInsidePlane = 1e-4;
    const float(&p)[3] = vertex.position;
    const auto at = [](int pixels) { return static_cast<float>(pixels); };
    const float halfWidth = at(m_Viewport.width) / 2.0F;
    const float halfHeight = at(m_Viewport.height) / 2.0F;
    place = {MultiplyAdd(p[0], halfWidth, at(m_Viewport.x) + halfWidth),
             MultiplyAdd(p[1], halfHeight, at(m_Viewport.y) + halfHeight),
             MultiplyAdd(p[2], 0.5F, 0.5F)};
    const auto isInside = [&](float v, int low, int extent) {
        return v >= at(low) + kInside && v <= at(low + extent) - kInside;
    };
    if (!isInside(place.x, m_Viewport.x, m_Viewport.width) ||
        !isInside(place.y, m_Viewport.y, m_Viewport.height) ||
        !(place.z >= 0.0F && place.z <= 1.0F))
        return false;
    return std::all_of(m_Planes.begin(), m_Planes.end(), [&p](const ClipPlane& plane) {
        return plane[0] * static_cast<double>(p[0]) + plane[1] * static_cast<double>(p[1]) +
                   plane[2] * static_cast<double>(p[2]) + plane[3] >
               kInsidePlane;
    });
}

bool LineLayer::Add(const LineVertex& from, const LineVertex& to) {
    const std::array<std::uint8_t, 4>& bytes = from.color.bytes;
    Place a;
    Place b;
    if (!(from.color == to.color) || bytes[3] != 255 || !ToPlace(from, a) || !ToPlace(to, b))
        return false;
    const float dx = b.x - a.x;
    const float dy = b.y - a.y;
    const bool steep = std::fabs(dy) > std::fabs(dx);
    const float along = steep ? dy : dx;
    const float direction = along > 0.0F ? 1.0F : -1.0F;
    End start = steep ? End{a.y, a.x} : End{a.x, a.y};
    End end = steep ? End{b.y, b.x} : End{b.x, b.y};
    const bool startIsOurs = start.Move(direction);
    const bool endIsOurs = end.Move(direction);
    if (!startIsOurs || !endIsOurs) return false;
    const End& low = along > 0.0F ? start : end;
    const End& high = along > 0.0F ? end : start;
    Walk walk(low.Along(), high.Along());
    if (walk.First() >= walk.End()) return true;
    const float slope = (steep ? dx : dy) / along;
    walk.SetAcross(low.Across(slope), high.Across(slope), steep);
    Touch(a, b);
    // In llvmpipe's order of rounding: the depth changes along the main direction alone.
    const float gradient =
        (b.z - a.z) * (along * (1.0F + slope * slope)) * (1.0F / (dx * dx + dy * dy));
    const float origin = a.z - gradient * (start.along - 0.5F);
    const std::uint32_t color = bytes[0] | static_cast<std::uint32_t>(bytes[1]) << 8U |
                                static_cast<std::uint32_t>(bytes[2]) << 16U | 0xFF000000U;
    for (int i = walk.First(); i < walk.End(); ++i) {
        const int j = walk.Across(i);
        const float depth = MultiplyAdd(gradient, static_cast<float>(i), origin);
        steep ? Put(j, i, depth, color) : Put(i, j, depth, color);
    }
    return true;
}

void LineLayer::Put(int x, int y, float depth, std::uint32_t color) {
    // Of numbers that are not negative, the larger one has the larger bits.
    const auto bits = std::bit_cast<std::uint32_t>(std::clamp(depth, 0.0F, 1.0F) + 0.0F);
    LayerPixel& pixel = m_Pixels[Index(x, y)];
    if (bits <= pixel.depth) pixel = {bits, color};
}

void LineLayer::Touch(const Place& a, const Place& b) {
    m_Low = {std::min({m_Low.x, a.x, b.x}), std::min({m_Low.y, a.y, b.y})};
    m_High = {std::max({m_High.x, a.x, b.x}), std::max({m_High.y, a.y, b.y})};
}

GLViewportType LineLayer::Touched() const {
    if (IsEmpty()) return {};
    // A pixel more, for the grid.
    const int x = static_cast<int>(m_Low.x) - 1;
    const int y = static_cast<int>(m_Low.y) - 1;
    return {x, y, static_cast<int>(m_High.x) + 2 - x, static_cast<int>(m_High.y) + 2 - y};
}

void LineLayer::Clear() {
    const GLViewportType part = Touched();
    for (int y = part.y; y < part.y + part.height; ++y) {
        LayerPixel* const row = &m_Pixels[Index(part.x, y)];
        std::fill(row, row + part.width, LayerPixel{LayerPixel::kNone, 0});
    }
    m_Low = kNowhereLow;
    m_High = kNowhereHigh;
}

}  // namespace varnel::detail
