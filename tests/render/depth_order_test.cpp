#include "varnel/render/detail/depth_order.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "varnel/render/detail/transparent.h"

namespace varnel::detail {
namespace {

/// A square of 200 pixels, red to tell it, whose left and right edges lie at two depths.
void AddSquare(TransparentBatch& batch, std::uint8_t name, double left, double right) {
    batch.SetViewport({0, 0, 200, 200});
    const Vec3 corners[4] = {{-1, -1, left}, {-1, 1, left}, {1, 1, right}, {1, -1, right}};
    const PackedColor colors[4] = {{{name}}, {{name}}, {{name}}, {{name}}};
    batch.AddPolygon({}, corners, colors, nullptr, 4);
}

/// The names of the triangles over a place of the viewport, in the order of drawing.
std::string NamesOver(const TransparentBatch& batch, float x, float y) {
    std::string names;
    const std::vector<std::uint32_t>& index = batch.Indices();
    for (std::size_t i = 0; i < index.size(); i += 3) {
        int left = 0;
        for (std::size_t k = 0; k < 3; ++k) {
            const float* const a = batch.Vertices()[index[i + k]].position;
            const float* const b = batch.Vertices()[index[i + (k + 1) % 3]].position;
            left += (b[0] - a[0]) * (y - a[1]) > (b[1] - a[1]) * (x - a[0]) ? 1 : 0;
        }
        if (left % 3 == 0) names += static_cast<char>(batch.Vertices()[index[i]].color.bytes[0]);
    }
    return names;
}

TEST(DepthOrder, LargePolygonsAreSplitWhereTheyCross) {
    TransparentBatch batch;
    AddSquare(batch, 'a', -0.5, 0.5);  // nearer on the left
    AddSquare(batch, 'b', 0.5, -0.5);
    AddSquare(batch, 'c', 0.9, 0.9);
    AddSquare(batch, 'd', 0.5, -0.5);  // in the plane of b
    batch.Sort();
    for (const float x : {0.003F, 0.31F, 0.97F}) {  // a pixel is 0.01
        EXPECT_EQ(NamesOver(batch, -x, 0.13F), "cbda") << x;
        EXPECT_EQ(NamesOver(batch, x, 0.13F), "cabd") << x;
    }
}

TEST(DepthOrder, WhatReachesToNoPlaceIsNotSplit) {
    TransparentBatch batch;
    batch.SetViewport({0, 0, 200, 200});
    const Vec3 corners[3] = {{-1, -1, 0.5}, {1e300, 0, -0.9}, {1, 1, -0.5}};  // floats end at 3e38
    const PackedColor colors[3] = {{{'i'}}, {{'i'}}, {{'i'}}};
    batch.AddPolygon({}, corners, colors, nullptr, 3);
    AddSquare(batch, 'a', -0.5, 0.5);
    batch.Sort();
    EXPECT_EQ(std::ranges::count(batch.Vertices(), 'i',
                                 [](const FillVertex& v) { return v.color.bytes[0]; }),
              3);
}

}  // namespace
}  // namespace varnel::detail
