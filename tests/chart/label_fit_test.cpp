#include "varnel/chart/detail/label_fit.h"

#include <gtest/gtest.h>

#include <vector>

#include "varnel/axes/axes.h"
#include "varnel/axes/detail/label_text.h"
#include "varnel/chart/detail/label_format.h"
#include "varnel/transform/transform.h"

namespace varnel::detail {
namespace {

class LabelFit : public testing::Test {
 protected:
    LabelFit() {
        axes.SetAxesLimits({0, 0, 0, 0}, {10, 10, 10, 0});
        for (int axis = 0; axis < 3; ++axis)
            axes.SetAxisTics(axis, 0, 1, 5, 0.02, 0.04, 2);
    }
    double Size(int axis, double em = 0.1, double aspect = 0.75) const {
        return FittingLabelSize(axes, transform, axis, {em, aspect});
    }
    CTransform3D transform;
    CAxes3D axes;
};

TEST_F(LabelFit, FewShortLabelsAreLarge) {
    for (int axis = 0; axis < 3; ++axis)
        EXPECT_EQ(Size(axis), 0.8);
}

TEST_F(LabelFit, CrowdedLabelsShrinkToALimit) {
    axes.SetAxisLabelsDecimals(0, 4);
    axes.SetAxisNthTicMajor(0, 2);
    EXPECT_LT(Size(0), 0.8);
    EXPECT_GT(Size(0), 0.4);
    EXPECT_GT(Size(0, 0.08), Size(0));
    EXPECT_GT(Size(0, 0.1, 0.5), Size(0));
    axes.SetAxisNthTicMajor(0, 1);
    EXPECT_EQ(Size(0), 0.4);
    // Upright labels stand above each other.
    axes.SetAxisLabelsDecimals(2, 4);
    axes.SetAxisNthTicMajor(2, 2);
    EXPECT_EQ(Size(2), 0.8);
    axes.SetAxisTicSpace(2, 0.25);
    EXPECT_LT(Size(2), 0.8);
}

TEST_F(LabelFit, TitlesOfNarrowChartsLeaveRoom) {
    EXPECT_EQ(FittingTitleSize({0.1, 0.75}), 1.0);
    EXPECT_EQ(FittingTitleSize({0.1, 1.25}), 0.8);
    EXPECT_EQ(FittingTitleSize({0.1, 5}), 0.7);
    // Letters of the title are 0.93 * 2 * 0.7 = 1.302 ems wide, labels ("10") 2.224 ems, and the
    // title's far side lies 0.73 ems beyond them, seen at 0.91; 0.16 ems stay free.
    EXPECT_NEAR(Size(2, 0.1, 2), (0.91 * (2.224 + 0.73 - 1.302) - 0.16) / 2.224, 1e-9);
}

TEST_F(LabelFit, WhatCannotBeDrawnHasASize) {
    for (const double odd : {0.0, -1.0}) {
        axes.SetAxisTicSpace(1, odd);
        const double size = Size(1);
        EXPECT_GE(size, 0.4);
        EXPECT_LE(size, 0.8);
    }
    axes.SetAxisLimits(1, 3, 3);
    EXPECT_GE(Size(1), 0.4);
}

TEST(LabelFormat, IsTheShortestThatShowsEveryValue) {
    struct Row {
        double first, step;
        int count;
        const char* last;
    };
    const Row table[] = {
        {0, 2, 5, "8"},          {0, 0.25, 4, "0.75"},  {1990, 10, 4, "2020"},
        {0, 2000, 5, "8000"},    {0, 20000, 5, "80K"},  {0, 5e5, 5, "2.0M"},
        {1.1e9, 1e8, 9, "1.9B"}, {0, 1e-9, 4, "3e-09"}, {-30, 10, 4, "0"},
        {-2e6, 5e5, 5, "0"},     {0.1, 0.1, 3, "0.3"},  {1e15, 1, 3, "1000000000000002"},
        {0, 1e20, 3, "2e+20"},
    };
    for (const Row& row : table) {
        std::vector<double> values;
        double v = row.first;
        for (int i = 0; i < row.count; ++i, v += row.step)
            values.push_back(v);
        const LabelFormat format = ShortestFormat(values, row.step, " KMBT", {0, 0});
        EXPECT_EQ(LabelText(values.back(), format.format, format.decimals, " KMBT"), row.last);
    }
    const std::vector<double> tooFine = {1.0, 1.0 + 1e-16};
    EXPECT_EQ(ShortestFormat(tooFine, 1e-16, {}, {3, 7}).decimals, 7) << "none is exact";
}

}  // namespace
}  // namespace varnel::detail
