#include "varnel/axes/detail/axis_walk.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "tests/support/values.h"

namespace varnel::detail {
namespace {

using test::kInf;
using test::kNaN;

std::vector<std::pair<double, int>> Linear(double center, double step, double min, double max) {
    std::vector<std::pair<double, int>> out;
    WalkLinear(center, step, min, max, [&](double v, int count) { out.push_back({v, count}); });
    return out;
}

struct Decades {
    std::vector<double> majors;
    std::vector<double> minors;
};

Decades WalkedDecades(double center, double min, double max) {
    Decades out;
    WalkDecades(center, min, max,
                [&](double v, bool decade) { (decade ? out.majors : out.minors).push_back(v); });
    return out;
}

std::vector<double> LogLabels(double center, double min, double max, bool everyDecade) {
    std::vector<double> out;
    WalkLogLabels(center, min, max, everyDecade, [&](double v) { out.push_back(v); });
    return out;
}

template <class Values>
void ExpectNear(const Values& values, std::initializer_list<double> expected) {
    ASSERT_EQ(values.size(), expected.size());
    std::size_t i = 0;
    for (double e : expected) {
        EXPECT_NEAR(values[i], e, 1e-12 * e) << "value " << i;
        ++i;
    }
}

TEST(WalkLinear, GoesUpThenDownFromTheCenter) {
    using Steps = std::vector<std::pair<double, int>>;
    EXPECT_EQ(Linear(0, 1, 0, 3), (Steps{{0, 0}, {1, 1}, {2, 2}, {3, 3}}));
    EXPECT_EQ(Linear(2.5, 1, 0, 4), (Steps{{2.5, 0}, {3.5, 1}, {1.5, 1}, {0.5, 2}}));
    EXPECT_EQ(Linear(4, 2, 0, 4), (Steps{{4, 0}, {2, 1}, {0, 2}}));
}

TEST(WalkLinear, HasNoTolerance) {
    // 0.1 + 0.1 + 0.1 lies above 0.3.
    EXPECT_EQ(Linear(0, 0.1, 0, 0.3).size(), 3U);
    // A centre outside the limits stops the way that starts there.
    EXPECT_TRUE(Linear(-1, 1, 0, 10).empty());
    EXPECT_EQ(Linear(10.5, 1, 0, 10).size(), 10U);
}

TEST(Walks, EndOnAnyLimitsAndSteps) {
    EXPECT_TRUE(Linear(0, 0, 0, 10).empty());
    EXPECT_TRUE(Linear(0, 1, 5, 5).empty());
    EXPECT_TRUE(Linear(0, 1, 0, kInf).empty());
    EXPECT_TRUE(Linear(0, 1, kNaN, 10).empty());
    EXPECT_TRUE(Linear(kNaN, 1, 0, 10).empty());
    EXPECT_EQ(Linear(0, kNaN, 0, 10).size(), 1U);
    EXPECT_EQ(Linear(0, 1e-300, 0, 10).size(), static_cast<std::size_t>(kMostWalkValues));
    EXPECT_EQ(Linear(0, 1, -1e7, 1e7).size(), static_cast<std::size_t>(kMostWalkValues));
    EXPECT_EQ(Linear(2, -1, 0, 10).size(), 11U);
    const double odd[] = {0, -1, 1e-300, 1, 7, 1e300, kInf, -kInf, kNaN};
    for (double center : odd)
        for (double min : odd)
            for (double max : odd) {
                const Decades decades = WalkedDecades(center, min, max);
                EXPECT_LE(decades.majors.size() + decades.minors.size(), kMostWalkValues + 9U);
                for (bool every : {false, true})
                    EXPECT_LE(LogLabels(center, min, max, every).size(),
                              static_cast<std::size_t>(kMostWalkValues));
            }
}

TEST(WalkDecades, HasMajorsAtDecadesAndMinorsBetween) {
    const Decades walk = WalkedDecades(1, 1, 1000);
    // The way down starts at 1 again; 0.1 lies outside. The top decade is no major.
    ExpectNear(walk.majors, {1, 10, 100, 1});
    ExpectNear(walk.minors, {2,  3,  4,  5,  6,   7,   8,   9,   20,  30,  40,  50,
                             60, 70, 80, 90, 200, 300, 400, 500, 600, 700, 800, 900});
}

TEST(WalkDecades, TurnsAroundOnTheWayDown) {
    const Decades walk = WalkedDecades(10, 1, 100);
    // Down from 10 through 9 .. 2 to 1, and from there up again.
    ExpectNear(walk.majors, {10, 10, 1, 10});
    ExpectNear(walk.minors, {20, 30, 40, 50, 60, 70, 80, 90, 9,  8,  7,  6,  5,  4,  3,  2,
                             2,  3,  4,  5,  6,  7,  8,  9,  20, 30, 40, 50, 60, 70, 80, 90});
}

TEST(WalkDecades, KeepsItsDistanceFromTheLimits) {
    EXPECT_TRUE(WalkedDecades(1, 2, 8).majors.empty());
    EXPECT_TRUE(WalkedDecades(10, 1, 11).majors.empty());  // 10 is not below 9.9
    ExpectNear(WalkedDecades(1, 1, 11).majors, {1, 1});
}

TEST(WalkLogLabels, TakesOneTwoFiveOrEveryDecade) {
    ExpectNear(LogLabels(1, 1, 100, false), {1, 2, 5, 10, 20, 50, 100, 1});
    ExpectNear(LogLabels(10, 1, 20, false), {10, 20, 10, 5, 2, 1});
    ExpectNear(LogLabels(10, 0.05, 2000, true), {10, 100, 1000, 10, 1, 0.1});
}

}  // namespace
}  // namespace varnel::detail
