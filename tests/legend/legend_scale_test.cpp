// Colour scales of legends: the colours are those that a chart gives to the same values.
#include "varnel/legend/detail/legend_scale.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace varnel::detail {
namespace {

std::vector<RGBDType> Numbered(int n) {
    std::vector<RGBDType> colors;
    for (int i = 0; i < n; ++i)
        colors.push_back({static_cast<double>(i), 0, 0, 1});
    return colors;
}

/// The number of the colour at a place of a scale.
int ColorAt(const LegendScale& scale, double at) {
    for (const ScaleBand& band : scale.bands)
        if (at < band.end) return static_cast<int>(band.color.r);
    return -1;
}

/// The number of the colour that the context's repeating texture gives to a value.
int TextureColor(int n, double min, double max, double value) {
    const int size = static_cast<int>(std::pow(2.0, std::max(1.0, std::ceil(std::log2(n)))));
    const double t = (value - min) / (max * size / n - min) + 0.004;
    const int texel = static_cast<int>(std::floor(t * size));
    return std::min(((texel % size) + size) % size, n - 1);
}

TEST(ColorBar, HasTheColoursThatTheTextureGivesToItsValues) {
    const struct {
        int n;
        double min, max;
    } cases[] = {{1, 0, 10},   {2, 0, 1},    {5, 0, 10},     {8, 0, 80},
                 {8, 90, 200}, {5, 10, 20},  {5, -20, -10},  {256, 0, 1},
                 {256, 5, 6},  {100, -1, 1}, {256, -3, 1e6}, {7, 1e-9, 2e-9}};
    for (const auto& c : cases) {
        const LegendScale scale = ColorBarScale(Numbered(c.n), c.min, c.max, {});
        ASSERT_FALSE(scale.bands.empty());
        EXPECT_EQ(scale.bands.back().end, 1.0);
        double begin = 0.0;
        int compared = 0;
        for (const ScaleBand& band : scale.bands) {
            EXPECT_GT(band.end, begin);
            // The middle of each band: at the borders rounding decides. The last band may hide the
            // first colour, which returns at the very maximum.
            const double at = (begin + std::min(band.end, 0.99)) / 2;
            begin = band.end;
            if (at >= 0.99) continue;
            EXPECT_EQ(ColorAt(scale, at),
                      TextureColor(c.n, c.min, c.max, c.min + at * (c.max - c.min)))
                << c.n << " colours, " << c.min << " to " << c.max << " at " << at;
            ++compared;
        }
        EXPECT_GT(compared, 0);
    }
}

TEST(ColorBar, TheFirstColourDoesNotReturnAtTheMaximum) {
    const LegendScale scale = ColorBarScale(Numbered(256), 0, 1, {});
    EXPECT_EQ(ColorAt(scale, 0.9999), 255);
}

TEST(ColorBar, NothingToShowIsAnEmptyScale) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double most = std::numeric_limits<double>::max();
    EXPECT_TRUE(ColorBarScale({}, 0, 1, {}).bands.empty());
    EXPECT_TRUE(ColorBarScale(Numbered(4), 1, 1, {}).bands.empty());
    EXPECT_TRUE(ColorBarScale(Numbered(4), nan, 1, {}).bands.empty());
    EXPECT_TRUE(ColorBarScale(Numbered(4), -most, most, {}).bands.empty());
    EXPECT_FALSE(ColorBarScale(Numbered(4), 0, most / 8, {.ticSpace = 1.0}).bands.empty());
}

std::vector<CString> Texts(const LegendScale& scale) {
    std::vector<CString> texts;
    for (const ScaleLabel& label : scale.labels)
        texts.push_back(label.text);
    return texts;
}

TEST(ColorBar, LabelsStandAtMultiplesOfTheirSpace) {
    using Words = std::vector<CString>;
    ScaleFormat format{.ticSpace = 0.1};
    const LegendScale scale = ColorBarScale(Numbered(4), -0.2, 0.3, format);
    EXPECT_EQ(Texts(scale), (Words{"-0.2", "-0.1", "0.0", "0.1", "0.2", "0.3"}));
    EXPECT_NEAR(scale.labels[2].at, 0.4, 1e-12);
    EXPECT_EQ(scale.labels[5].at, 1.0) << "rounding does not lose the last one";

    // Backwards ranges count backwards.
    EXPECT_NEAR(ColorBarScale(Numbered(4), 0.3, -0.2, format).labels[0].at, 1.0, 1e-12);
    format = {.format = 2, .suffixes = " KMBT", .ticSpace = 500};
    EXPECT_EQ(Texts(ColorBarScale(Numbered(4), 0, 1500, format)),
              (Words{"0.0", "500.0", "1.0K", "1.5K"}));
    format = {.decimals = 2, .ticSpace = 1};
    EXPECT_EQ(Texts(ColorBarScale(Numbered(4), 0.5, 2.5, format)), (Words{"1.00", "2.00"}));
    format = {.ticSpace = 1e-12};
    EXPECT_LE(ColorBarScale(Numbered(4), 0, 1, format).labels.size(), 501U);
    format = {.ticSpace = 0.5};
    EXPECT_TRUE(ColorBarScale(Numbered(4), 1e12, 1e12 + 1, format).labels.empty())
        << "more digits than a label should have";
}

TEST(ColorBar, RoundSteps) {
    EXPECT_EQ(RoundStep(110, 10), 20);
    EXPECT_EQ(RoundStep(100, 10), 10);
    EXPECT_EQ(RoundStep(-100, 10), 10);
    EXPECT_NEAR(RoundStep(0.3, 10), 0.05, 1e-15);
    EXPECT_EQ(RoundStep(0, 10), 0);
    EXPECT_EQ(RoundStep(std::numeric_limits<double>::infinity(), 10), 0);
}

TEST(ContourScale, BandsAreEvenAndLabelledBetweenThem) {
    const std::vector<double> levels = {1, 2.5, 100};
    const LegendScale scale = ContourScale(levels, Numbered(4), {});
    ASSERT_EQ(scale.bands.size(), 4U);
    EXPECT_EQ(scale.bands[1].end, 0.5);
    EXPECT_EQ(Texts(scale), (std::vector<CString>{"1.0", "2.5", "100.0"}));
    EXPECT_EQ(scale.labels[2].at, 0.75);
    // A colour less than levels: the bands end at levels.
    EXPECT_EQ(ContourScale(levels, Numbered(2), {}).labels[2].at, 1.0);
    // Fewer colours than bands: as many bands as there are.
    EXPECT_EQ(ContourScale(levels, Numbered(1), {}).labels.size(), 0U);
    EXPECT_TRUE(ContourScale({}, Numbered(2), {}).bands.empty());
    EXPECT_TRUE(ContourScale(levels, {}, {}).bands.empty());
}

TEST(ContourScale, DecimalsTellTheValues) {
    const struct {
        std::vector<double> values;
        int format, decimals;
    } rows[] = {{{1, 20, 0}, 0, 0},   {{0.25, 3}, 0, 2},     {{0.1 + 0.2}, 0, 1},
                {{1e-8, 2e-8}, 0, 8}, {{1234567.25}, 0, 2},  {{150, 1500}, 1, 1},
                {{125000}, 2, 0},     {{1250000}, 2, 2},     {{125}, 3, 3},
                {{1.0 / 3}, 0, 10},   {{std::nan("")}, 0, 0}};
    for (const auto& row : rows)
        EXPECT_EQ(NeededDecimals(row.values, row.format), row.decimals) << row.values[0];
}

}  // namespace
}  // namespace varnel::detail
