#include "varnel/chart/detail/scale_numbers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "tests/support/values.h"

namespace varnel::detail {
namespace {

using test::kInf;
using test::kNaN;

struct Rounding {
    double min, max;
    double toMajor[2];
    double toMinor[2];
};

// Worked out apart from the library, in double precision with truncating integers.
TEST(RoundAxis, GivesTheTableExactly) {
    const Rounding table[] = {
        {0, 0, {0, 12}, {0, 10.5}},
        {1e-21, 2e-21, {0, 12}, {0, 10.5}},
        {5, 5, {0, 12}, {0, 10.5}},
        {-5, -5, {-10, 2}, {-10, 0.5}},
        {0, 7.3, {0, 8}, {0, 7.5}},
        {-3, 7, {-6, 10}, {-3.5, 7.5}},
        {0, 10, {0, 12}, {0, 10.5}},
        {1, 10, {0, 12}, {0.5, 10.5}},
        {2, 3, {1.6, 3.2}, {1.95, 3.0500000000000003}},
        {0.1, 0.35, {0, 0.4}, {0.08, 0.36}},
        {-0.02,
         0.013,
         {-0.040000000000000036, 0.020000000000000018},
         {-0.030000000000000027, 0.020000000000000018}},
        {-20, -5, {-25, 0}, {-21, -4}},
        {120, 480, {100, 500}, {100, 500}},
        {99, 100, {98.8, 100.4}, {98.95, 100.05}},
        {1.7e9, 1.7e9 + 40, {1699999980, 1700000060}, {1699999995, 1700000045}},
        {0, 11, {0, 15}, {0, 12}},
    };
    for (const Rounding& row : table) {
        SCOPED_TRACE(testing::Message() << row.min << " .. " << row.max);
        for (int minorOnly : {0, 1}) {
            double min = row.min;
            double max = row.max;
            RoundAxis(min, max, minorOnly);
            const double* expected = minorOnly != 0 ? row.toMinor : row.toMajor;
            EXPECT_EQ(min, expected[0]);
            EXPECT_EQ(max, expected[1]);
            EXPECT_FALSE(std::signbit(max) && max == 0.0);
        }
    }
}

TEST(RoundAxis, ContainsTheRange) {
    std::mt19937 random(1);
    std::uniform_real_distribution<double> exponent(-12.0, 12.0);
    std::uniform_real_distribution<double> place(-3.0, 3.0);
    for (int i = 0; i < 20000; ++i) {
        const double size = std::pow(10.0, exponent(random));
        const double a = place(random) * size;
        const double b = a + (0.001 + std::abs(place(random))) * size;
        double min = a;
        double max = b;
        RoundAxis(min, max, i % 2);
        // Carrying the range onto positive numbers and back costs a few rounding errors.
        const double tolerance = 1e-12 * size;
        ASSERT_LE(min, a + tolerance) << a << " .. " << b;
        ASSERT_GE(max, b - tolerance) << a << " .. " << b;
        ASSERT_LT(max - min, 12.0 * (b - a)) << a << " .. " << b;
    }
}

TEST(RoundAxis, LeavesWhatIsNoRange) {
    const double bad[][2] = {{kNaN, 1},       {1, kNaN}, {-kInf, kInf}, {0, kInf},
                             {-1e308, 1e308}, {5, 3},    {1e308, 1e308}};
    for (const auto& range : bad) {
        double min = range[0];
        double max = range[1];
        RoundAxis(min, max, 0);
        EXPECT_TRUE(min == range[0] || std::isnan(range[0]));
        EXPECT_TRUE(max == range[1] || std::isnan(range[1]));
    }
}

TEST(CalcAxisTicMarks, GivesTheTableExactly) {
    struct Row {
        double min, max, origin, space;
        int perMajor, decimals;
    };
    const Row table[] = {
        {0, 8, 0, 0.5, 4, 0},        {0, 10, 0, 0.5, 10, 0},
        {10, 0, 0, 0.5, 10, 0},      {-10, 10, 0, 1, 5, 0},
        {-20, -5, -5, 1, 5, 0},      {3, 7, 3, 0.2, 5, 0},
        {97, 123, 100, 2, 5, 0},     {0, 0.3, 0, 0.02, 5, 1},
        {0, 1, 0, 0.05, 10, 1},      {0.7, 0.95, 0.7000000000000001, 0.02, 5, 1},
        {-3, 0.5, 0, 0.2, 5, 0},     {1000, 1060, 1000, 5, 4, 0},
        {0, 11, 0, 1, 5, 0},         {-0.004, -0.001, -0.001, 0.0002, 5, 3},
        {0.3, 0.9, 0.4, 0.05, 4, 1},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(testing::Message() << row.min << " .. " << row.max);
        const TicMarks tics = CalcAxisTicMarks(row.min, row.max);
        EXPECT_EQ(tics.origin, row.origin);
        EXPECT_EQ(tics.space, row.space);
        EXPECT_EQ(tics.perMajor, row.perMajor);
        EXPECT_EQ(tics.decimals, row.decimals);
    }
}

TEST(CalcAxisTicMarks, HasNoTicsForWhatIsNoRange) {
    const double bad[][2] = {{kNaN, 1},       {1, kNaN}, {-kInf, 0},
                             {-1e308, 1e308}, {4, 4},    {0, 5e-324}};
    for (const auto& range : bad) {
        const TicMarks tics = CalcAxisTicMarks(range[0], range[1]);
        EXPECT_EQ(tics.space, 0.0) << range[0] << " .. " << range[1];
        EXPECT_TRUE(std::isfinite(tics.origin));
        EXPECT_EQ(tics.perMajor, 1);
        EXPECT_EQ(tics.decimals, 0);
    }
    EXPECT_EQ(CalcAxisTicMarks(4, 4).origin, 4.0);
}

TEST(CenterInside, MovesByWholeMajorIntervals) {
    EXPECT_EQ(CenterInside(0, 10, 5, 2), 5.0);
    EXPECT_EQ(CenterInside(3, 10, 0, 2), 4.0);
    EXPECT_EQ(CenterInside(-10, -0.5, 0, 2), -2.0);
    // Off a limit by a rounding error: on the limit, else the axis would lose all its tics.
    EXPECT_EQ(CenterInside(0.3, 1, 0.3 - 1e-17 * 6, 0.2), 0.3);
    EXPECT_EQ(CenterInside(-1, 0.3, 0.30000000000000004, 0.2), 0.3);
    EXPECT_EQ(CenterInside(3.1, 3.2, 0, 2), 4.0);  // no multiple inside
}

TEST(LowestDecade, LiesInsideWhenThereIsOne) {
    EXPECT_EQ(LowestDecade(1, 1000), 1.0);
    EXPECT_EQ(LowestDecade(0.001, 5), 0.001);
    EXPECT_EQ(LowestDecade(3, 5000), 10.0);
    EXPECT_EQ(LowestDecade(2, 8), 2.0);
}

TEST(ExtremesOfData, PassOverWhatIsNotFinite) {
    const double values[] = {kNaN, 4, kInf, -2, 7, -kInf};
    EXPECT_EQ(MinimumOfData(values, 6), -2.0);
    EXPECT_EQ(MaximumOfData(values, 6), 7.0);
    EXPECT_EQ(MaximumOfData(values + 1, 0), 4.0);
    const double none[] = {kNaN, kInf};
    EXPECT_EQ(MinimumOfData(none, 2), 0.0);
    EXPECT_EQ(MaximumOfData(none, 2), 0.0);
    EXPECT_EQ(MinimumOfData(nullptr, 3), 0.0);
    EXPECT_EQ(MaximumOfData(values, -1), 0.0);
}

}  // namespace
}  // namespace varnel::detail
