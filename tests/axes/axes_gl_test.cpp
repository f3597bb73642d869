// Where axes, grids, walls and labels stand in the picture. The box is seen straight from the front
// and reaches from -0.5 to 0.5: x to the right, z up.
#include "varnel/axes/axes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "tests/support/drawing_test.h"
#include "tests/support/told.h"
#include "tests/support/values.h"
#include "varnel/axes/detail/axes_extents.h"
#include "varnel/axes/text_object.h"
#include "varnel/platform/files.h"
#include "varnel/transform/transform.h"

namespace varnel::test {
namespace {

class AxesDrawing : public DrawingTest {
 protected:
    AxesDrawing() : transform(&GL(), {0, 0, 0, 0}, {10, 5, 100, 0}) {
        GL().RegisterFont("Arial", 0.1, 400, 0, 128);
        Restart();
    }

    /// New axes over the limits of the transform.
    void Restart() {
        axes = std::make_unique<CAxes3D>(&GL(), &transform, transform.GetScaleMin(),
                                         transform.GetScaleMax());
        transform.ChartTransform();
    }
    Drawn DrawAll() {
        return Catch([&] { axes->DrawAxes(); });
    }
    /// The device coordinates across of vertical lines, or up of level ones, sorted.
    static std::vector<double> Places(const Drawn& drawn, bool vertical) {
        std::vector<double> out;
        for (const auto& l : drawn.lines) {
            const double dx = std::abs(l[0].x - l[1].x);
            const double dy = std::abs(l[0].y - l[1].y);
            if (vertical && dx < 1e-3 && dy > 1e-3) out.push_back(l[0].x);
            if (!vertical && dy < 1e-3 && dx > 1e-3) out.push_back(l[0].y);
        }
        std::sort(out.begin(), out.end());
        return out;
    }
    CTextObj3D& Label(int axis, int index) {
        return *axes->GetAxisLabels(axis)->GetLabelObj(index);
    }
    std::vector<CString> Texts(int axis) {
        CAxisLabels3D& labels = *axes->GetAxisLabels(axis);
        labels.FreeLabelObjs();
        labels.CalcAxisLabels();
        std::vector<CString> out;
        for (int i = 0; i < labels.GetNumLabelObjs(); ++i)
            out.push_back(labels.GetLabelObj(i)->GetString());
        return out;
    }

