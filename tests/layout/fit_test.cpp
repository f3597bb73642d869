#include "varnel/layout/fit.h"
#include "varnel/layout/detail/place_texts.h"

#include <gtest/gtest.h>

#include <cmath>

namespace varnel {
namespace {

constexpr double kLabels = 60.0;  // pixels that stand around the box on each side

PixelRect WithLabels(const BoxPlacement& p) {
    PixelRect all = BoxExtent(p);
    return {all.left - 2 * kLabels, all.bottom - kLabels, all.right, all.top + kLabels / 2};
}

BoxPlacement Frame(int width, int height, double azimuth, double elevation) {
    BoxPlacement p;
    p.width = width;
    p.height = height;
    p.trueProportions = true;
    p.rotation = {-elevation, 0.0, 90.0 + azimuth, 0.0};
    return p;
}

TEST(Fit, EverythingIsInsideAndTheBoxTouchesItsRoom) {
    for (const auto& [width, height] :
         {std::pair{1600, 1200}, {640, 480}, {360, 640}, {320, 240}}) {
        for (const double azimuth : {-127.5, -60.0, 10.0, -90.0}) {
            for (const double elevation : {0.0, 30.0, 90.0}) {
                for (const bool fill : {false, true}) {
                    FitOptions options;
                    options.top = 30.0;
                    options.fillDepth = fill ? 0.12 : 0.0;
                    const BoxPlacement p =
                        FitBox(Frame(width, height, azimuth, elevation), options, WithLabels);
                    const PixelRect all = WithLabels(p);
                    const double margin = 0.02 * std::min(width, height);
                    const PixelRect room{margin, margin, width - margin, height - margin - 30.0};
                    SCOPED_TRACE(testing::Message() << width << "x" << height << " " << azimuth
                                                    << " " << elevation << " " << fill);
                    EXPECT_TRUE(room.Contains(all, 0.5));
                    const bool wide = all.Width() > room.Width() - 1.0;
                    const bool high = all.Height() > room.Height() - 1.0;
                    const bool frontal =
                        elevation == 0.0 || (elevation == 90.0 && azimuth == -90.0);
                    EXPECT_TRUE(wide || high || (fill && !frontal));
                    EXPECT_TRUE((wide && high) || !fill || !frontal);
                }
            }
        }
    }
}

TEST(PlacedTexts, LieOnNothingAndStayInTheRoom) {
    const PixelRect room{0.0, 0.0, 500.0, 400.0};
    unsigned seed = 1;
    const auto random = [&](double most) {
        seed = seed * 1103515245U + 12345U;
        return most * (seed >> 16U & 0x7FFFU) / 32768.0;
    };
    for (const int markers : {0, 20, 300}) {
        std::vector<PixelRect> taken;
        std::vector<detail::TextToPlace> texts;
        for (int i = 0; i < 60; ++i)
            texts.push_back({{random(500.0), random(400.0)}, 10.0 + random(50.0), 12.0, 3.0});
        for (int i = 0; i < markers; ++i) {
            const PixelPoint at = i < 60 ? texts[static_cast<std::size_t>(i)].at
                                         : PixelPoint{random(500.0), random(400.0)};
            taken.push_back({at.x - 4.0, at.y - 4.0, at.x + 4.0, at.y + 4.0});
        }
        // Data may have no place at all.
        texts.push_back({{NAN, NAN}, 20.0, 12.0, 3.0});
        taken.push_back({NAN, NAN, NAN, NAN});
        int placed = 0;
        for (const auto& box : detail::PlaceTexts(texts, taken, room, 3.0)) {
            if (!box) continue;
            EXPECT_TRUE(room.Contains(*box));
            for (const PixelRect& other : taken)
                EXPECT_FALSE(box->Overlaps(other));
            taken.push_back(*box);
            ++placed;
        }
        EXPECT_GE(placed, markers == 300 ? 20 : 55) << markers;
    }
}

TEST(PlaceTexts, NowhereInARoomThatIsNoPlace) {
    const detail::TextToPlace text{{100.0, 100.0}, 40.0, 12.0, 3.0};
    for (const double end : {std::nan(""), HUGE_VAL}) {
        const PixelRect room{-end, -end, end, end};
        EXPECT_FALSE(detail::PlaceTexts(std::span(&text, 1), {}, room, 3.0)[0]);
    }
}

TEST(PlaceTexts, RatherBesideALineThanOnIt) {
    const PixelRect room{0.0, 0.0, 200.0, 200.0};
    const detail::TextToPlace text{{100.0, 100.0}, 40.0, 12.0, 3.0};
    // Up and to the right of the point, then all around it.
    std::vector<PixelRect> lines{{100.0, 100.0, 200.0, 200.0}};
    const auto beside = detail::PlaceTexts(std::span(&text, 1), {}, room, 3.0, lines)[0];
    ASSERT_TRUE(beside);
    EXPECT_LT(beside->right, 100.0);
    lines.push_back({0.0, 0.0, 200.0, 200.0});
    const auto on = detail::PlaceTexts(std::span(&text, 1), {}, room, 3.0, lines)[0];
    ASSERT_TRUE(on);
    EXPECT_EQ(on->left, 80.0);
}

TEST(Fit, SharesOfTheFrameAtUsualViews) {
    FitOptions options;
    options.top = StripsFor(TextSizesFor(1600, 1200), true, false, false).top;
    const double labels = 3.5 * TextSizesFor(1600, 1200).label;
    const auto measure = [&](const BoxPlacement& p) {
        const PixelRect box = BoxExtent(p);
        return PixelRect{box.left - labels, box.bottom - labels, box.right, box.top};
    };
    const auto share = [&](const BoxPlacement& p) {
        return BoxExtent(p).Width() * BoxExtent(p).Height() / (1600.0 * 1200.0);
    };
    EXPECT_GT(share(FitBox(Frame(1600, 1200, -127.5, 30), options, measure)), 0.40);
    options.fillDepth = 0.12;
    EXPECT_GT(share(FitBox(Frame(1600, 1200, -90, 0), options, measure)), 0.70);
}

TEST(Fit, ATurningBoxKeepsItsSizeAndFitsEveryWay) {
    const BoxPlacement fit = FitTurningBox(Frame(800, 600, -60, 25), {}, WithLabels);
    for (int azimuth = -180; azimuth < 180; azimuth += 5) {
        BoxPlacement p = FitTurningBox(Frame(800, 600, azimuth, 25), {}, WithLabels);
        EXPECT_NEAR(p.rect.x, fit.rect.x, 1e-3);
        EXPECT_NEAR(p.offset.z, fit.offset.z, 1e-3);
        EXPECT_TRUE((PixelRect{9.0, 9.0, 791.0, 591.0}.Contains(WithLabels(p)))) << azimuth;
    }
}

TEST(Fit, ProportionsHoldOnTheScreen) {
    FitOptions options;
    options.proportions = {2.0, 1.0, 1.0, 0.0};
    const BoxPlacement p = FitBox(Frame(300, 900, -90, 90), options, BoxExtent);
    EXPECT_NEAR(BoxExtent(p).Width() / BoxExtent(p).Height(), 2.0, 1e-6);
    EXPECT_NEAR(BoxToPixel(p, p.rect).x, 300 - 6, 0.5);
}

TEST(Fit, TextSizesFollowTheSmallerSide) {
    EXPECT_NEAR(TextSizesFor(640, 480).label, 14.67, 0.01);
    EXPECT_EQ(TextSizesFor(200, 9000).label, 9.0);
    EXPECT_EQ(TextSizesFor(4000, 9000).label, 60.0);
    EXPECT_GT(TextSizesFor(1600, 1200).label, 25.0);
    EXPECT_EQ(StripsFor(TextSizesFor(640, 480), false, false, false).top, 0.0);
}

}  // namespace
}  // namespace varnel
