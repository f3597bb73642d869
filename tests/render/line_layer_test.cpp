// Segments as pixels: which the layer takes, and what it keeps.
#include "varnel/render/detail/line_layer.h"

#include <gtest/gtest.h>

namespace varnel::test {
namespace {

using detail::LineLayer;
using detail::LineVertex;

constexpr GLViewportType kViewport{10, 20, 20, 20};

/// A vertex at a place in framebuffer pixels, at z = 0 unless told, in black.
LineVertex At(double x, double y, float z = 0.0F, std::uint8_t red = 0) {
    return {{static_cast<float>((x - 20) / 10), static_cast<float>((y - 30) / 10), z},
            {{red, 0, 0, 255}}};
}

TEST(LineLayers, TakeWhatNeitherTheDriverDecidesNorAnythingCuts) {
    const LineLayer::ClipPlane left{-1, 0, 0, 0};  // x <= 20
    LineVertex seeThrough = At(14.2, 25.3);
    seeThrough.color.bytes[3] = 254;
    const struct {
        LineVertex from, to;
        bool taken, takenClipped;
    } cases[] = {
        {At(14.2, 25.3), At(18.4, 25.4), true, true},
        {At(14.2, 25.3), At(28.4, 25.4), true, false},   // across the clip plane
        {At(10.3, 25.3), At(18.4, 25.4), false, false},  // at the viewport's border
        {At(14.2, 25.3), At(18.4, 39.6), false, false},
        {At(14.0, 25.3), At(18.4, 25.4), false, false},  // on a pixel's border
        {At(14.2, 25.5), At(18.4, 25.4), false, false},  // and middle
        {At(14.2, 25.3, -1.01F), At(18.4, 25.4), false, false},
        {At(14.2, 25.3, 0.0F, 9), At(18.4, 25.4), false, false},  // of two colours
        {seeThrough, seeThrough, false, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(&c - cases);
        LineLayer layer;
        layer.Start(kViewport, {});
        EXPECT_EQ(layer.Add(c.from, c.to), c.taken);
        EXPECT_EQ(layer.IsEmpty(), !c.taken);
        layer.Clear();
        layer.Start(kViewport, std::span(&left, 1));
        EXPECT_EQ(layer.Add(c.from, c.to), c.takenClipped);
    }
}

TEST(LineLayers, KeepTheNearestAndOfEqualOnesTheLast) {
    LineLayer layer;
    layer.Start(kViewport, {});
    const auto red = [&] { return layer.At(15, 25)->color & 255U; };
    for (const auto& [z, sent, kept] : {std::array{0.5, 1.0, 1.0}, std::array{0.6, 2.0, 1.0},
                                        std::array{0.5, 3.0, 3.0}, std::array{-0.5, 4.0, 4.0}}) {
        const auto depth = static_cast<float>(z);
        const auto color = static_cast<std::uint8_t>(sent);
        layer.Add(At(14.2, 25.3, depth, color), At(18.4, 25.4, depth, color));
        EXPECT_EQ(red(), kept);
    }
    layer.Clear();
    EXPECT_EQ(layer.At(15, 25)->depth, detail::LayerPixel::kNone);
}

}  // namespace
}  // namespace varnel::test