    CTransform3D transform;
    std::unique_ptr<CAxes3D> axes;
};

using Strings = std::vector<CString>;

void ExpectPlaces(const std::vector<double>& places, std::initializer_list<double> expected) {
    ASSERT_EQ(places.size(), expected.size());
    std::size_t i = 0;
    for (const double e : expected)
        EXPECT_NEAR(places[i++], e, 2e-3);
}

TEST_F(AxesDrawing, NothingUntilItIsSwitchedOn) {
    EXPECT_TRUE(DrawAll().IsEmpty());
    CAxis3D unset(&GL(), &transform, 0);
    unset.SetAxisTics(0, 1, 5, 0.1, 0.2, 2);
    EXPECT_TRUE(Catch([&] { unset.DrawAxis(); }).IsEmpty());
}

TEST_F(AxesDrawing, TicsOfALinearAxis) {
    axes->EnableAxis(0, 1);
    axes->SetAxisTics(0, 2.5, 2.5, 2, 0.05, 0.1, 2);
    const Drawn drawn = DrawAll();
    ASSERT_EQ(drawn.lines.size(), 6U);
    ExpectPlaces(Places(drawn, true), {-0.5, -0.25, 0, 0.25, 0.5});
    ExpectPlaces(Places(drawn, false), {-0.5});
    // Majors stand at the centre point and every second tic from it.
    for (const auto& l : drawn.lines) {
        const double length = std::abs(l[0].y - l[1].y);
        if (length < 1e-3) continue;
        const bool major = std::abs(std::abs(l[0].x) - 0.25) < 1e-2;
        EXPECT_NEAR(length, major ? 0.1 : 0.05, 2e-3) << l[0].x;
    }
}

TEST_F(AxesDrawing, TicsOfALogarithmicAxis) {
    transform.SetScale({1, 0, 0, 0}, {1000, 5, 100, 0});
    transform.SetAxisScaleMode(0, 1);
    Restart();
    axes->EnableAxis(0, 1);
    axes->SetAxisTics(0, 1, 1, 5, 0.05, 0.1, 2);
    const Drawn drawn = DrawAll();
    // 1, 2 .. 9, 10, .. 900, and the 1 again; the axis itself.
    EXPECT_EQ(drawn.lines.size(), 3U + 24U + 1U + 1U);
    const std::vector<double> x = Places(drawn, true);
    EXPECT_NEAR(x.front(), -0.5, 2e-3);
    EXPECT_NEAR(x.back(), -0.5 + std::log10(900.0) / 3.0, 2e-3);
}

TEST_F(AxesDrawing, NoLimitsOrStepsHang) {
    axes->EnableAxis(0, 1);
    axes->SetPlaneGrid(1, 1, 1, kBlack, 1, 0, 1);
    axes->SetAxisTics(0, 0, 1e-9, 1, 0.05, 0.1, 2);
    EXPECT_LE(DrawAll().lines.size(), 50000U);
    for (const double odd : {0.0, std::nan(""), HUGE_VAL, 1e300}) {
        axes->SetAxisTicSpace(0, odd);
        axes->SetAxisNthTicMajor(0, odd == 0.0 ? 1 : 0);
        DrawAll();
        axes->SetAxisLimits(0, 3, odd);
        DrawAll();
        axes->SetAxisLimits(0, 0, 10);
    }
}

TEST_F(AxesDrawing, GridTicsCrossTheWall) {
    // Lines along y at z = const on the planes at the minimum and the maximum of x.
    for (const int plane : {2, 5}) {
        Restart();
        axes->SetWallThickness(plane, 0.2);
        axes->SetAxisTics(2, 50, 100, 5, 0.1, 0.2, 2);
        axes->SetPlaneGrid(plane, 0, 1, kBlack, 1, 0, 1);
        const Drawn drawn = DrawAll();
        EXPECT_EQ(drawn.lines.size(), 3U);
        const Box box(drawn);
        EXPECT_NEAR(box.left, plane == 2 ? -0.7 : 0.5, 2e-3);
        EXPECT_NEAR(box.right, plane == 2 ? -0.5 : 0.7, 2e-3);
    }
}

TEST_F(AxesDrawing, LogarithmicGrid) {
    transform.SetScale({0, 0, 1, 0}, {10, 5, 100, 0});
    transform.SetAxisScaleMode(2, 1);
    Restart();
    axes->SetPlaneGrid(1, 0, 3, kBlack, 1, 0, 0);
    axes->SetAxisCenterPoint(2, 1);
    const std::vector<double> z = Places(DrawAll(), false);
    ASSERT_EQ(z.size(), 2U + 16U + 1U);
    EXPECT_EQ(axes->GetAxisScaleMode(2), 1);
    EXPECT_NEAR(z[2], -0.5 + std::log10(2.0) / 2.0, 2e-3);
    axes->SetPlaneGridNthTic2(1, 0);
    EXPECT_TRUE(DrawAll().IsEmpty());
}

TEST_F(AxesDrawing, PlanesStandOffByTheirOffsetAndWallsLieOutsideTheBox) {
    struct Row {
        int plane;
        double left, right, bottom, top;      // flat, with an offset of 0.1
        double left2, right2, bottom2, top2;  // a wall of 0.2: ten offsets of 0.01 of the thickness
    };                                        // off the box, and inset by an offset
    const Row rows[] = {{0, -0.5, 0.5, -0.6, -0.6, -0.49, 0.49, -0.72, -0.524},
                        {1, -0.5, 0.5, -0.5, 0.5, -0.49, 0.49, -0.49, 0.49},
                        {2, -0.6, -0.6, -0.5, 0.5, -0.72, -0.524, -0.49, 0.49},
                        {3, -0.5, 0.5, 0.6, 0.6, -0.49, 0.49, 0.52, 0.716},
                        {4, -0.5, 0.5, -0.5, 0.5, -0.49, 0.49, -0.49, 0.49},
                        {5, 0.6, 0.6, -0.5, 0.5, 0.52, 0.716, -0.49, 0.49}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.plane);
        Restart();
        axes->SetOutlineMode(0);
        axes->SetPlaneColor(row.plane, kRed, kBlack);
        axes->SetWallOffset(row.plane, 0.1);
        const Drawn drawn = DrawAll();
        EXPECT_TRUE(drawn.lines.empty());
        ExpectBox(Box(drawn), row.left, row.right, row.bottom, row.top, 2e-3);
        Restart();
        axes->SetWallPlane(row.plane, kRed, kBlack);
        axes->SetWallThickness(row.plane, 0.2);
        axes->SetWallOffset(row.plane, 0.01);
        ExpectBox(Box(DrawAll()), row.left2, row.right2, row.bottom2, row.top2, 2e-3);
        EXPECT_FALSE(GL().GetFrameFilled());
        EXPECT_EQ(GL().GetLineWidth3D(), 1.0);
    }
}

TEST_F(AxesDrawing, LabelsStandAtMajorTics) {
    axes->SetAxisTics(0, 0, 1, 5, 0.02, 0.04, 2);
    axes->SetAxisLabels(0, 3, 0, 2, 1, 7, kRed);
    EXPECT_EQ(Texts(0), (Strings{"0.0", "5.0", "10.0"}));
    // 1.5 times the wall thickness of 0.05, of the range of z, downward.
    EXPECT_NEAR(Label(0, 1).GetLocation().x, 5, 1e-12);
    EXPECT_NEAR(Label(0, 1).GetLocation().z, -7.5, 1e-12);
    EXPECT_EQ(Label(0, 1).GetXJustify(), 1);
    EXPECT_EQ(Label(0, 1).GetYJustify(), 2);
    EXPECT_EQ(Label(0, 1).GetColor().r, 1);

    axes->SetAxisCenterPoint(0, 5);
    axes->SetAxisLabelsEnds(0, 6);
    EXPECT_EQ(Texts(0), (Strings{"5.0", "10.0"}));
    axes->SetAxisLabelsEnds(0, 1);
    EXPECT_EQ(Texts(0), (Strings{"0.0"}));
    axes->SetAxisNthTicMajor(0, 0);
    EXPECT_TRUE(Texts(0).empty());
}

TEST_F(AxesDrawing, LabelsOfAPictureAreLimited) {
    axes->SetAxisTics(0, 0, 1, 5, 0.02, 0.04, 2);
    axes->SetAxisLabels(0, 3, 0, 2, 1, 7, kRed);
    axes->EnableAxisLabels(0, 1);
    const auto letters = [this] { return DrawAll().triangles.size(); };
    const std::size_t all = letters();
    GL().ExchangeBuffers();
    EXPECT_FALSE(GL().TakeLabelCharacters(200'001));
    EXPECT_LT(letters(), all);
    GL().ExchangeBuffers();
    EXPECT_TRUE(GL().TakeLabelCharacters(200'000));
    EXPECT_LT(letters(), all);
    GL().ReadBack();
    EXPECT_EQ(letters(), all);
}

TEST_F(AxesDrawing, UserStringsCountHiddenLabels) {
    const CString months[] = {"Jan", "Feb", "Mar"};
    axes->SetAxisTics(0, 0, 5, 1, 0.02, 0.04, 2);
    axes->SetAxisLabels(0, 3, 0, 2, 0, 7, kBlack, months, 3);
    EXPECT_EQ(Texts(0), (Strings{"Jan", "Feb", "Mar"}));
    axes->SetAxisLabelsEnds(0, 4);
    EXPECT_EQ(Texts(0), (Strings{"Feb", "Mar"}));
    axes->SetAxisLabelsEnds(0, 7);
    axes->SetAxisTicSpace(0, 2.5);
    EXPECT_EQ(Texts(0), (Strings{"Jan", "Feb", "Mar", "", ""}));
    axes->SetAxisCenterPoint(0, 5);  // down from the centre the count runs on
    EXPECT_EQ(Texts(0), (Strings{"Jan", "Feb", "Mar", "", ""}));
    axes->EnableAxisLabelsStrings(0, 0);
    EXPECT_EQ(Texts(0)[0], "5");
}

TEST_F(AxesDrawing, LogarithmicLabels) {
    transform.SetScale({1, 0, 0, 0}, {1000, 5, 100, 0});
    transform.SetAxisScaleMode(0, 1);
    Restart();
    axes->SetAxisTics(0, 1, 1, 10, 0.02, 0.04, 2);
    axes->SetAxisLabels(0, 3, 0, 2, 0, 7, kBlack);
    EXPECT_EQ(Texts(0),
              (Strings{"1", "2", "5", "10", "20", "50", "100", "200", "500", "1000", "1"}));
    // Lower than on a linear axis by 0.02 of the range of z.
    EXPECT_NEAR(Label(0, 0).GetLocation().z, -7.5 - 2, 1e-12);
    axes->SetAxisNthTicMajor(0, 1);
    EXPECT_EQ(Texts(0), (Strings{"1", "10", "100", "1000", "1"}));
    axes->SetAxisNthTicMajor(0, 0);
    EXPECT_TRUE(Texts(0).empty());
}

TEST_F(AxesDrawing, LogarithmicLabelsStayAtTheirAxisOverALogarithmicZ) {
    transform.SetScale({1, 0, 0.001, 0}, {1000, 5, 10, 0});
    transform.SetAxisScaleMode(0, 1);
    transform.SetAxisScaleMode(2, 1);
    Restart();
    axes->SetAxisIntercept(0, 5, 0.001);
    axes->SetAxisTics(0, 1, 1, 1, 0.02, 0.04, 2);
    axes->SetAxisLabels(0, 3, 0, 2, 0, 7, kBlack);
    Texts(0);
    EXPECT_NEAR(std::log10(Label(0, 0).GetLocation().z), -3 - 0.075 * 4, 1e-9);
}

TEST_F(AxesDrawing, TitleStandsBesideTheLastLabel) {
    axes->SetAxisTics(2, 0, 25, 1, 0.02, 0.04, 0);
    axes->SetAxisIntercept(2, 0, 5);
    axes->SetAxisLabels(2, 3, 0, 0, 0, 7, kBlack);
    axes->SetAxisTitleString(2, "Height");
    EXPECT_EQ(Texts(2), (Strings{"0", "25", "50", "75", "100"}));
    const CTextObj3D& title = *axes->GetAxisLabels(2)->GetTitleObj();
    EXPECT_GT(title.TextHeight(), 0.05);
    EXPECT_GT(Label(2, 4).TextWidth(), 0.1);
    const double away = title.TextHeight() + Label(2, 4).TextWidth();
    EXPECT_NEAR(title.GetNormLocation().x, -0.5 - 0.075 - away, 1e-9);
    EXPECT_NEAR(title.GetNormLocation().y, 0.5, 1e-9);
    EXPECT_NEAR(title.GetNormLocation().z, 0, 1e-9);
    EXPECT_EQ(title.GetRotation(), 270);
    EXPECT_EQ(title.GetTextPlane(), 1);
    EXPECT_EQ(title.GetXJustify(), 1);
    EXPECT_EQ(title.GetYJustify(), 2);

    // Hidden labels place it, too, but are not measured.
    axes->SetAxisLabelsEnds(2, 0);
    axes->SetAxisTicSpace(2, 50);
    EXPECT_EQ(Texts(2), (Strings{"50"}));
    EXPECT_NEAR(title.GetNormLocation().x,
                -0.5 - 0.075 - title.TextHeight() - Label(2, 0).TextWidth(), 1e-9);
    // Without any label it starts from the end of the axis.
    axes->SetAxisCenterPoint(2, -1);
    EXPECT_TRUE(Texts(2).empty());
    EXPECT_NEAR(title.GetNormLocation().x, -0.5 - title.TextHeight(), 1e-9);
}

TEST_F(AxesDrawing, TitleFollowsTheLabelsOnABackwardScale) {
    transform.SetScale({10, 0, 0, 0}, {0, 5, 100, 0});
    Restart();
    axes->SetAxisTics(2, 0, 25, 1, 0.02, 0.04, 3);
    axes->SetAxisIntercept(2, 10, 5);  // the left edge of the box
    axes->SetAxisLabels(2, 3, 0, 3, 0, 7, kBlack);
    axes->SetAxisTitleString(2, "Height");
    Texts(2);
    EXPECT_NEAR(Label(2, 0).GetLocation().x, 10.75, 1e-9);
    EXPECT_EQ(Label(2, 0).GetXJustify(), 2);  // the label ends at its location
    EXPECT_LT(axes->GetAxisLabels(2)->GetTitleObj()->GetNormLocation().x, -0.575);
}

TEST_F(AxesDrawing, LabelPlaneHasItsOwnTurns) {
    CAxisLabels3D& labels = *axes->GetAxisLabels(0);
    const auto turned = [&](int plane, const std::function<void()>& expected) {
        double m[16];
        double n[16];
        labels.SetAxisLabels(plane, 30, 0, 0, 7, kBlack);
        GL().LoadIdentity();
        labels.TransformTextPlane({-20, 5, 25, 0});
        GL().GetModelView(m);
        GL().LoadIdentity();
        expected();
        GL().GetModelView(n);
        for (int i = 0; i < 16; ++i)
            EXPECT_NEAR(m[i], n[i], 1e-12) << plane << ", " << i;
    };
    turned(0, [&] { GL().Rotate3D(180, 0), GL().Rotate3D(30, 2); });
    turned(1, [&] { GL().Rotate3D(30, 2), GL().Rotate3D(90, 0); });
    turned(2, [&] { GL().Rotate3D(30, 2), GL().Rotate3D(90, 0), GL().Rotate3D(-90, 2); });
    turned(3, [&] {
        GL().Rotate3D(-25, 2), GL().Rotate3D(-5, 1), GL().Rotate3D(20, 0);
        GL().Rotate3D(90, 0), GL().Rotate3D(30, 2);
    });
    turned(4, [] {});
}

TEST_F(AxesDrawing, ForeignTransformIsRefused) {
    CAxis3D axis;
    ExpectError(ERR3D_TRANSFORM_PARAMETER, ERR3DCLASS_AXIS3D, "InitAxis",
                [&] { axis.InitAxis(&GL(), nullptr, 1); });
    ExpectError(ERR3D_TRANSFORM_PARAMETER, ERR3DCLASS_AXES3D, "InitAxes",
                [&] { axes->InitAxes(&GL(), nullptr); });
}

TEST_F(AxesDrawing, SavedWithTheIdentifierOfTheirTransform) {
    transform.SetSelfID(4711);
    MemoryFile file;
    axes->Save(&file);
    CAxes3D loaded;
    loaded.Load(&file);
    EXPECT_EQ(loaded.GetTransformID(), 4711);
    EXPECT_EQ(loaded.GetAxis(2)->GetTransformID(), 4711);
    EXPECT_EQ(loaded.GetAxisLabels(1)->GetTransformID(), 4711);
}

/// What is measured is what is drawn, whether the axes follow the view or not.
TEST_F(AxesDrawing, AreMeasuredAsTheyAreDrawn) {
    transform.SetChartRect({0.4, 0.3, 0.35, 0});
    transform.SetFontHeightSF(0.6);
    for (const int follow : {FOLLOW_OFF, FOLLOW_VIEW, FOLLOW_TURN})
        for (const point3Dtype& turn :
             {point3Dtype{-20, 0, 25, 0}, {0, 0, 0, 0}, {40, 0, 200, 0}}) {
            transform.SetRotate(turn);
            Restart();
            for (int axis = 0; axis < 3; ++axis) {
                axes->EnableAxis(axis, 1);
                axes->EnableAxisLabels(axis, 1);
                axes->SetAxisTics(axis, 0, axes->GetAxisRange(axis) / 10, 5, 0.01, 0.02, axis);
                axes->SetAxisLabels(axis, axis + 1, 0, axis, 0, 7, kBlack);
                axes->SetAxisTitleString(axis, "title");
            }
            for (int plane = 0; plane < 6; ++plane)
                axes->SetPlaneColor(plane, kRed, kRed);
            axes->SetFollowView(follow);
            const detail::PixelBox bounds = axes->MeasureAxes(kSize, kSize).bounds;
            const Box drawn(DrawAll());
            const auto pixel = [](double device) { return (device + 1.0) / 2.0 * kSize; };
            SCOPED_TRACE(testing::Message() << follow << " " << turn.z);
            ExpectBox(bounds, pixel(drawn.left), pixel(drawn.right), pixel(drawn.bottom),
                      pixel(drawn.top), 1.6);
        }
}

TEST_F(AxesDrawing, FollowingShowsWallsBehindInTheAttributesOfEither) {
    transform.SetRotate({-20, 0, 155, 0});  // seen from the other side
    axes->SetPlaneColor(1, kRed, kRed);
    axes->SetPlaneColorMode(1, 0);
    for (const int follow : {FOLLOW_OFF, FOLLOW_VIEW}) {
        axes->SetFollowView(follow);
        const Box wall(DrawAll());
        EXPECT_EQ(wall.front > 0.0, follow != FOLLOW_OFF) << "the far face, not the near one";
    }
    EXPECT_EQ(axes->GetWallEnable(1), 1);
    EXPECT_EQ(axes->GetWallEnable(4), 0);
}

TEST_F(AxesDrawing, TicsPointAwayOnAnyAxis) {
    for (int dir : {0, 3}) {
        Restart();
        axes->EnableAxis(2, 1);
        axes->SetAxisTics(2, 0, 50, 1, 0.1, 0.2, dir);
        const Box box(DrawAll());
        EXPECT_NEAR(dir == 0 ? box.left : box.right, dir == 0 ? -0.7 : -0.3, 2e-3);
    }
    Restart();
    axes->EnableAxis(2, 1);
    axes->SetAxisTics(2, 0, 50, 1, 0.1, 0.2, 6);
    EXPECT_NEAR(Box(DrawAll()).right, -0.5, 2e-3);
}

TEST_F(AxesDrawing, GridLinesFollowTheTics) {
    axes->SetAxisTics(0, 0, 2.5, 5, 0.1, 0.2, 2);
    axes->SetAxisTics(2, 50, 25, 5, 0.1, 0.2, 0);
    axes->SetPlaneGrid(1, 2, 0, kRed, 1, 0, 0);
    Drawn drawn = DrawAll();
    ExpectPlaces(Places(drawn, true), {-0.5, 0, 0.5});
    ExpectPlaces(Places(drawn, false), {});
    axes->SetPlaneGridNthTic2(1, 1);
    drawn = DrawAll();
    ExpectPlaces(Places(drawn, true), {-0.5, 0, 0.5});
    ExpectPlaces(Places(drawn, false), {-0.5, -0.25, 0, 0.25, 0.5});
    EXPECT_GT(drawn.lines[0][0].r, 0.9);
}

TEST_F(AxesDrawing, LabelsAreSeenWhereTheyAreCalculated) {
    axes->SetAxisTics(0, 0, 10, 1, 0.02, 0.04, 2);
    axes->SetAxisLabels(0, 3, 0, 2, 0, 7, kBlack);
    EXPECT_TRUE(DrawAll().IsEmpty());
    axes->EnableAxisLabels(0, 1);
    const Box box(DrawAll());
    EXPECT_LT(box.left, -0.5);
    EXPECT_GT(box.right, 0.5);
    EXPECT_NEAR(box.top, -0.575, 0.01);
    EXPECT_EQ(axes->GetAxisLabels(0)->GetNumLabelObjs(), 2);
    DrawAll();
    EXPECT_EQ(axes->GetAxisLabels(0)->GetNumLabelObjs(), 2);
}

TEST_F(AxesDrawing, LimitsWithoutExtentAreTold) {
    axes->SetAxisLimits(0, 5, 5);
    transform.SetAxisScaleMode(2, 1);
    axes->SetAxisLimits(2, -3, -1);
    // The transform tells its own behind that.
    EXPECT_TRUE(Told([this] { axes->DrawAxes(); })
                    .starts_with("DrawAxes: the x axis goes from 5 to 5, so that it has no tics\n"
                                 "DrawAxes: the logarithmic z axis ends at -1, so that nothing on "
                                 "it is positive\n"));
}

TEST_F(AxesDrawing, NamesAndDatesStandAtTheirValues) {
    transform.SetScale({0, 0, 0, 0}, {6, 5, 100, 0});
    Restart();
    axes->EnableAxis(0, 1);
    axes->EnableAxisLabels(0, 1);
    axes->SetAxisLabels(0, 3, 0, DIR_MINUS_Z, 0, 7, kBlack);
    axes->SetAxisTicDir(0, DIR_MINUS_Z);
    const CString names[] = {"one", "two", "five", "nowhere"};
    axes->SetCategories(0, names, std::vector<double>{1, 2, 5});
    EXPECT_EQ(axes->GetAxisMin(0), 0.5);
    EXPECT_EQ(axes->GetAxisMax(0), 5.5);
    EXPECT_EQ(Texts(0), (Strings{"one", "two", "five"}));
    EXPECT_NEAR(Label(0, 2).GetLocation().x, 5.0, 1e-9);
    axes->EnableAxisLabels(0, 0);
    transform.ChartTransform();
    const auto place = [](double v) { return (v - 3.0) / 6.0; };
    ExpectPlaces(Places(DrawAll(), true), {place(1), place(2), place(5)});
    axes->SetCategories(0, names, std::vector<double>{1, 2, 5}, 1);
    ExpectPlaces(Places(DrawAll(), true), {place(0.5), place(1.5), place(3.5), place(5.5)});

    axes->SetAxisLimits(0, 19000, 19800);
    axes->SetAxisDates(0, 1, "%Y-%m-%d");
    axes->DrawAxes();
    for (const CString& text : Texts(0))
        EXPECT_EQ(text.substr(0, 2), "20");
    EXPECT_FALSE(Texts(0).empty());
    axes->SetAxisDates(0, 0);
    EXPECT_FALSE(axes->GetAxis(0)->HasTicValues());
}

}  // namespace
}  // namespace varnel::test
