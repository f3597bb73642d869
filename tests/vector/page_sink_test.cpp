#include "varnel/vector/detail/page_sink.h"

#include <gtest/gtest.h>

#include <vector>

namespace varnel::detail {
namespace {

/// Keeps the lines and the pictures of a page.
struct Kept : PageCanvas {
    void Fill(const Area&, const RGBDType&, bool) override {}
    void FillSmooth(const std::vector<SmoothTriangle>&) override {}
    void Stroke(const std::vector<Ring>& rings, const PageStroke& stroke) override {
        EXPECT_TRUE(stroke.dashes.empty());
        lines.insert(lines.end(), rings.begin(), rings.end());
    }
    void Text(const PageText&) override {}
    void Picture(const PagePicture& picture) override { pictures.push_back(picture); }
    void BeginClip(const Area&) override {}
    void EndClip() override {}

    std::vector<Ring> lines;
    std::vector<PagePicture> pictures;
};

TEST(PageSink, LinesFromFarAwayAndOfAnyWidthEndBesideThePage) {
    PageSink sink(400, 300, {});
    SceneState state;
    state.viewport = {0, 0, 400, 300};
    constexpr RGBDType kRed{1, 0, 0, 1};
    ShadedShape shape;
    shape.width = 3e7F;
    for (const double far : {2.0, 1e10, 1e38}) {
        shape.lines.push_back({{0.5, far, 0}, kRed});
        shape.lines.push_back({{0.5, -4e10, 0}, kRed});
    }
    shape.lines.push_back({{0.5, HUGE_VAL, 0}, kRed});
    shape.lines.push_back({{0.5, 0, 0}, kRed});
    sink.DrawShape(state, shape);
    // A viewport far larger than the page, around it.
    state.viewport = {-1'000'000'000, -1'000'000'000, 2'000'000'000, 2'000'000'000};
    shape.lines = {{{-1, 1e-7, 0}, kRed}, {{1, 1e-7, 0}, kRed}};
    sink.DrawShape(state, shape);
    Kept page;
    sink.Compose(page);
    EXPECT_FALSE(page.lines.empty());
    constexpr int kAside = 101 * 100;  // hundredths of a pixel
    for (const Ring& line : page.lines)
        for (const GridPoint& p : line) {
            EXPECT_TRUE(p.x >= -kAside && p.x <= 400 * 100 + kAside) << p.x;
            EXPECT_TRUE(p.y >= -kAside && p.y <= 300 * 100 + kAside) << p.y;
        }
}

TEST(PageSink, SoManyTilesThatTheyWouldFillTheMemoryAreOnePicture) {
    constexpr BYTE pixels[] = {255, 0, 0, 255, 0, 0, 255, 255};  // red, blue
    SceneState state;
    state.viewport = {0, 0, 400, 300};
    for (const int across : {3, 300'000}) {
        PageSink sink(400, 300, {});
        const ImageQuad image{pixels, 2, 1,  {{{-1, -1, 0}, {-1, 1, 0}, {1, 1, 0}, {1, -1, 0}}},
                              across, 2, {}, {}};
        sink.DrawImage(state, image);
        Kept page;
        sink.Compose(page);
        ASSERT_EQ(page.pictures.size(), across == 3 ? 6U : 1U);
        const PagePicture& last = page.pictures.back();
        EXPECT_EQ(last.placement[0] * (across == 3 ? 3 : 1), 400.0);
        EXPECT_EQ(last.pixels.size(), 4U * static_cast<unsigned>(last.width * last.height));
        EXPECT_LE(last.width, 2048);
    }
}

}  // namespace
}  // namespace varnel::detail
