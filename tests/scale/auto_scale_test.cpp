#include "varnel/scale/auto_scale.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

#include "varnel/scale/tic_labels.h"

namespace varnel {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kMost = std::numeric_limits<double>::max();

ScaleOptions With(void (*set)(ScaleOptions&)) {
    ScaleOptions options;
    set(options);
    return options;
}
const ScaleOptions kPlain;
const ScaleOptions kRound = With([](ScaleOptions& o) { o.round = true; });
const ScaleOptions kTight = With([](ScaleOptions& o) { o.tight = true; });
const ScaleOptions kZero = With([](ScaleOptions& o) { o.zero = true; });
const ScaleOptions kBars = With([](ScaleOptions& o) { o.base = 0.0; });
const ScaleOptions kWhole = With([](ScaleOptions& o) { o.whole = true; });
const ScaleOptions kMargin = With([](ScaleOptions& o) { o.margin = 0.05; });
const ScaleOptions kShort = With([](ScaleOptions& o) { o.length = 4.0; });
const ScaleOptions kLog = With([](ScaleOptions& o) { o.logarithmic = true; });
const ScaleOptions kLogAcross = With([](ScaleOptions& o) { o.logarithmic = o.across = true; });

std::string LabelsOf(const AxisScale& scale) {
    LabelOptions options;
    options.asciiMinus = true;
    options.logarithmic = scale.logarithmic && scale.majorStep == 0.0;
    std::string all;
    for (const std::string& text : ChooseLabels(scale.majors, options).texts)
        all += (all.empty() ? "" : " ") + text;
    return all;
}

TEST(AutoScale, LimitsAndTicsOfKnownRanges) {
    const struct {
        double min, max;
        const ScaleOptions& options;
        double low, high;
        const char* labels;
    } cases[] = {
        {94, 195, kPlain, 90, 195, "100 120 140 160 180"},
        {94, 195, kRound, 80, 200, "80 100 120 140 160 180 200"},
        {94, 195, kTight, 94, 195, "100 120 140 160 180"},
        {94, 195, kZero, 0, 200, "0 50 100 150 200"},
        {94, 195, kBars, 0, 200, "0 50 100 150 200"},
        {-30, -3, kBars, -30, 0, "-30 -25 -20 -15 -10 -5 0"},
        {30, 1000, kPlain, 0, 1000, "0 200 400 600 800 1000"},               // 0 costs 3 %
        {300, 1000, kPlain, 300, 1000, "300 400 500 600 700 800 900 1000"},  // and here 30 %
        {-873, -12, kPlain, -900, 0, "-800 -600 -400 -200 0"},
        {0.3, 0, kPlain, 0, 0.3, "0.00 0.05 0.10 0.15 0.20 0.25 0.30"},
        {2012, 2015, kWhole, 2012, 2015, "2012 2013 2014 2015"},
        {2020, 2020, kWhole, 2019, 2021, "2019 2020 2021"},
        {10, 30, kMargin, 9, 31, "10 15 20 25 30"},
        {0, 870, kShort, 0, 900, "0 500"},
        {5, 5, kPlain, 4.5, 5.5, "4.6 4.8 5.0 5.2 5.4"},
        {0, 0, kPlain, -1, 1, "-1.0 -0.5 0.0 0.5 1.0"},
        {0, 0, kBars, 0, 1, "0.0 0.2 0.4 0.6 0.8 1.0"},
        {std::nan(""), 1, kPlain, 0, 1, "0.0 0.2 0.4 0.6 0.8 1.0"},
        {-kInf, kInf, kPlain, 0, 1, "0.0 0.2 0.4 0.6 0.8 1.0"},
        {5e-324, 5e-324, kPlain, -1, 1, "-1.0 -0.5 0.0 0.5 1.0"},
        {1, 1e4, kLog, 1, 1e4, "1 10 100 1000 10000"},
        {1.5, 18, kLog, 1, 20, "1 2 5 10 20"},
        {2, 9, kLog, 2, 9, "2 3 4 5 6 7 8 9"},
        {3e-5, 4e2, kLogAcross, 2e-5, 5e2, "10⁻⁴ 10⁻³ 10⁻² 10⁻¹ 10⁰ 10¹ 10²"},
        {1, 1e12, kLogAcross, 1, 1e12, "10⁰ 10² 10⁴ 10⁶ 10⁸ 10¹⁰ 10¹²"},
        {1, 1e40, kLog, 1, 1e40, "10⁰ 10¹⁰ 10²⁰ 10³⁰ 10⁴⁰"},
        {0, 5, kLog, 1, 10, "1 2 5 10"},
    };
    for (const auto& c : cases) {
        const AxisScale scale = AutoScale(c.min, c.max, c.options);
        EXPECT_DOUBLE_EQ(scale.min, c.low) << c.min << ".." << c.max;
        EXPECT_DOUBLE_EQ(scale.max, c.high) << c.min << ".." << c.max;
        EXPECT_EQ(LabelsOf(scale), c.labels) << c.min << ".." << c.max;
    }
}

/// What holds for every range: the data inside, tics inside and in order, labels exact.
void ExpectSound(double lo, double hi, const ScaleOptions& options) {
    const AxisScale scale = AutoScale(lo, hi, options);
    SCOPED_TRACE(testing::Message()
                 << lo << ".." << hi << " -> " << scale.min << ".." << scale.max);
    ASSERT_TRUE(std::isfinite(scale.min) && std::isfinite(scale.max) && scale.min < scale.max);
    EXPECT_TRUE(scale.min <= lo && hi <= scale.max);
    const double base = options.base.value_or(lo);
    EXPECT_TRUE(scale.min <= base && base <= scale.max);
    for (const std::vector<double>* tics : {&scale.majors, &scale.minors}) {
        EXPECT_TRUE(std::is_sorted(tics->begin(), tics->end()));
        for (const double v : *tics)
            EXPECT_TRUE(scale.min <= v && v <= scale.max);
    }
    EXPECT_GE(scale.majors.size(), 2U);
    EXPECT_LE(scale.majors.size(), 12U);
    const std::vector<std::string> texts = ChooseLabels(scale.majors).texts;
    for (std::size_t i = 1; i < texts.size(); ++i)
        EXPECT_NE(texts[i], texts[i - 1]);
}

TEST(AutoScale, RandomRangesWasteLittleAndHoldTheirData) {
    std::mt19937_64 random(7);
    std::uniform_real_distribution<> unit(-1.0, 1.0);
    double waste = 0.0;
    for (int i = 0; i < 10000; ++i) {
        const double size = std::pow(10.0, 8.0 * unit(random));
        double lo = size * unit(random);
        double hi = size * unit(random);
        if (lo > hi) std::swap(lo, hi);
        ExpectSound(lo, hi, kPlain);
        const AxisScale scale = AutoScale(lo, hi);
        waste += 1.0 - (hi - lo) / (scale.max - scale.min);
        EXPECT_TRUE(scale.majors.size() >= 4 && scale.majors.size() <= 8) << lo << ".." << hi;
        if (i % 20 != 0) continue;
        for (const ScaleOptions* options : {&kRound, &kTight, &kZero, &kBars, &kMargin, &kShort})
            ExpectSound(lo, hi, *options);
        ExpectSound(std::abs(lo), std::abs(lo) * std::pow(10.0, 30.0 * std::abs(unit(random))),
                    kLog);
        ExpectSound(lo, lo, kPlain);
        ExpectSound(1e9 + lo * 1e-8, 1e9 + hi * 1e-8, kPlain);
    }
    EXPECT_LT(waste / 10000, 0.06);
    for (const double extreme : {kMost, 1e305, 1e-305})
        ExpectSound(-extreme, extreme / 3, kPlain);
    for (const double least : {5e-324, 1e-300, 1e300})
        ExpectSound(least, kMost, kLog);
    ScaleOptions odd;
    for (const double length : {std::nan(""), HUGE_VAL}) {
        odd.length = length;
        ExpectSound(-3, 8, odd);
    }
}

TEST(AutoScale, GivenLimitsAreKept) {
    const AxisScale down = TicsInside(12.5, 0.5, kWhole);
    EXPECT_EQ(down.min, 12.5);
    EXPECT_EQ(down.max, 0.5);
    EXPECT_EQ(LabelsOf(down), "2 4 6 8 10 12");
    EXPECT_TRUE(TicsInside(3, 3).majors.empty());
    EXPECT_TRUE(TicsInside(0, 3, kLog).majors.empty());
}

TEST(AutoScale, WhatIsNoDataIsCounted) {
    const double values[] = {3, -1, std::nan(""), kInf, 0, 7};
    const DataRange range = RangeOf(values);
    EXPECT_EQ(range.min, -1);
    EXPECT_EQ(range.max, 7);
    EXPECT_EQ(range.leftOut, 2);
    const DataRange positive = RangeOf(values, true);
    EXPECT_EQ(positive.min, 3);
    EXPECT_EQ(positive.count, 2);
    EXPECT_EQ(positive.leftOut, 4);
}

}  // namespace
}  // namespace varnel
