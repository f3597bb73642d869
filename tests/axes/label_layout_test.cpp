#include "varnel/axes/detail/label_layout.h"

#include <gtest/gtest.h>

#include <climits>

namespace varnel::detail {

bool operator==(const Justification& a, const Justification& b) {
    return a.x == b.x && a.y == b.y;
}

namespace {

class LabelLayout : public testing::Test {
 protected:
    LabelLayout() { FillJustTable(table); }
    Justification Just(int axis, int dir, bool inverted) const {
        LabelRow row;
        row.axis = axis;
        row.dir = dir;
        row.inverted = inverted;
        return LabelJustification(table, row);
    }
    JustTable table;
};

TEST_F(LabelLayout, TableDependsOnTheQuadrantOfTheRotation) {
    const struct {
        int axis, dir, rotation;
        Justification just;
    } rows[] = {{0, 3, 0, {1, 2}},   {0, 3, 44, {1, 2}},  {0, 3, 45, {0, 1}},
                {0, 3, 134, {0, 1}}, {0, 3, 135, {1, 2}}, {0, 2, 0, {2, 2}},
                {1, 2, 90, {2, 1}},  {2, 2, 90, {1, 0}},  {0, 3, -90, {2, 1}},
                {0, 1, -30, {1, 0}}, {3, 0, 0, {0, 0}},   {0, 4, INT_MIN, {0, 0}}};
    for (const auto& row : rows)
        EXPECT_EQ(TableJustification(table, row.axis, row.dir, row.rotation), row.just);
}

TEST_F(LabelLayout, AutomaticJustificationTurnsAwayFromTheAxis) {
    using J = Justification;
    // z labels end at the axis to their right, start at one to their left; a scale that runs
    // backwards exchanges the sides.
    EXPECT_EQ(Just(2, 0, false), (J{2, 1}));
    EXPECT_EQ(Just(2, 3, false), (J{0, 1}));
    EXPECT_EQ(Just(2, 0, true), (J{0, 1}));
    EXPECT_EQ(Just(2, 3, true), (J{2, 1}));
    // Along y the other coordinate turns, along z none.
    EXPECT_EQ(Just(0, 1, false), (J{1, 2}));
    EXPECT_EQ(Just(0, 4, false), (J{1, 0}));
    EXPECT_EQ(Just(0, 5, false), (J{1, 2}));
}

TEST_F(LabelLayout, GivenJustificationIsSwappedByFlipsAlone) {
    using J = Justification;
    LabelRow row;
    row.axis = 2;
    row.dir = 3;
    row.xJust = 2;
    EXPECT_EQ(LabelJustification(table, row), (J{2, 1}));
    row.flipY = true;
    EXPECT_EQ(LabelJustification(table, row), (J{0, 1}));
    row.yJust = 0;
    row.flipX = true;
    EXPECT_EQ(LabelJustification(table, row), (J{0, 2}));
}

TEST(EndMask, ShowsALabelThatOneOfItsPlacesAllows) {
    // Axis 0..10 with its centre at 5.
    EXPECT_FALSE(IsLabelShown(0, 0, 5, 10, 0.01, 6));
    EXPECT_TRUE(IsLabelShown(5, 0, 5, 10, 0.01, 6));
    EXPECT_TRUE(IsLabelShown(10, 0, 5, 10, 0.01, 6));
    EXPECT_FALSE(IsLabelShown(9.995, 0, 5, 10, 0.01, 3));
    EXPECT_TRUE(IsLabelShown(7, 0, 5, 10, 0.01, 0));
    // The minimum is the centre, too.
    EXPECT_TRUE(IsLabelShown(0, 0, 0, 10, 0.01, 2));
    EXPECT_TRUE(IsLabelShown(0, 0, 0, 10, 0.01, 1));
    EXPECT_FALSE(IsLabelShown(0, 0, 0, 10, 0.01, 4));
}

TEST(AutoTitle, FollowsAxisAndDirection) {
    const TitleStyle kept{30, {2, 1}};
    EXPECT_EQ(AutoTitleStyle(0, 2, kept).just, (Justification{1, 2}));
    EXPECT_EQ(AutoTitleStyle(0, 5, kept).just, (Justification{1, 2}));
    EXPECT_EQ(AutoTitleStyle(1, 0, kept).just, (Justification{1, 0}));
    EXPECT_EQ(AutoTitleStyle(1, 3, kept).just, (Justification{1, 2}));
    EXPECT_EQ(AutoTitleStyle(2, 0, kept).just, (Justification{1, 2}));
    EXPECT_EQ(AutoTitleStyle(2, 3, kept).just, (Justification{1, 0}));
    EXPECT_EQ(AutoTitleStyle(2, 3, kept).rotation, 270);
    EXPECT_EQ(AutoTitleStyle(3, 0, kept).rotation, 30);
    EXPECT_DOUBLE_EQ(TitleDistance(0, 2, 5), 3);
    EXPECT_DOUBLE_EQ(TitleDistance(1, 2, 5), 7);
    EXPECT_DOUBLE_EQ(TitleDistance(2, 2, 5), 7);
    EXPECT_DOUBLE_EQ(TitleDistance(9, 2, 5), 5.5);
}

}  // namespace
}  // namespace varnel::detail
