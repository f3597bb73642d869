#include "varnel/render/detail/coverage.h"

#include <algorithm>
#include <cmath>

namespace varnel::detail {
namespace {

/// Twice the area of the triangle a b p, positive when p lies left of a b, and how much of it
/// moving both corners by `slack` can make.
struct Side {
    float area;
    float doubt;

    Side(const WindowPoint& a, const WindowPoint& b, const WindowPoint& p, float slack) {
        const float dx = b.x - a.x;
        const float dy = b.y - a.y;
        const float px = p.x - a.x;
        const float py = p.y - a.y;
        area = dx * py - dy * px;
        doubt = slack * (std::abs(dx) + std::abs(dy) + 2.0F * (std::abs(px) + std::abs(py)));
    }
};

bool MayContain(const WindowPoint& a, const WindowPoint& b, const WindowPoint& c,
                const WindowPoint& p, float slack) {
    const Side sides[3] = {{a, b, p, slack}, {b, c, p, slack}, {c, a, p, slack}};
    bool left = true;
    bool right = true;
    for (const Side& side : sides) {
        left = left && side.area >= -side.doubt;
        right = right && side.area <= side.doubt;
    }
    return left || right;
}

}  // namespace

Coverage::Coverage(const GLViewportType& v, std::span<const SamplePlace> samples, float slack)
    : m_Slack(slack) {
    const auto at = [](int pixels) { return static_cast<float>(pixels); };
    if (samples.size() > kMostSamples || v.width <= 0 || v.height <= 0) return;
    // A few pixels of such a viewport are all that a frame has.
    if (std::max({std::fabs(at(v.x)), std::fabs(at(v.y)), at(v.width), at(v.height)}) > kFar)
        return;
    m_NumSamples = samples.size();
    std::copy(samples.begin(), samples.end(), m_Samples.begin());
    m_Scale = {at(v.width) / 2.0F, at(v.height) / 2.0F};
    m_Centre = {at(v.x) + m_Scale.x, at(v.y) + m_Scale.y};
    m_Low = {at(v.x) - slack, at(v.y) - slack};
    m_High = {at(v.x) + at(v.width) + slack, at(v.y) + at(v.height) + slack};
}

bool Coverage::MayCover(const WindowPoint* corners, int n) const {
    if (m_NumSamples == 0) return true;
    WindowPoint low = corners[0];
    WindowPoint high = corners[0];
    for (int i = 1; i < n; ++i) {
        low = {std::min(low.x, corners[i].x), std::min(low.y, corners[i].y)};
        high = {std::max(high.x, corners[i].x), std::max(high.y, corners[i].y)};
    }
    low = {std::max(low.x - m_Slack, m_Low.x), std::max(low.y - m_Slack, m_Low.y)};
    high = {std::min(high.x + m_Slack, m_High.x), std::min(high.y + m_Slack, m_High.y)};
    if (!(low.x <= high.x && low.y <= high.y)) return false;
    // More samples than this in the box: it is cheaper to draw than to look closer.
    constexpr int kFew = 4;
    for (std::size_t k = 0; k < m_NumSamples; ++k) {
        const SamplePlace& place = m_Samples[k];
        const int left = Floor(low.x - place.x) + 1;
        const int right = Floor(high.x - place.x);
        if (left > right) continue;
        const int bottom = Floor(low.y - place.y) + 1;
        const int top = Floor(high.y - place.y);
        if (bottom > top) continue;
        const int columns = right - left + 1;
        const int rows = top - bottom + 1;
        if (columns > kFew || rows > kFew || columns * rows > kFew) return true;
        for (int y = bottom; y <= top; ++y)
            for (int x = left; x <= right; ++x)
                if (CoversOne(corners, n,
                              {static_cast<float>(x) + place.x, static_cast<float>(y) + place.y}))
                    return true;
    }
    return false;
}

bool Coverage::CoversOne(const WindowPoint* corners, int n, const WindowPoint& sample) const {
    for (int i = 2; i < n; ++i)
        if (MayContain(corners[0], corners[i - 1], corners[i], sample, m_Slack)) return true;
    return false;
}

}  // namespace varnel::detail
