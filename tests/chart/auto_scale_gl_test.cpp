// Automatic scaling through a chart: what it takes from data and what it sets.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "tests/support/told.h"
#include "tests/support/view_test.h"

namespace varnel::test {
namespace {

class AutoScale : public ViewTest {
 protected:
    static void ExpectScale(const CTransform3D* t, const point3Dtype& min, const point3Dtype& max) {
        const point3Dtype low = t->GetScaleMin();
        const point3Dtype high = t->GetScaleMax();
        for (int axis = 0; axis < 3; ++axis) {
            EXPECT_EQ(GetCoord3D(low, axis), GetCoord3D(min, axis)) << "minimum of " << axis;
            EXPECT_EQ(GetCoord3D(high, axis), GetCoord3D(max, axis)) << "maximum of " << axis;
        }
    }

    CChartView3D view{&m_Window};
    CChart3D& chart = *view.NewChart3D();
};

TEST_F(AutoScale, WhatIsNotFiniteIsNoData) {
    const point3Dtype pts[] = {{kNaN, 2, 1, 0},
                               {0, kNaN, -kInf, 0},
                               {7.3, 3, kNaN, 0},
                               {3, 2.5, 1, 0},
                               {kInf, -kInf, kInf, 0}};
    const CTransform3D* t = chart.AutoTransform3D(pts, 0);
    ExpectScale(t, {0, 1.6, 0, 0}, {8, 3.2, 3, 0});
    EXPECT_EQ(chart.GetTransform(0), t);
    ExpectScale(chart.AutoTransform3D(nullptr, 3, 0), {0, 0, 0, 0}, {12, 12, 12, 0});
    ExpectScale(chart.AutoTransformPolysurface(nullptr, 0), {0, 0, 0, 0}, {12, 12, 12, 0});
}

TEST_F(AutoScale, DataAtADepth) {
    const std::vector<double> x = {0, 3, 7.3};
    const std::vector<double> y = {-20, kInf, -5};
    ExpectScale(chart.AutoTransform25D(x, y, 4, 0, 0), {0, 0, -25, 0}, {8, 4, 0, 0});
    ExpectScale(chart.AutoTransform25D(x, y, 4, 1, 1), {0, 0, -21, 0}, {4, 7.5, -4, 0});
    EXPECT_EQ(WhatOf([&] { chart.AutoTransform25D(x, std::vector{1.0}, 4, 0, 0); }),
              "MinMaxValues25D: the counts 3 and 1 differ");
}

TEST_F(AutoScale, SetsAreRoundedOnTheirOwn) {
    double x1[] = {0, 7.3};
    double x2[] = {-3, 7};
    double y1[] = {0, 1};
    double y2[] = {-20, -5};
    double* x[] = {x1, x2};
    double* y[] = {y1, y2};
    const int counts[] = {2, 2};
    ExpectScale(chart.AutoTransformN25D(x, y, counts, 2, 4, 0, 0), {-6, 0, -25, 0},
                {10, 4, 1.2, 0});
    const std::span<const double> xs[] = {x1, x2};
    const std::span<const double> ys[] = {y1, y2};
    ExpectScale(chart.AutoTransformN25D(xs, ys, 4, 0, 0), {-6, 0, -25, 0}, {10, 4, 1.2, 0});
    // The maximum never falls below 1e-100.
    ExpectScale(chart.AutoTransformN25D(x + 1, y + 1, counts, 1, -4, 0, 0), {-6, 0, -25, 0},
                {10, 1e-100, 1e-100, 0});
    ExpectScale(chart.AutoTransformN25D(nullptr, y, counts, 2, 4, 0, 0), {1e100, 1e100, 1e100, 0},
                {1e-100, 1e-100, 1e-100, 0});
}

TEST_F(AutoScale, GroupsReachDownToTheBase) {
    const double x[] = {0, 7.3};
    const double y[] = {120, 200, 300, kInf};
    ExpectScale(chart.AutoTransformGroup25D(x, y, 0, 2, 2, 4, 0, 0, 0), {0, 0, 0, 0},
                {8, 4, 800, 0});
    // Sums 420 and 200.
    ExpectScale(chart.AutoTransformGroup25D(x, y, 50, 2, 2, 4, 0, 1, 0), {0, 0, 50, 0},
                {8, 4, 500, 0});
    ExpectScale(chart.AutoTransformGroup25D(x, y, 1000, 2, 4, 0, 1, 0), {0, 0, 100, 0},
                {8, 4, 500, 0});
    ExpectError(ERR3D_ARRAY_NEW, ERR3DCLASS_CHART3D, "AutoTransformGroup25D",
                [&] { chart.AutoTransformGroup25D(x, y, 0, -1, 2, 4, 0, 1, 0); });
    ExpectError(ERR3D_PARAMETER, ERR3DCLASS_CHART3D, "AutoTransformGroup25D",
                [&] { chart.AutoTransformGroup25D(x, y, 0, 3, 4, 0, 1, 0); });
}

TEST_F(AutoScale, LogarithmicAxesEndAtDecadesOrOneTwoFive) {
    const struct {
        std::vector<double> values;
        int minorOnly;
        double min, max;
        int told;  ///< values that are no data
    } cases[] = {{{3, 700}, 0, 1, 1000, 0},      {{3, 700}, 1, 2, 1000, 0},
                 {{100, 1000}, 0, 100, 1000, 0}, {{2.5e-7, 0, -3, kNaN, 4e-7}, 0, 2e-7, 5e-7, 2},
                 {{5, 5}, 0, 5, 10, 0},          {{-1, 0}, 0, 1, 10, 2},
                 {{0.001, 1}, 1, 0.001, 1, 0}};
    chart.SetAutoScaleMode(2, SCALE_LOGARITHMIC);
    for (const auto& c : cases) {
        std::vector<double> x(c.values.size());
        CTransform3D* t = nullptr;
        const std::string told =
            Told([&] { t = chart.AutoTransform25D(x, c.values, 1, 0, c.minorOnly); });
        EXPECT_EQ(t->GetAxisScaleMode(2), 1);
        EXPECT_EQ(t->GetAxisScaleMode(0), 0);
        EXPECT_DOUBLE_EQ(t->GetScaleMin().z, c.min);
        EXPECT_DOUBLE_EQ(t->GetScaleMax().z, c.max);
        EXPECT_EQ(told.find(std::to_string(c.told) + " values") != std::string::npos, c.told > 0);
    }
    const double x[] = {0, 1};
    const double y[] = {20, 30, 400, 5};
    ExpectScale(chart.AutoTransformGroup25D(x, y, 0, 2, 2, 4, 0, 0, 0), {0, 0, 1, 0},
                {1.2, 4, 1000, 0});
    ExpectScale(chart.AutoTransformGroup25D(x, y, 0, 2, 2, 4, 0, 1, 0), {0, 0, 10, 0},
                {1.2, 4, 1000, 0});
}

TEST_F(AutoScale, AxesShow) {
    CTransform3D* t = chart.NewTransform({0, 0, 3, 0}, {8, 4, 7, 0});
    const CAxes3D* axes = chart.AutoAxes(t);
    const double directions[] = {2, 3, 0};
    const double intercepts[3][2] = {{4, 3}, {8, 3}, {0, 4}};
    for (int axis = 0; axis < 3; ++axis) {
        EXPECT_EQ((std::vector<double>{
                      axes->GetAxisEnable(axis) + 0.0, axes->GetAxisLabelsEnable(axis) + 0.0,
                      axes->GetAxisLabelsPlane(axis) + 0.0, axes->GetAxisTicDir(axis) + 0.0,
                      axes->GetAxisLabelsDir(axis) + 0.0, axes->GetAxisMajorTicLength(axis),
                      axes->GetAxisMinorTicLength(axis), axes->GetAxisIntercept1(axis),
                      axes->GetAxisIntercept2(axis), axes->GetAxisColor(axis).a}),
                  (std::vector<double>{1, 1, 3, directions[axis], directions[axis], 0.04, 0.02,
                                       intercepts[axis][0], intercepts[axis][1], 1}));
    }
    EXPECT_EQ(axes->GetAxisTicSpace(0), 0.5);
    EXPECT_EQ(axes->GetAxisNthTicMajor(0), 4);
    EXPECT_EQ(axes->GetAxisCenterPoint(2), 3);
    EXPECT_EQ(axes->GetAxisLabelsDecimals(2), 0);
}

TEST_F(AutoScale, AxesOfBackwardScalesStandOffTheBox) {
    CTransform3D* t = chart.NewTransform({8, 0, 7, 0}, {0, 4, 3, 0});
    const CAxes3D* axes = chart.AutoAxes(t);
    EXPECT_EQ(axes->GetAxisTicDir(0), 5);
    EXPECT_EQ(axes->GetAxisTicDir(1), 0);
    EXPECT_EQ(axes->GetAxisLabelsDir(2), 3);
    EXPECT_EQ(axes->GetAxisIntercept1(2), 8);
    EXPECT_EQ(axes->GetAxisIntercept2(0), 7);
}

TEST_F(AutoScale, LongNumbersGetSuffixes) {
    CTransform3D* t = chart.NewTransform({0, 0, 1.1e9, 0}, {8e6, 4000, 1.9e9, 0});
    const CAxes3D* axes = chart.AutoAxes(t);
    const int expected[3][2] = {{2, 0}, {0, 0}, {2, 1}};
    for (int axis = 0; axis < 3; ++axis) {
        EXPECT_EQ(axes->GetAxisLabelsFormat(axis), expected[axis][0]);
        EXPECT_EQ(axes->GetAxisLabelsDecimals(axis), expected[axis][1]);
    }
}

TEST_F(AutoScale, LogarithmicAxes) {
    CTransform3D* t = chart.NewTransform({0.003, 0, 1, 0}, {20, 4, 1e6, 0});
    t->SetAxisScaleMode(0, 1);
    t->SetAxisScaleMode(2, 1);
    CAxes3D* axes = chart.AutoAxes(t);
    EXPECT_EQ(axes->GetAxisCenterPoint(0), 0.01);
    EXPECT_EQ(axes->GetAxisNthTicMajor(0), 10);
    EXPECT_EQ(axes->GetAxisCenterPoint(2), 1);
    t->ChartTransform();
    view.DrawView();
    EXPECT_EQ(axes->GetAxisLabels(0)->GetNumLabelObjs(), 13);
    // Six decades of labels at 1, 2 and 5 are smaller than three.
    EXPECT_LT(axes->GetAxisLabelsSize(2), 0.6);
    EXPECT_GE(axes->GetAxisLabelsSize(2), 0.4);
}

}  // namespace
}  // namespace varnel::test
