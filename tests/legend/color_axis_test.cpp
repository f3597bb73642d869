#include "varnel/legend/detail/color_axis.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace varnel::detail {
namespace {

constexpr RGBDType kRed{1, 0, 0, 1};

std::string TextsOf(const LegendScale& axis) {
    std::string all;
    for (const ScaleLabel& label : axis.labels)
        all += std::string(label.text) + ' ';
    return all;
}

TEST(ColorAxis, LabelsStandWhereTheScaleHasTheirColour) {
    struct Case {
        int mode, bands;
        double min, max, center;
        const char* texts;
    };
    const Case cases[] = {
        {COLORSCALE_LINEAR, 0, 0, 10, 0, "0 2 4 6 8 10 "},
        {COLORSCALE_LINEAR, 0, 10, 0, 0, "10 8 6 4 2 0 "},
        {COLORSCALE_LINEAR, 3, 0, 1.5, 0, "0.0 0.5 1.0 1.5 "},
        {COLORSCALE_LINEAR, 5, 90, 190, 0, "90 110 130 150 170 190 "},
        {COLORSCALE_LINEAR, 7, 0, 10, 0, "0 2 4 6 8 10 "},
        {COLORSCALE_LOGARITHMIC, 0, 1, 1000, 0, "1 10 100 1000 "},
        {COLORSCALE_LOGARITHMIC, 0, 0.001, 1000, 0, "10⁻³ 10⁻² 10⁻¹ 10⁰ 10¹ 10² 10³ "},
        {COLORSCALE_DIVERGING, 0, -2, 6, 0, "−2 0 2 4 6 "},
    };
    for (const Case& c : cases) {
        ColorScale scale;
        scale.mode = c.mode;
        scale.bands = c.bands;
        scale.min = c.min;
        scale.max = c.max;
        scale.center = c.center;
        for (const bool open : {false, true}) {
            if (open) scale.below = scale.above = kRed;
            const std::vector<RGBDType> colors = scale.Colors();
            const LegendScale axis = ColorAxis(scale, colors, 14, false);
            EXPECT_EQ(TextsOf(axis), c.texts);
            ASSERT_FALSE(axis.bands.empty());
            EXPECT_EQ(axis.bands.back().end, 1.0);
            EXPECT_EQ(axis.arrowAbove > 0, open);
            EXPECT_EQ(axis.labels.front().at, axis.arrowBelow) << c.texts;
            EXPECT_NEAR(axis.labels.back().at, 1 - axis.arrowAbove, 1e-9) << c.texts;
            // The colour beside a label in the middle is the one of its value.
            const ScaleLabel& middle = axis.labels[1];
            const double value = c.min == 0.001 ? 0.01 : std::stod(middle.text);
            std::size_t k = 0;
            while (axis.bands[k].end < middle.at + 1e-9)
                ++k;
            const RGBDType wanted = scale.Color(value);
            EXPECT_NEAR(axis.bands[k].color.g, wanted.g, 0.02) << c.texts;
        }
    }
}

TEST(ColorAxis, OneValueAndNoScale) {
    ColorScale scale;
    scale.min = scale.max = 5;
    const std::vector<RGBDType> colors = scale.Colors();
    EXPECT_EQ(TextsOf(ColorAxis(scale, colors, 14, false)), "5 ");
    EXPECT_TRUE(ColorAxis(scale, {}, 14, false).bands.empty());
    EXPECT_TRUE(ColorAxisLabels(1, 1, 14, false).empty());
}

}  // namespace
}  // namespace varnel::detail
